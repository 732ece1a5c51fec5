#pragma once
// What the connection doctor and the port list need to know of the machine: USB serial
// adapters, what a port is, the access the user has to a device, which processes hold it,
// whether ModemManager runs, the installed device rule, and the instrument's answer to an
// enquiry. One seam, so that a test can put a fake device tree
// (or a fake object) in the machine's place.
#include <QList>
#include <QString>
#include <QStringList>

namespace util {

class SerialSystem {
public:
    struct Adapter {
        QString device;   // /dev/ttyUSB0
        QString vendorId; // four lower-case hexadecimal digits, as the kernel shows them
        QString productId;
        QString driver;  // the kernel driver, e.g. ch341-uart
        QString product; // the adapter's own name, when it gives one
    };
    // What a serial port is.
    struct Port {
        enum Kind {
            Usb,            // a USB serial adapter, described by `adapter`
            OnBoard,        // an on-board UART (ttyS)
            NoUart,         // an on-board port with no UART behind it
            Simulator,      // the pseudo-terminal of a running kx-sim
            PseudoTerminal, // another pseudo-terminal
            Other           // anything else (a platform UART, a path the machine does not know)
        };
        Kind kind = Other;
        Adapter adapter;
    };
    struct Access {
        bool exists = false;
        bool readable = false; // by this process
        bool writable = false;
        QString owner;
        QString group;
        QString mode; // as ls shows it, e.g. crw-rw----
    };
    struct Holder {
        qint64 pid = 0;
        QString program;
    };

    virtual ~SerialSystem();
    virtual QList<Adapter> adapters() const = 0;
    // A device path, or a link to one.
    virtual Port port(const QString& device) const = 0;
    virtual Access access(const QString& device) const = 0;
    virtual QString userName() const = 0;
    // The groups the user belongs to in the group database, and those this session has
    // (they differ until the user logs in again after being added to a group).
    virtual QStringList userGroups() const = 0;
    virtual QStringList sessionGroups() const = 0;
    // Other processes that have the device open.
    virtual QList<Holder> holders(const QString& device) const = 0;
    virtual bool modemManagerRunning() const = 0;
    // The USB identifiers ("vvvv:pppp") the installed device rule opens to the person at
    // the computer; empty without the rule (a build from source).
    virtual QStringList ruleAdapters() const = 0;
    // The instrument's identification text, null when it does not answer.
    virtual QString enquire(const QString& device) = 0;
};

// The real machine: sysfs, /dev, /proc and the udev rules folders under `root` ("/" normally; a
// test gives a folder with a fake tree), the user database of this process, and the serial port.
class LinuxSerialSystem : public SerialSystem {
public:
    explicit LinuxSerialSystem(const QString& root = QStringLiteral("/"));
    QList<Adapter> adapters() const override;
    Port port(const QString& device) const override;
    Access access(const QString& device) const override;
    QString userName() const override;
    QStringList userGroups() const override;
    QStringList sessionGroups() const override;
    QList<Holder> holders(const QString& device) const override;
    bool modemManagerRunning() const override;
    QStringList ruleAdapters() const override;
    QString enquire(const QString& device) override;

private:
    QString path(const QString& absolute) const;
    bool readUsb(const QString& name, Adapter* adapter) const;
    QList<int> simulatorTerminals() const;
    QString m_root;
};

} // namespace util
