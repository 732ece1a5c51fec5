#pragma once
// Fetches new firmware versions from the download server: its list (index.json), each
// archive not yet in the download history, checked (size, SHA-256, safe entries, firmware
// files with their layouts) before anything reaches the data folder. Every request has a
// time limit; redirects are followed only to HTTPS or to the same host.
#include <QObject>
#include <QPair>
#include <QString>
#include <QStringList>
#include <QUrl>

class QNetworkAccessManager;
class QNetworkReply;

namespace firmware {

class FirmwareDownload : public QObject {
    Q_OBJECT
public:
    // The maker's download page; KX_FIRMWARE_URL overrides it (mirrors, tests).
    static QString defaultUrl();
    static constexpr const char* URL_VARIABLE = "KX_FIRMWARE_URL";

    struct Result {
        QString error;                          // the list could not be had; nothing was tried
        QStringList installed;                  // archives installed
        QList<QPair<QString, QString>> refused; // archive and why, in plain words
        bool ok() const { return error.isEmpty() && refused.isEmpty(); }
    };

    explicit FirmwareDownload(QObject* parent = nullptr);
    ~FirmwareDownload() override;

    // Fetches and installs into dataDir (history in historyFile). Blocks in a nested
    // event loop; cancel() ends it.
    Result fetch(const QString& baseUrl, const QString& dataDir, const QString& historyFile);
    // Time limit of each request without progress, in ms (15000). Tests shorten it.
    static void setTimeoutMs(int ms);

public slots:
    void cancel();

signals:
    void message(const QString& text);
    void progress(qint64 received, qint64 total);

private:
    // The body at url, or an error in plain words.
    bool get(const QUrl& url, QByteArray* body, QString* error);
    QNetworkAccessManager* m_network;
    QNetworkReply* m_reply = nullptr;
    bool m_cancelled = false;
};

} // namespace firmware
