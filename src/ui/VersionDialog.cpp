#include "ui/VersionDialog.h"

#include <QComboBox>
#include <QDialogButtonBox>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

namespace ui {

VersionDialog::VersionDialog(const QList<util::VersionContainer>& versions, const QString& message,
                             const QString& title, QWidget* parent)
    : QDialog(parent), m_versions(versions), m_list(new QComboBox(this)) {
    setWindowTitle(title);
    auto* text = new QLabel(message, this);
    text->setWordWrap(true);
    text->setTextFormat(Qt::AutoText);
    text->setOpenExternalLinks(true);
    for (const util::VersionContainer& v : versions) {
        m_list->addItem(tr("Firmware %1 (settings layout %2)")
                            .arg(util::printVersion(v.fwVersion), v.kxsVersion));
    }
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
    buttons->button(QDialogButtonBox::Ok)->setEnabled(!versions.isEmpty());
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(text);
    layout->addWidget(m_list);
    layout->addWidget(buttons);
    setMinimumWidth(460);
}

util::VersionContainer VersionDialog::chosen() const {
    const int row = m_list->currentIndex();
    return row >= 0 && row < m_versions.size() ? m_versions.at(row) : util::VersionContainer();
}

void VersionDialog::select(int row) {
    m_list->setCurrentIndex(row);
}

} // namespace ui
