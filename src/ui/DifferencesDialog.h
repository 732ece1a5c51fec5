#pragma once
// What differs between an open file and the settings on the instrument, before the user
// writes: one row per setting (or bit) whose value differs, and the settings that only
// one side has.
#include <QDialog>

class QTableWidget;

namespace sf {
struct Comparison;
}

namespace ui {

class DifferencesDialog : public QDialog {
    Q_OBJECT
public:
    DifferencesDialog(const sf::Comparison& comparison, const QString& fileTitle,
                      QWidget* parent = nullptr);
    int rows() const;
    // The text of a cell, row by row: setting, value in the file, value on the instrument.
    QString cell(int row, int column) const;

private:
    QTableWidget* m_table;
};

} // namespace ui
