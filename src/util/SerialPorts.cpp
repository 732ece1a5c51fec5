#include "util/SerialPorts.h"

#include "util/ConnectionDoctor.h"
#include "util/SerialSystem.h"
#include "util/Uploader.h"

namespace util {

namespace {

QString usbName(const SerialSystem::Adapter& adapter) {
    if (const KnownAdapter* known = findKnownAdapter(adapter.vendorId, adapter.productId)) {
        return QLatin1String(known->name);
    }
    return adapter.product.isEmpty() ? QStringLiteral("adapter") : adapter.product;
}

} // namespace

QList<SerialPortDescription> describePorts(const QStringList& paths, const SerialSystem& system) {
    QList<SerialPortDescription> usb;
    QList<SerialPortDescription> simulated; // what a demo or a test means to reach
    QList<SerialPortDescription> others;
    for (const QString& path : paths) {
        const SerialSystem::Port port = system.port(path);
        SerialPortDescription entry{path, QString(), QString()};
        switch (port.kind) {
        case SerialSystem::Port::Usb:
            entry.usb = port.adapter.vendorId + QLatin1Char(':') + port.adapter.productId;
            entry.description =
                QStringLiteral("USB serial %1 (%2)").arg(usbName(port.adapter), entry.usb);
            usb << entry;
            continue;
        case SerialSystem::Port::NoUart:
            continue;
        case SerialSystem::Port::OnBoard:
            entry.description = QStringLiteral("On-board serial port");
            break;
        case SerialSystem::Port::Simulator:
            entry.description = QStringLiteral("Simulated instrument");
            simulated << entry;
            continue;
        case SerialSystem::Port::PseudoTerminal:
            entry.description = QStringLiteral("Pseudo-terminal");
            break;
        case SerialSystem::Port::Other:
            entry.description = QStringLiteral("Serial port");
            break;
        }
        others << entry;
    }
    return usb + simulated + others;
}

QList<SerialPortDescription> describePorts(const QStringList& paths) {
    return describePorts(paths, LinuxSerialSystem());
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
