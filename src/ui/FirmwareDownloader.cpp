#include "ui/FirmwareDownloader.h"

#include "app/Constants.h"
#include "firmware/FirmwareDownload.h"
#include "ui/Prompts.h"

#include <QDialogButtonBox>
#include <QLabel>
#include <QProgressBar>
#include <QVBoxLayout>

namespace ui {

FirmwareDownloader::FirmwareDownloader(Prompts& prompts, QWidget* parent)
    : QDialog(parent), m_prompts(prompts), m_download(new firmware::FirmwareDownload(this)),
      m_text(new QLabel(this)), m_bar(new QProgressBar(this)) {
    setWindowTitle(tr("Get New Firmware"));
    m_text->setWordWrap(true);
    m_text->setMinimumWidth(420);
    m_bar->setRange(0, 0);
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Cancel, this);
    connect(buttons, &QDialogButtonBox::rejected, this, &FirmwareDownloader::reject);
    connect(m_download, &firmware::FirmwareDownload::message, m_text, &QLabel::setText);
    connect(m_download, &firmware::FirmwareDownload::progress, this,
            [this](qint64 received, qint64 total) {
                m_bar->setRange(0, total > 0 ? 100 : 0);
                if (total > 0) {
                    m_bar->setValue(int(received * 100 / total));
                }
            });
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(m_text);
    layout->addWidget(m_bar);
    layout->addWidget(buttons);
}

FirmwareDownloader::~FirmwareDownloader() = default;

void FirmwareDownloader::reject() {
    m_download->cancel();
}

void FirmwareDownloader::start() {
    show();
    const firmware::FirmwareDownload::Result r =
        m_download->fetch(firmware::FirmwareDownload::defaultUrl(), PATH_DATA, FILE_FIRMWARE_LIST);
    hide();
    QStringList lines;
    if (!r.error.isEmpty()) {
        lines << tr("No firmware could be fetched: %1.").arg(r.error);
    }
    for (const QString& archive : r.installed) {
        lines << tr("Installed %1.").arg(archive);
    }
    for (const auto& item : r.refused) {
        lines << tr("Refused %1: %2.").arg(item.first, item.second);
    }
    if (lines.isEmpty()) {
        lines << tr("There is no new firmware: this program has every version the server has.");
    }
    m_prompts.message(r.ok() ? QMessageBox::Information : QMessageBox::Warning,
                      tr("Get New Firmware"), lines.join(QLatin1Char('\n')));
    if (r.ok()) {
        emit updateSuccess();
    } else {
        emit updateFail();
    }
}

} // namespace ui
