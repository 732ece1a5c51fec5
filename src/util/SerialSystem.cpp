#include "util/SerialSystem.h"

#include "util/DeviceRule.h"
#include "util/KXCommunicator.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QVector>

#include <grp.h>
#include <pwd.h>
#include <sys/stat.h>
#include <unistd.h>

namespace util {

namespace {

QString firstLine(const QString& path) {
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readLine()).trimmed()
                                          : QString();
}

QString modeText(mode_t mode) {
    QString text = S_ISCHR(mode) ? QStringLiteral("c") : QStringLiteral("-");
    const char* letters = "rwx";
    for (int bit = 8; bit >= 0; --bit) {
        text += (mode & (1u << bit)) ? QLatin1Char(letters[(8 - bit) % 3]) : QLatin1Char('-');
    }
    return text;
}

QString groupName(gid_t gid) {
    const group* g = getgrgid(gid);
    return g ? QString::fromLocal8Bit(g->gr_name) : QString::number(gid);
}

} // namespace

SerialSystem::~SerialSystem() = default;

LinuxSerialSystem::LinuxSerialSystem(const QString& root) : m_root(root) {}

QString LinuxSerialSystem::path(const QString& absolute) const {
    return QDir::cleanPath(m_root + QLatin1Char('/') + absolute);
}

// The driver and USB identifiers of /sys/class/tty/NAME; false when it is not behind USB.
bool LinuxSerialSystem::readUsb(const QString& name, Adapter* adapter) const {
    const QString device =
        QFileInfo(path(QStringLiteral("/sys/class/tty/%1/device").arg(name))).canonicalFilePath();
    adapter->driver =
        QFileInfo(QFileInfo(device + QStringLiteral("/driver")).canonicalFilePath()).fileName();
    // The USB device is the nearest folder above the interface that has the identifiers.
    for (QDir dir(device);
         !device.isEmpty() && dir.path().startsWith(path(QStringLiteral("/sys")));) {
        if (QFileInfo::exists(dir.filePath(QStringLiteral("idVendor")))) {
            adapter->vendorId = firstLine(dir.filePath(QStringLiteral("idVendor")));
            adapter->productId = firstLine(dir.filePath(QStringLiteral("idProduct")));
            adapter->product = firstLine(dir.filePath(QStringLiteral("product")));
            return true;
        }
        if (!dir.cdUp()) {
            break;
        }
    }
    return false;
}

QList<SerialSystem::Adapter> LinuxSerialSystem::adapters() const {
    QList<Adapter> found;
    const QDir ttys(path(QStringLiteral("/sys/class/tty")));
    const QStringList names =
        ttys.entryList({QStringLiteral("ttyUSB*"), QStringLiteral("ttyACM*")},
                       QDir::Dirs | QDir::Files | QDir::System | QDir::NoDotAndDotDot, QDir::Name);
    for (const QString& name : names) {
        Adapter adapter;
        adapter.device = QStringLiteral("/dev/") + name;
        readUsb(name, &adapter);
        found << adapter;
    }
    return found;
}

SerialSystem::Port LinuxSerialSystem::port(const QString& device) const {
    Port result;
    result.adapter.device = device;
    // A link (such as the simulator's --link) stands for the device it points to.
    QString real = QFileInfo(path(device)).canonicalFilePath();
    const QString base = QFileInfo(path(QStringLiteral("/"))).canonicalFilePath();
    if (real.isEmpty()) {
        real = device; // not in /dev (yet): sysfs may still know it
    } else if (base != QLatin1String("/") && real.startsWith(base + QLatin1Char('/'))) {
        real = real.mid(base.size());
    }
    const QString name = QFileInfo(real).fileName();
    if (real.startsWith(QLatin1String("/dev/pts/"))) {
        result.kind =
            simulatorTerminals().contains(name.toInt()) ? Port::Simulator : Port::PseudoTerminal;
    } else if (!QFileInfo::exists(path(QStringLiteral("/sys/class/tty/%1/device").arg(name)))) {
        result.kind = Port::Other;
    } else if (readUsb(name, &result.adapter)) {
        result.kind = Port::Usb;
    } else if (name.startsWith(QLatin1String("ttyS"))) {
        // The kernel lists every port the chipset might have; "type" 0 is no UART at all.
        const QString type = firstLine(path(QStringLiteral("/sys/class/tty/%1/type").arg(name)));
        result.kind = type == QLatin1String("0") ? Port::NoUart : Port::OnBoard;
    }
    return result;
}

