#pragma once
// Asks which firmware version a file or an instrument has, with the reason shown above
// the list of the catalogue's versions.
#include "util/VersionContainer.h"

#include <QDialog>
#include <QList>

class QComboBox;

namespace ui {

class VersionDialog : public QDialog {
    Q_OBJECT
public:
    VersionDialog(const QList<util::VersionContainer>& versions, const QString& message,
                  const QString& title, QWidget* parent = nullptr);
    // The version selected in the list (empty when the list is).
    util::VersionContainer chosen() const;
    void select(int row);

private:
    QList<util::VersionContainer> m_versions;
    QComboBox* m_list;
};

} // namespace ui
