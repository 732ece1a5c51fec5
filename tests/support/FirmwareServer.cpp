#include "support/FirmwareServer.h"

#include "support/SampleData.h"
#include "support/TestSupport.h"

#include "sf/parser/HexParser.h"

#include <quazip.h>
#include <quazipfile.h>
#include <quazipnewinfo.h>

#include <QBuffer>
#include <QCryptographicHash>
#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

namespace testsupport {

bool writeZip(const QString& path, const QList<ZipEntry>& entries) {
    QuaZip zip(path);
    if (!zip.open(QuaZip::mdCreate)) {
        return false;
    }
    for (const ZipEntry& e : entries) {
        QuaZipFile file(&zip);
        QuaZipNewInfo info(e.name);
        info.externalAttr = quint32(e.link ? 0120777 : 0100644) << 16;
        if (!file.open(QIODevice::WriteOnly, info) || file.write(e.bytes) != e.bytes.size()) {
            return false;
        }
        file.close();
    }
    zip.close();
    return zip.getZipError() == 0;
}

QByteArray newFirmware(const QString& fw, const QString& kxs) {
    sf::parser::HexParser image;
    if (!image.loadHex(sampledata::runtimeDir() + "/data/firmware/kx4/2025/4.01.kxhex",
                       sf::parser::PhantomNone, QIODevice::ReadOnly)) {
        return QByteArray();
    }
    image.setFwVersion(fw);
    image.setEnqString(fw);
    image.setKxsVersion(kxs);
    QBuffer out;
    out.open(QIODevice::WriteOnly);
    image.writeToDevice(&out, false, 16);
    return out.data();
}

QMap<QString, QByteArray> listing(const QString& dir) {
    QMap<QString, QByteArray> all;
    QDirIterator it(dir, QDir::Files | QDir::Hidden | QDir::System, QDirIterator::Subdirectories);
    while (it.hasNext()) {
        const QString path = it.next();
        QFile f(path);
        f.open(QIODevice::ReadOnly);
        all.insert(QDir(dir).relativeFilePath(path),
                   QCryptographicHash::hash(f.readAll(), QCryptographicHash::Sha256));
    }
    return all;
}

FirmwareServer::FirmwareServer(const QString& dir, const QStringList& options) {
    m_process.start(toolPath("kx-fwserver"), QStringList{dir} + options);
    if (m_process.waitForReadyRead(5000)) {
        m_url = QString::fromLatin1(m_process.readLine()).trimmed();
    }
    if (m_url.isEmpty()) {
        qFatal("kx-fwserver did not start: %s", m_process.readAllStandardError().constData());
    }
}

FirmwareServer::~FirmwareServer() {
    m_process.kill();
    m_process.waitForFinished();
}

void serve(const QString& dir, const QString& archive, const QByteArray& zip,
           const QByteArray& indexSha, qint64 indexSize) {
    QFile out(dir + "/" + archive);
    out.open(QIODevice::WriteOnly);
    out.write(zip);
    out.close();
    const QJsonObject entry{
        {"version", "4.02"},
        {"archive", archive},
        {"sha256",
         QString::fromLatin1(indexSha.isEmpty()
                                 ? QCryptographicHash::hash(zip, QCryptographicHash::Sha256).toHex()
                                 : indexSha)},
        {"size", double(indexSize < 0 ? zip.size() : indexSize)}};
    QFile index(dir + "/index.json");
    index.open(QIODevice::WriteOnly);
    index.write(QJsonDocument(QJsonObject{{"firmware", QJsonArray{entry}}}).toJson());
}

} // namespace testsupport