// The pseudo-terminals that running simulators answer on: a kx-sim process holds the
// terminal's master side (/dev/ptmx), whose number its fdinfo gives as tty-index.
QList<int> LinuxSerialSystem::simulatorTerminals() const {
    QList<int> numbers;
    const QDir proc(path(QStringLiteral("/proc")));
    for (const QString& pid : proc.entryList(QDir::Dirs | QDir::NoDotAndDotDot)) {
        if (firstLine(proc.filePath(pid + QStringLiteral("/comm"))) != QLatin1String("kx-sim")) {
            continue;
        }
        const QDir fds(proc.filePath(pid + QStringLiteral("/fd")));
        for (const QFileInfo& fd : fds.entryInfoList(QDir::Files | QDir::System)) {
            if (!fd.isSymLink() ||
                QFileInfo(fd.symLinkTarget()).fileName() != QLatin1String("ptmx")) {
                continue;
            }
            QFile info(proc.filePath(pid + QStringLiteral("/fdinfo/") + fd.fileName()));
            if (!info.open(QIODevice::ReadOnly)) {
                continue;
            }
            for (const QByteArray& line : info.readAll().split('\n')) {
                if (line.startsWith("tty-index:")) {
                    numbers << line.mid(10).trimmed().toInt();
                }
            }
        }
    }
    return numbers;
}

SerialSystem::Access LinuxSerialSystem::access(const QString& device) const {
    Access result;
    const QByteArray file = QFile::encodeName(path(device));
    struct stat info {};
    if (::stat(file.constData(), &info) != 0) {
        return result;
    }
    result.exists = true;
    result.readable = ::access(file.constData(), R_OK) == 0;
    result.writable = ::access(file.constData(), W_OK) == 0;
    const passwd* owner = getpwuid(info.st_uid);
    result.owner = owner ? QString::fromLocal8Bit(owner->pw_name) : QString::number(info.st_uid);
    result.group = groupName(info.st_gid);
    result.mode = modeText(info.st_mode);
    return result;
}

QString LinuxSerialSystem::userName() const {
    const passwd* user = getpwuid(getuid());
    return user ? QString::fromLocal8Bit(user->pw_name) : QString::number(getuid());
}

QStringList LinuxSerialSystem::userGroups() const {
    const passwd* user = getpwuid(getuid());
    if (!user) {
        return sessionGroups();
    }
    int count = 64;
    QVector<gid_t> gids(count);
    if (getgrouplist(user->pw_name, user->pw_gid, gids.data(), &count) < 0) {
        gids.resize(count);
        getgrouplist(user->pw_name, user->pw_gid, gids.data(), &count);
    }
    QStringList names;
    for (int i = 0; i < count; ++i) {
        names << groupName(gids.at(i));
    }
    return names;
}

QStringList LinuxSerialSystem::sessionGroups() const {
    QVector<gid_t> gids(getgroups(0, nullptr));
    const int count = getgroups(gids.size(), gids.data());
    QStringList names{groupName(getegid())};
    for (int i = 0; i < count; ++i) {
        names << groupName(gids.at(i));
    }
    return names;
}

QList<SerialSystem::Holder> LinuxSerialSystem::holders(const QString& device) const {
    QList<Holder> found;
    const QString target = QFileInfo(path(device)).canonicalFilePath();
    const QDir proc(path(QStringLiteral("/proc")));
    const QString self = QString::number(::getpid());
    for (const QString& pid : proc.entryList(QDir::Dirs | QDir::NoDotAndDotDot)) {
        bool numeric = false;
        const qint64 number = pid.toLongLong(&numeric);
        if (!numeric || pid == self || target.isEmpty()) {
            continue;
        }
        const QDir fds(proc.filePath(pid + QStringLiteral("/fd")));
        for (const QFileInfo& fd : fds.entryInfoList(QDir::Files | QDir::System)) {
            if (fd.isSymLink() && QFileInfo(fd.symLinkTarget()).canonicalFilePath() == target) {
                found << Holder{number, firstLine(proc.filePath(pid + QStringLiteral("/comm")))};
                break;
            }
        }
    }
    return found;
}

bool LinuxSerialSystem::modemManagerRunning() const {
    const QDir proc(path(QStringLiteral("/proc")));
    for (const QString& pid : proc.entryList(QDir::Dirs | QDir::NoDotAndDotDot)) {
        if (firstLine(proc.filePath(pid + QStringLiteral("/comm"))) ==
            QLatin1String("ModemManager")) {
            return true;
        }
    }
    return false;
}

QStringList LinuxSerialSystem::ruleAdapters() const {
    // The first folder that has the file decides, as for udev (an empty file there hides
    // the package's).
    for (const QString& folder : udevRuleFolders()) {
        QFile file(path(folder + QLatin1Char('/') + DEVICE_RULE_FILE));
        if (file.open(QIODevice::ReadOnly)) {
            QStringList adapters;
            QString error;
            return readDeviceRule(file.readAll(), &adapters, &error) ? adapters : QStringList();
        }
    }
    return {};
}

QString LinuxSerialSystem::enquire(const QString& device) {
    KXCommunicator communicator;
    return communicator.getParsedENQVersionBlocking(path(device), 3);
}

} // namespace util
