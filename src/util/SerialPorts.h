#pragma once
// The serial ports as a person choosing one needs to see them.
#include <QList>
#include <QString>
#include <QStringList>

namespace util {

struct SerialPortDescription {
    QString path;
    QString description; // the adapter, as the platform names it (may be empty)
    QString usb;         // "vvvv:pppp" USB vendor and product, when the platform knows them
};

// What the platform knows of each device path, in the order given.
QList<SerialPortDescription> describePorts(const QStringList& paths);

// Lists a device path the platform does not enumerate (a pseudo-terminal, such as a
// simulated instrument's) after the enumerated ports from now on (Uploader::findComPorts).
void addExtraPort(const QString& path);

} // namespace util
