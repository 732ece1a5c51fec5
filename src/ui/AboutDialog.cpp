#include "ui/AboutDialog.h"

#include "app/Constants.h"

#include <QApplication>
#include <QDialogButtonBox>
#include <QLabel>
#include <QStyle>
#include <QVBoxLayout>

namespace ui {

AboutDialog::AboutDialog(QWidget* parent) : QDialog(parent) {
    setWindowTitle(TITLE_ABOUT);
    auto* icon = new QLabel(this);
    icon->setPixmap(QApplication::windowIcon().isNull()
                        ? style()->standardIcon(QStyle::SP_ComputerIcon).pixmap(48, 48)
                        : QApplication::windowIcon().pixmap(48, 48));
    auto* text = new QLabel(this);
    text->setTextFormat(Qt::RichText);
    text->setOpenExternalLinks(true);
    text->setWordWrap(true);
    text->setText(
        tr("<h3>KX Setup Utility</h3><p>%1</p>"
           "<p>Edits the settings of Korvex e-bike instruments, reads them from and writes them "
           "to the instrument over its TTL-to-USB cable, and keeps its firmware up to date.</p>"
           "<p>Built with Qt %2.</p>"
           "<p>Free software under the GNU General Public License, version 3 or later. "
           "It comes with no warranty.</p>"
           "<p>Firmware and news: %3</p>")
            .arg(VERSION.toHtmlEscaped(), QString::fromLatin1(qVersion()), KX_SW_LINK));
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Close, this);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::accept);
    auto* row = new QHBoxLayout;
    row->addWidget(icon, 0, Qt::AlignTop);
    row->addWidget(text, 1);
    auto* layout = new QVBoxLayout(this);
    layout->addLayout(row);
    layout->addWidget(buttons);
    setMinimumWidth(420);
}

} // namespace ui
