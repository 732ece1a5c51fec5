#include "ui/ProgressDialog.h"

#include <QDialogButtonBox>
#include <QLabel>
#include <QProgressBar>
#include <QVBoxLayout>

namespace ui {

ProgressDialog::ProgressDialog(const QString& title, QWidget* parent)
    : QDialog(parent), m_text(new QLabel(this)), m_bar(new QProgressBar(this)) {
    setWindowTitle(title);
    setWindowModality(Qt::ApplicationModal);
    m_text->setWordWrap(true);
    m_text->setMinimumWidth(380);
    m_bar->setRange(0, 100);
    m_bar->setValue(0);
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Cancel, this);
    connect(buttons, &QDialogButtonBox::rejected, this, &ProgressDialog::abort);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(m_text);
    layout->addWidget(m_bar);
    layout->addWidget(buttons);
}

QString ProgressDialog::progressText() const {
    return m_text->text();
}

int ProgressDialog::progress() const {
    return m_bar->value();
}

void ProgressDialog::setProgressText(const QString& text) {
    // The helper's progress can span lines; the first says what is going on.
    m_text->setText(text.section(QLatin1Char('\n'), 0, 0));
}

void ProgressDialog::setProgress(int percent) {
    m_bar->setValue(qBound(0, percent, 100));
}

void ProgressDialog::finish() {
    hide();
    m_bar->setValue(0);
    m_aborted = false;
}

void ProgressDialog::abort() {
    if (!m_aborted) {
        m_aborted = true;
        m_text->setText(tr("Stopping..."));
        emit aborted();
    }
}

void ProgressDialog::reject() {
    abort();
}

} // namespace ui
