#include "util/SerialPorts.h"

#include "util/Uploader.h"

#include <QSerialPortInfo>

namespace util {

QList<SerialPortDescription> describePorts(const QStringList& paths) {
    QList<SerialPortDescription> ports;
    for (const QString& path : paths) {
        SerialPortDescription port{path, QString(), QString()};
        const QSerialPortInfo info(path);
        if (!info.isNull()) {
            port.description = info.description();
            if (info.hasVendorIdentifier() && info.hasProductIdentifier()) {
                port.usb = QStringLiteral("%1:%2")
                               .arg(info.vendorIdentifier(), 4, 16, QLatin1Char('0'))
                               .arg(info.productIdentifier(), 4, 16, QLatin1Char('0'));
            }
        }
        ports.append(port);
    }
    return ports;
}

void addExtraPort(const QString& path) {
    const QByteArray extra = qgetenv(Uploader::EXTRA_PORTS_VARIABLE);
    const QList<QByteArray> listed = extra.split(':');
    const QByteArray device = path.toLocal8Bit();
    if (!path.isEmpty() && !listed.contains(device)) {
        qputenv(Uploader::EXTRA_PORTS_VARIABLE, extra.isEmpty() ? device : extra + ':' + device);
    }
}

} // namespace util
