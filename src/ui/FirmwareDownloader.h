#pragma once
// Get New Firmware: fetches the versions the download server has and this program has
// not, with what is happening, a progress bar and Cancel, and says at the end what was
// installed and what was refused and why. Emits updateSuccess() when everything new
// installed (or nothing was new), updateFail() otherwise; the controller then rebuilds
// the catalogue.
#include <QDialog>

class QLabel;
class QProgressBar;

namespace firmware {
class FirmwareDownload;
}

namespace ui {

class Prompts;

class FirmwareDownloader : public QDialog {
    Q_OBJECT
public:
    FirmwareDownloader(Prompts& prompts, QWidget* parent = nullptr);
    ~FirmwareDownloader() override;

public slots:
    // Fetches from the download server's address (FirmwareDownload::defaultUrl()).
    void start();

signals:
    void updateSuccess();
    void updateFail();

protected:
    void reject() override;

private:
    Prompts& m_prompts;
    firmware::FirmwareDownload* m_download;
    QLabel* m_text;
    QProgressBar* m_bar;
};

} // namespace ui
