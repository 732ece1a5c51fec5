#include "support/VersionFixtures.h"

#include "support/HexFixtures.h"

#include "kxs/compiler/KxsWriter.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

namespace versionfixtures {

namespace hex = testsupport::hex;

QByteArray firmwareImage(const QString& fwVersion, const QString& kxsVersion,
                         const QString& enqString) {
    QByteArray image;
    if (!fwVersion.isEmpty()) {
        image += hex::line(0xC0, 0, fwVersion.toLatin1());
    }
    if (!kxsVersion.isEmpty()) {
        image += hex::line(0xC1, 0, kxsVersion.toLatin1());
    }
    if (!enqString.isEmpty()) {
        image += hex::line(0xC2, 0, enqString.toLatin1());
    }
    image += hex::line(0x04, 0, QByteArray::fromHex("0001"));
    image += hex::line(0x00, 0xE000, QByteArray::fromHex("0102030405060708"));
    image += hex::line(0x00, 0xE008, QByteArray::fromHex("A0B0C0D0"));
    image += hex::eofLine();
    return image;
}

QByteArray layoutFile(const QString& kxsVersion, quint16 format) {
    kxs::compiler::KxsWriter writer;
    writer.setVersion(kxsVersion);
    writer.setFormat(format);
    writer.addCategory(QStringLiteral("CAT_MAIN"), QStringLiteral("Main"),
                       QStringLiteral("Preset"));
    writer.addSetting(QStringLiteral("wheelSize"), 0x1E000, 2,
                      QStringLiteral("num, u16, Wheel size, mm, 0, 5000"));
    writer.addSetting(QStringLiteral("maxSpeed"), 0x1E002, 1,
                      QStringLiteral("num, u8, Speed limit, km/h, 0, 99"));
    return writer.toBytes();
}

bool addVersion(const QString& root, const QString& relativePath, const QString& fwVersion,
                const QString& kxsVersion, const QString& enqString, quint16 layoutFormat) {
    const QString data = root + QStringLiteral("/data/");
    if (!writeFile(data + QStringLiteral("firmware/") + relativePath,
                   firmwareImage(fwVersion, kxsVersion, enqString))) {
        return false;
    }
    if (layoutFormat == 0) {
        return true;
    }
    return writeFile(data + QStringLiteral("kxs/") + kxsVersion + QStringLiteral(".kxs"),
                     layoutFile(kxsVersion, layoutFormat));
}

} // namespace versionfixtures
