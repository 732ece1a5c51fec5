#include "support/HexFixtures.h"

#include <QList>
#include <QRegularExpression>
#include <QStringList>
#include <QtGlobal>

namespace testsupport::hex {

using sf::parser::Inhex32Entry;

quint8 checksum(quint8 type, quint16 address, const QByteArray& data) {
    unsigned sum = static_cast<unsigned>(data.size()) + (address >> 8) + (address & 0xFF) + type;
    for (char c : data) {
        sum += static_cast<quint8>(c);
    }
    return static_cast<quint8>((0x100 - (sum & 0xFF)) & 0xFF);
}

QByteArray line(quint8 type, quint16 address, const QByteArray& data) {
    QByteArray bytes;
    bytes.append(static_cast<char>(data.size()));
    bytes.append(static_cast<char>(address >> 8));
    bytes.append(static_cast<char>(address & 0xFF));
    bytes.append(static_cast<char>(type));
    bytes.append(data);
    bytes.append(static_cast<char>(checksum(type, address, data)));
    return ':' + bytes.toHex().toUpper() + "\r\n";
}

QByteArray dataLine(quint16 address, const QByteArray& data) {
    return line(0x00, address, data);
}

QByteArray extLine(quint16 upper) {
    QByteArray d;
    d.append(static_cast<char>(upper >> 8));
    d.append(static_cast<char>(upper & 0xFF));
    return line(0x04, 0, d);
}

QByteArray eofLine() {
    return line(0x01, 0, QByteArray());
}

QByteArray metaLine(quint8 type, const QByteArray& text) {
    return line(type, 0, text);
}

namespace {

struct Token {
    quint8 type;
    quint16 address;
    QByteArray data;
};

QList<Token> parse(const QString& notation) {
    static const QRegularExpression ext(QStringLiteral("^X([0-9A-Fa-f]{1,4})$"));
    static const QRegularExpression data(QStringLiteral("^D([0-9A-Fa-f]{1,4}):([0-9A-Fa-f]*)$"));
    static const QRegularExpression other(
        QStringLiteral("^T([0-9A-Fa-f]{2})@([0-9A-Fa-f]{1,4}):([0-9A-Fa-f]*)$"));
    QList<Token> tokens;
    const QStringList words =
        notation.split(QRegularExpression(QStringLiteral("\\s+")), Qt::SkipEmptyParts);
    for (const QString& w : words) {
        QRegularExpressionMatch m;
        if ((m = ext.match(w)).hasMatch()) {
            const quint16 upper = static_cast<quint16>(m.captured(1).toUInt(nullptr, 16));
            QByteArray d;
            d.append(static_cast<char>(upper >> 8));
            d.append(static_cast<char>(upper & 0xFF));
            tokens.append({0x04, 0, d});
        } else if ((m = data.match(w)).hasMatch()) {
            tokens.append({0x00, static_cast<quint16>(m.captured(1).toUInt(nullptr, 16)),
                           QByteArray::fromHex(m.captured(2).toLatin1())});
        } else if ((m = other.match(w)).hasMatch()) {
            tokens.append({static_cast<quint8>(m.captured(1).toUInt(nullptr, 16)),
                           static_cast<quint16>(m.captured(2).toUInt(nullptr, 16)),
                           QByteArray::fromHex(m.captured(3).toLatin1())});
        } else if (w == QLatin1String("F")) {
            tokens.append({0x01, 0, QByteArray()});
        } else {
            qFatal("HexFixtures: bad record notation \"%s\"", qPrintable(w));
        }
    }
    return tokens;
}

} // namespace

QByteArray text(const QString& notation) {
    QByteArray out;
    for (const Token& t : parse(notation)) {
        out += line(t.type, t.address, t.data);
    }
    return out;
}

sf::parser::RecordList records(const QString& notation) {
    sf::parser::RecordList list;
    for (const Token& t : parse(notation)) {
        list.push_back(std::make_unique<Inhex32Entry>(t.type, t.address, t.data));
    }
    return list;
}

QString dump(const Inhex32Entry& r) {
    const QString address =
        QStringLiteral("%1").arg(r.getAddress(), 4, 16, QLatin1Char('0')).toUpper();
    const QString bytes = QString::fromLatin1(r.getDataBytes().toHex().toUpper());
    switch (r.getType()) {
    case 0x00:
        return QStringLiteral("D%1:%2").arg(address, bytes);
    case 0x01:
        if (r.getLength() == 0 && r.getAddress() == 0) {
            return QStringLiteral("F");
        }
        break;
    case 0x04:
        if (r.getLength() == 2 && r.getAddress() == 0) {
            return QStringLiteral("X%1").arg(bytes);
        }
        break;
    default:
        break;
    }
    const QString type = QStringLiteral("%1").arg(r.getType(), 2, 16, QLatin1Char('0')).toUpper();
    return QStringLiteral("T%1@%2:%3").arg(type, address, bytes);
}

QString dump(const sf::parser::RecordList& list) {
    QStringList words;
    for (const auto& r : list) {
        words.append(r ? dump(*r) : QStringLiteral("null"));
    }
    return words.join(QLatin1Char(' '));
}

namespace {

template <typename Visit> void forEachByte(const sf::parser::RecordList& list, Visit visit) {
    quint16 upper = 0;
    for (const auto& r : list) {
        if (r->isExtendedAddress()) {
            upper = r->upperAddress();
        } else if (r->isData()) {
            for (int i = 0; i < r->getLength(); ++i) {
                visit((quint64(upper) << 16) + r->getAddress() + quint64(i), r->getData()[i]);
            }
        }
    }
}

} // namespace

std::map<quint64, quint8> byteMap(const sf::parser::RecordList& list) {
    std::map<quint64, quint8> bytes;
    forEachByte(list, [&bytes](quint64 address, quint8 byte) { bytes[address] = byte; });
    return bytes;
}

int overlappingBytes(const sf::parser::RecordList& list) {
    std::map<quint64, int> claims;
    forEachByte(list, [&claims](quint64 address, quint8) { ++claims[address]; });
    int n = 0;
    for (const auto& c : claims) {
        n += c.second > 1 ? 1 : 0;
    }
    return n;
}

bool allChecksumsValid(const QByteArray& text) {
    const QList<QByteArray> lines = text.split('\n');
    for (QByteArray l : lines) {
        l = l.trimmed();
        if (l.isEmpty()) {
            continue;
        }
        if (!l.startsWith(':')) {
            return false;
        }
        const QByteArray bytes = QByteArray::fromHex(l.mid(1));
        unsigned sum = 0;
        for (char c : bytes) {
            sum += static_cast<quint8>(c);
        }
        if ((sum & 0xFF) != 0 || bytes.size() < 5 ||
            bytes.size() != 5 + static_cast<quint8>(bytes.at(0))) {
            return false;
        }
    }
    return true;
}

} // namespace testsupport::hex
