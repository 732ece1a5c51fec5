#include "support/ManagerFixtures.h"

#include "support/LayoutFixtures.h"

#include "sf/SettingManager.h"
#include "sf/parser/Inhex32Entry.h"

#include <QFile>

namespace testsupport {

QByteArray hexImage(const QMap<quint32, QByteArray>& blocks, const QString& fwVersion,
                    const QString& kxsVersion, const QString& enq) {
    QByteArray out;
    const QString texts[] = {fwVersion, kxsVersion, enq};
    for (int i = 0; i < 3; ++i) {
        if (!texts[i].isEmpty()) {
            out.append(sf::parser::Inhex32Entry::line(static_cast<quint8>(0xC0 + i), 0,
                                                      texts[i].toLatin1()));
        }
    }
    quint32 upper = 0;
    for (auto it = blocks.constBegin(); it != blocks.constEnd(); ++it) {
        const QByteArray& bytes = it.value();
        for (int done = 0; done < bytes.size();) {
            const quint32 address = it.key() + static_cast<quint32>(done);
            if ((address >> 16) != upper) {
                upper = address >> 16;
                QByteArray data;
                data.append(static_cast<char>(upper >> 8));
                data.append(static_cast<char>(upper & 0xFF));
                out.append(sf::parser::Inhex32Entry::line(0x04, 0, data));
            }
            // Stop at 16 bytes and at the next 64 KiB boundary.
            const int room = static_cast<int>(0x10000 - (address & 0xFFFF));
            const int n = qMin(qMin(16, bytes.size() - done), room);
            out.append(sf::parser::Inhex32Entry::line(0x00, static_cast<quint16>(address & 0xFFFF),
                                                      bytes.mid(done, n)));
            done += n;
        }
    }
    out.append(sf::parser::Inhex32Entry::line(0x01, 0, QByteArray()));
    return out;
}

util::VersionContainer managerVersion(const QString& fwVersion, const QString& kxsVersion,
                                      const QString& kxsFilePath) {
    util::VersionContainer version;
    version.fwVersion = fwVersion;
    version.kxsVersion = kxsVersion;
    version.enqString = QStringLiteral("ENQ ") + fwVersion;
    version.kxsFilePath = kxsFilePath;
    version.kxsFormat = 1001;
    return version;
}

QString standardLayoutSource() {
    return QStringLiteral(
        "version \"KX4-T1\"\n"
        "format 1001\n"
        "setting Early 0x00 1 = num, EARLY, u8, 0`255, [], 0, \"Early\", \"\"\n"
        "category Batt \"Battery\" \"Packs\"\n"
        "setting Packs 0x01 1 = num, PACKS, u8, 0`2, [], 0, \"Packs\", \"\"\n"
        "setting Cells1 0x02 1 = num, CELLS, u8, 1`24, [], 0, \"Cells\", \"\"\n"
        "setting Cells2 0x03 1 = num, CELLS, u8, 1`24, [], 0, \"Cells\", \"\"\n"
        "setting Lim1 0x04 2 = num, LIM, u16, 0`Cells1*42, [/10], 1, \"Limit\", \"V\"\n"
        "setting Low1 0x06 2 = num, LOW, u16, 0`Cells1*30, [/10], 1, \"Low\", \"V\"\n"
        "category Disp \"Display\" \"\"\n"
        "setting Flags 0x08 2 = bool, 16, {\"Beep\", \"Light\", \"Lock\"}\n"
        "setting Boxes 0x0A 1 = checkbool[8], {\"A\", \"B\", \"C\"}, \"Boxes\", \"\"\n"
        "setting Screen 0x0B 1 = list, SCREEN, ScreenCount, ScreenNames, \"Screen\", \"\"\n"
        "setting Hid 0x0C 1 = num, HIDW, u8, 0`255, [], 0, \"Hidden\", \"\", HID\n"
        "setting Dis 0x0D 1 = num, DISW, u8, 0`255, [], 0, \"Disabled\", \"\", DIS\n"
        "u8 ScreenCount 3\n"
        "strings ScreenNames \"Speed\" \"Power\" \"Trip\"\n");
}

QByteArray standardImageBytes() {
    return QByteArray::fromHex("07010C0A01E0015E000502011122EEEF");
}

QByteArray standardImage(const QString& fwVersion, const QString& kxsVersion) {
    QMap<quint32, QByteArray> blocks;
    blocks.insert(0, standardImageBytes());
    return hexImage(blocks, fwVersion, kxsVersion, QStringLiteral("ENQ ") + fwVersion);
}

ManagerFiles::ManagerFiles() = default;

QString ManagerFiles::write(const QString& name, const QByteArray& bytes) const {
    const QString file = m_dir.filePath(name);
    QFile out(file);
    if (!out.open(QIODevice::WriteOnly | QIODevice::Truncate) || out.write(bytes) != bytes.size()) {
        return QString();
    }
    return file;
}

QByteArray ManagerFiles::read(const QString& path) {
    QFile in(path);
    return in.open(QIODevice::ReadOnly) ? in.readAll() : QByteArray();
}

int loadStandard(sf::SettingManager& manager, ManagerFiles& files, const QByteArray& image) {
    const QString layout =
        files.write(QStringLiteral("t1.kxs"), compileLayout(standardLayoutSource()));
    const QString setup = files.write(QStringLiteral("setup.hex"), image);
    return manager.loadRawSettings(managerVersion(FW, KXS, layout), setup, false);
}

int ManagerTableModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : m_manager->modelSize(this);
}

int ManagerTableModel::columnCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : m_manager->maxPresets();
}

QVariant ManagerTableModel::data(const QModelIndex& index, int role) const {
    if (role == Qt::DisplayRole) {
        return m_manager->getSettingData(index, sf::RoleDisplay);
    }
    if (role == Qt::EditRole) {
        return m_manager->getSettingData(index, sf::RoleEdit);
    }
    return QVariant();
}

} // namespace testsupport
