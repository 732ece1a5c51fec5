#include "firmware/FirmwareDownload.h"
#include "util/Logging.h"

#include "firmware/FirmwareArchive.h"

#include <QBuffer>
#include <QCryptographicHash>
#include <QEventLoop>
#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QNetworkRequest>

namespace firmware {

namespace {
int g_timeoutMs = 15000;
} // namespace

void FirmwareDownload::setTimeoutMs(int ms) {
    g_timeoutMs = ms;
}

QString FirmwareDownload::defaultUrl() {
    const QString set = qEnvironmentVariable(URL_VARIABLE);
    return set.isEmpty()
               ? QStringLiteral("https://www.tessen-technologies.example/korvex/firmware/")
               : set;
}

FirmwareDownload::FirmwareDownload(QObject* parent)
    : QObject(parent), m_network(new QNetworkAccessManager(this)) {}

FirmwareDownload::~FirmwareDownload() = default;

void FirmwareDownload::cancel() {
    m_cancelled = true;
    if (m_reply) {
        m_reply->abort();
    }
}

bool FirmwareDownload::get(const QUrl& url, QByteArray* body, QString* error) {
    qCDebug(util::lcDownload).noquote() << "GET" << url.toString();
    QNetworkRequest request(url);
    request.setAttribute(QNetworkRequest::RedirectPolicyAttribute,
                         QNetworkRequest::UserVerifiedRedirectPolicy);
    request.setTransferTimeout(g_timeoutMs);
    QNetworkReply* reply = m_network->get(request);
    m_reply = reply;
    QUrl refused;
    connect(reply, &QNetworkReply::redirected, reply, [reply, url, &refused](const QUrl& to) {
        if (to.scheme() == QLatin1String("https") || to.host() == url.host()) {
            emit reply->redirectAllowed();
        } else {
            refused = to;
            reply->abort();
        }
    });
    connect(reply, &QNetworkReply::downloadProgress, this, &FirmwareDownload::progress);
    QEventLoop loop;
    connect(reply, &QNetworkReply::finished, &loop, &QEventLoop::quit);
    if (!reply->isFinished()) {
        loop.exec();
    }
    m_reply = nullptr;
    const QNetworkReply::NetworkError code = reply->error();
    const int status = reply->attribute(QNetworkRequest::HttpStatusCodeAttribute).toInt();
    if (code == QNetworkReply::NoError) {
        *body = reply->readAll();
    }
    reply->deleteLater();
    if (!refused.isEmpty()) {
        *error = QStringLiteral("the server sent us on to %1, which is neither HTTPS nor the same "
                                "server")
                     .arg(refused.toString());
        return false;
    }
    if (m_cancelled) {
        *error = QStringLiteral("cancelled");
        return false;
    }
    if (code == QNetworkReply::ContentNotFoundError || status == 404) {
        *error = QStringLiteral("the server has no %1").arg(url.fileName());
        return false;
    }
    if (code == QNetworkReply::OperationCanceledError) {
        *error = QStringLiteral("the server stopped answering");
        return false;
    }
    if (code != QNetworkReply::NoError) {
        *error =
            QStringLiteral("the firmware server cannot be reached (%1)").arg(reply->errorString());
        return false;
    }
    return true;
}

FirmwareDownload::Result FirmwareDownload::fetch(const QString& baseUrl, const QString& dataDir,
                                                 const QString& historyFile) {
    Result result;
    m_cancelled = false;
    QUrl base(baseUrl.endsWith(QLatin1Char('/')) ? baseUrl : baseUrl + QLatin1Char('/'));
    QByteArray body;
    QList<IndexEntry> entries;
    emit message(QStringLiteral("Asking %1 for new firmware...").arg(base.toString()));
    if (!get(base.resolved(QUrl(QStringLiteral("index.json"))), &body, &result.error) ||
        !parseIndex(body, &entries, &result.error)) {
        return result;
    }
    const QStringList history = readHistory(historyFile);
    for (const IndexEntry& e : entries) {
        if (history.contains(e.archive) || m_cancelled) {
            continue;
        }
        emit message(QStringLiteral("Downloading firmware %1 (%2)...").arg(e.version, e.archive));
        QString why;
        QByteArray zip;
        if (!get(base.resolved(QUrl(e.archive)), &zip, &why)) {
            result.refused.append({e.archive, why});
            continue;
        }
        if (zip.size() != e.size ||
            QCryptographicHash::hash(zip, QCryptographicHash::Sha256).toHex() !=
                e.sha256.toLatin1()) {
            result.refused.append(
                {e.archive, zip.size() != e.size
                                ? QStringLiteral("the download is incomplete or damaged")
                                : QStringLiteral("the checksum does not match")});
            continue;
        }
        QBuffer buffer(&zip);
        buffer.open(QIODevice::ReadOnly);
        QStringList installed;
        if (!installArchive(&buffer, dataDir, &installed, &why) ||
            !appendHistory(historyFile, e.archive, &why)) {
            result.refused.append({e.archive, why});
            continue;
        }
        result.installed << e.archive;
        emit message(QStringLiteral("Installed firmware %1.").arg(e.version));
    }
    if (m_cancelled && result.error.isEmpty()) {
        result.error = QStringLiteral("cancelled");
    }
    return result;
}

} // namespace firmware
