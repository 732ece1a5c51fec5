#pragma once
// The serial ports as a person choosing one sees them: each entry names what it is
// ("USB serial CH340 (1a86:7523)", "Simulated instrument"), the USB adapters come first,
// then simulated instruments, then the other ports, and on-board ports with no UART behind
// them are left out. The port
// dialog, the firmware update window and `kxsetup-cli device ports` show this list.
#include <QList>
#include <QString>
#include <QStringList>

namespace util {

class SerialSystem;

struct SerialPortDescription {
    QString path;
    QString description; // what the port is, e.g. "USB serial CH340 (1a86:7523)"
    QString usb;         // "vvvv:pppp" for a USB adapter, else empty
};

// The ports of `paths` (the uploader's list: the enumerated ports, then the extra ones) as
// the person sees them, USB adapters first, then simulated instruments, each group in the
// order given.
QList<SerialPortDescription> describePorts(const QStringList& paths, const SerialSystem& system);
// The same on this machine.
QList<SerialPortDescription> describePorts(const QStringList& paths);

// An entry as one line: "USB serial CH340 (1a86:7523) at /dev/ttyUSB0". (Inline, as the
// dialogs of the widgets layer use it without the device layer.)
inline QString portText(const SerialPortDescription& port) {
    return QStringLiteral("%1 at %2").arg(port.description, port.path);
}

// The entry to choose first: the port used last when it is listed, else the only USB
// adapter, else the first entry; -1 for an empty list.
inline int preselectedPort(const QList<SerialPortDescription>& ports, const QString& lastPort) {
    int usb = -1; // -2: more than one
    for (int i = 0; i < ports.size(); ++i) {
        if (!lastPort.isEmpty() && ports.at(i).path == lastPort) {
            return i;
        }
        if (!ports.at(i).usb.isEmpty()) {
            usb = usb == -1 ? i : -2;
        }
    }
    return usb >= 0 ? usb : (ports.isEmpty() ? -1 : 0);
}

// Lists a device path the platform does not enumerate (a pseudo-terminal, such as a
// simulated instrument's) after the enumerated ports from now on (Uploader::findComPorts).
void addExtraPort(const QString& path);

} // namespace util
