#include "support/GeneratedLayout.h"

#include "kxs/compiler/KxsWriter.h"
#include "sf/parser/Inhex32Entry.h"

namespace benchdata {

namespace {

const QString VERSION = QStringLiteral("KX4-BENCH");
const QString FIRMWARE = QStringLiteral("FWB");

} // namespace

Generated generate(int count) {
    kxs::compiler::KxsWriter writer;
    writer.setVersion(VERSION);
    writer.setFormat(1001);
    QByteArray bytes;
    const auto add = [&](const QString& name, int size, const QString& definition,
                         const QByteArray& value) {
        writer.addSetting(name, static_cast<quint32>(bytes.size()), size, definition);
        bytes.append(value.left(size).leftJustified(size, '\0'));
    };
    for (int i = 0; i < count; ++i) {
        if (i % 100 == 0) {
            writer.addCategory(QStringLiteral("C%1").arg(i / 100),
                               QStringLiteral("Category %1").arg(i / 100), QString());
        }
        const int g = i / 10;
        switch (i % 10) {
        case 0:
            add(QStringLiteral("G%1Base").arg(g), 1,
                QStringLiteral("num, WB%1, u8, 0`255, [], 0, \"Base\", \"\"").arg(g),
                QByteArray(1, char(100)));
            break;
        case 1:
        case 2:
            add(QStringLiteral("Dep%1%2").arg(g).arg(i % 10 == 1 ? 'a' : 'b'), 2,
                QStringLiteral("num, WD%1, u16, 0`G%1Base*4, [/10], 1, \"Dep\", \"V\"").arg(g),
                QByteArray::fromHex("012C")); // 300
            break;
        case 3:
            add(QStringLiteral("G%1Flags").arg(g), 2,
                QStringLiteral("bool, 16, {\"One\", \"Two\", \"Three\"}"),
                QByteArray::fromHex("0005"));
            break;
        case 4:
            add(QStringLiteral("G%1Boxes").arg(g), 1,
                QStringLiteral("checkbool[8], {\"A\", \"B\", \"C\"}, \"Boxes\", \"\""),
                QByteArray(1, char(2)));
            break;
        case 5:
            add(QStringLiteral("G%1Mode").arg(g), 1,
                QStringLiteral("list, WM%1, ListCount, List%2, \"Mode\", \"\"").arg(g).arg(g % 5),
                QByteArray(1, char(1)));
            break;
        case 6:
        case 7:
            add(QStringLiteral("Pre%1x%2").arg(g).arg(i % 10 - 5), 1,
                QStringLiteral("num, WP%1, u8, 0`200, [], 0, \"Preset\", \"\"").arg(g),
                QByteArray(1, char(7)));
            break;
        default:
            add(QStringLiteral("Num%1%2").arg(g).arg(i % 10 == 8 ? 'a' : 'b'), 2,
                QStringLiteral("num, WN%1_%2, u16, 0`60000, [*10/256], 2, \"Number\", \"A\"")
                    .arg(g)
                    .arg(i),
                QByteArray::fromHex("1000"));
            break;
        }
    }
    writer.addInteger(QStringLiteral("ListCount"), 3, 1);
    for (int list = 0; list < 5; ++list) {
        for (int k = 0; k < 3; ++k) {
            writer.addString(k == 0 ? QStringLiteral("List%1").arg(list)
                                    : QStringLiteral("List%1_%2").arg(list).arg(k),
                             QStringLiteral("Option %1").arg(k));
        }
    }

    QByteArray hex = sf::parser::Inhex32Entry::line(0xC0, 0, FIRMWARE.toLatin1()) +
                     sf::parser::Inhex32Entry::line(0xC1, 0, VERSION.toLatin1());
    for (int at = 0; at < bytes.size(); at += 16) {
        hex += sf::parser::Inhex32Entry::line(0x00, static_cast<quint16>(at), bytes.mid(at, 16));
    }
    hex += sf::parser::Inhex32Entry::line(0x01, 0, QByteArray());
    return {writer.toBytes(), hex};
}

util::VersionContainer version() {
    util::VersionContainer v;
    v.fwVersion = FIRMWARE;
    v.kxsVersion = VERSION;
    return v;
}

} // namespace benchdata
