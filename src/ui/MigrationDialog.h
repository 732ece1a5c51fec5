#pragma once
// The last word before a firmware update that keeps the settings: what happens to each
// setting (kept, converted, back to the new default) with its old and new value, and,
// when some are reset, the question with the list of them. Update or Cancel.
#include <QDialog>

class QTableWidget;

namespace firmware {
struct Migration;
}

namespace ui {

class MigrationDialog : public QDialog {
    Q_OBJECT
public:
    MigrationDialog(const firmware::Migration& migration, const QString& oldVersion,
                    const QString& newVersion, QWidget* parent = nullptr);
    int rows() const;
    QString cell(int row, int column) const;

private:
    QTableWidget* m_table;
};

} // namespace ui
