#pragma once

// A firmware download server for a test: archives made with QuaZip (any entry name, links
// too), firmware files of versions the sample data lacks, the server's index, our
// kx-fwserver serving a folder on the loopback address, and a checksum listing of a
// folder to prove it unchanged.

#include <QByteArray>
#include <QList>
#include <QMap>
#include <QMetaType>
#include <QProcess>
#include <QString>
#include <QStringList>

namespace testsupport {

struct ZipEntry {
    QString name;
    QByteArray bytes;
    bool link = false;
};

bool writeZip(const QString& path, const QList<ZipEntry>& entries);

// A firmware file of version fw on the layout kxs, made from the 4.01 sample.
QByteArray newFirmware(const QString& fw, const QString& kxs);

// Every file below a folder with its checksum.
QMap<QString, QByteArray> listing(const QString& dir);

// Puts zip into dir under archive, with an index.json naming it (version 4.02) with the
// given checksum (its own when empty) and size (its own when negative).
void serve(const QString& dir, const QString& archive, const QByteArray& zip,
           const QByteArray& indexSha = QByteArray(), qint64 indexSize = -1);

class FirmwareServer {
public:
    explicit FirmwareServer(const QString& dir, const QStringList& options = {});
    ~FirmwareServer();
    FirmwareServer(const FirmwareServer&) = delete;
    FirmwareServer& operator=(const FirmwareServer&) = delete;
    const QString& url() const { return m_url; }

private:
    QProcess m_process;
    QString m_url;
};

} // namespace testsupport

Q_DECLARE_METATYPE(testsupport::ZipEntry)
