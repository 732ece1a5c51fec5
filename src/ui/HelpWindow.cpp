#include "ui/HelpWindow.h"

#include <QDialogButtonBox>
#include <QTextBrowser>
#include <QVBoxLayout>

namespace ui {

HelpWindow::HelpWindow(const QString& title, const QString& html, QWidget* parent)
    : QDialog(parent), m_browser(new QTextBrowser(this)) {
    setWindowTitle(title);
    setAttribute(Qt::WA_DeleteOnClose);
    m_browser->setOpenExternalLinks(true);
    m_browser->setHtml(html);
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Close, this);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::close);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(m_browser);
    layout->addWidget(buttons);
    resize(700, 600);
}

QString HelpWindow::text() const {
    return m_browser->toPlainText();
}

} // namespace ui
