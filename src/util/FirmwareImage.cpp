#include "util/FirmwareImage.h"

#include "sf/parser/HexLineReader.h"
#include "sf/parser/Inhex32Entry.h"
#include "sf/parser/PhantomBytes.h"

#include <QFile>

namespace util::link {

namespace {

const QString TRUNCATED_LOW =
    QStringLiteral("Truncating lower range limit to lower range of writable flash");
const QString UNREACHABLE =
    QStringLiteral("Hex file defines memory unreachable. Truncating at address 0x%1");

// Puts one data record's bytes into the image; notes what lies outside writable memory.
void place(FirmwareImage& image, const DeviceProfile& p, quint64 address, const quint8* data,
           int length) {
    const quint64 settingsFrom = p.imageAddress(p.settingsStart);
    const quint64 settingsTo = p.imageAddress(p.settingsEnd);
    for (int i = 0; i < length; ++i, ++address) {
        if (address >= settingsFrom && address < settingsTo) {
            image.settings[int(address - settingsFrom)] = char(data[i]);
            image.hasSettings = true;
        } else if (address >= p.programStart && address < p.programEnd &&
                   !p.inBootloader(address)) {
            image.program[int(address - p.programStart)] = char(data[i]);
            image.hasProgram = true;
        } else if (address < p.programStart) {
            if (!image.warnings.contains(TRUNCATED_LOW)) {
                image.warnings << TRUNCATED_LOW;
            }
        } else if (!image.warnings.filter(UNREACHABLE.left(40)).size()) {
            image.warnings << UNREACHABLE.arg(address, 0, 16);
        }
    }
}

QString describe(const QString& readerError, qint64 line) {
    if (readerError.contains(QLatin1String("checksum"))) {
        return QStringLiteral("Byte conv error on checksum?! (line %1)").arg(line);
    }
    if (readerError.contains(QLatin1String("digits")) ||
        readerError.contains(QLatin1String("record start"))) {
        return QStringLiteral("Byte conv error?! (line %1)").arg(line);
    }
    return QStringLiteral("Line at address  %x rejected (line %1)").arg(line);
}

} // namespace

QByteArray FirmwareImage::programRealBytes(const DeviceProfile& profile) const {
    return sf::parser::PhantomBytes(profile.phantomPeriod())
        .remove(program, profile.programStart, quint64(program.size()));
}

FirmwareImage readFirmware(QIODevice* device, const DeviceProfile& profile) {
    using sf::parser::Inhex32Entry;
    FirmwareImage image;
    image.program = QByteArray(int(profile.programEnd - profile.programStart), char(0xFF));
    image.settings = QByteArray(int(profile.imageAddress(profile.settingsEnd) -
                                    profile.imageAddress(profile.settingsStart)),
                                '\0');
    sf::parser::HexLineReader reader(device);
    sf::parser::HexLineRecord record;
    quint64 base = 0; // from the last extended address record
    const auto value16 = [&record] {
        return record.length == 2 ? (quint64(record.data[0]) << 8) | record.data[1] : 0;
    };
    for (;;) {
        const qint64 line = reader.lineNumber();
        const sf::parser::HexLineReader::Result result = reader.next(record);
        if (result == sf::parser::HexLineReader::End) {
            image.error = QStringLiteral("No end of file reached?");
            return image;
        }
        if (result == sf::parser::HexLineReader::Error) {
            image.error = describe(reader.errorString(), line);
            return image;
        }
        const QByteArray bytes(reinterpret_cast<const char*>(record.data), record.length);
        switch (record.type) {
        case Inhex32Entry::TypeEndOfFile:
            return image;
        case Inhex32Entry::TypeData:
            place(image, profile, base + record.address, record.data, record.length);
            break;
        case Inhex32Entry::TypeExtendedLinear:
            base = value16() << 16;
            break;
        case 0x02: // extended segment address
            base = value16() << 4;
            break;
        case 0x03: // start addresses: nothing to write
        case 0x05:
            break;
        case Inhex32Entry::TypeFwVersion:
            image.fwVersion = QString::fromLatin1(bytes);
            break;
        case Inhex32Entry::TypeKxsVersion:
            image.kxsVersion = QString::fromLatin1(bytes);
            break;
        case Inhex32Entry::TypeEnqString:
            image.enqString = QString::fromLatin1(bytes);
            break;
        default:
            image.error = QStringLiteral("Line at address  %x rejected (line %1)").arg(line);
            return image;
        }
    }
}

FirmwareImage readFirmware(const QString& path, const DeviceProfile& profile) {
    QFile file(path);
    if (path.isEmpty() || !file.open(QIODevice::ReadOnly)) {
        FirmwareImage image;
        image.error = QStringLiteral("Failed to open file!");
        return image;
    }
    return readFirmware(&file, profile);
}

} // namespace util::link
