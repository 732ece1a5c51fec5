#include "ImageDescription.h"

#include "util/HexDigit.h"

#include <QRegularExpression>
#include <QStringList>

#include <algorithm>
#include <cstring>

namespace {

constexpr quint64 AddressSpaceEnd = 0x100000000ull;

// A number in decimal or, with a 0x prefix, hexadecimal.
bool parseNumber(const QString& text, quint64& value) {
    bool ok = false;
    if (text.startsWith(QLatin1String("0x"), Qt::CaseInsensitive)) {
        value = text.mid(2).toULongLong(&ok, 16);
        return ok && text.size() > 2;
    }
    value = text.toULongLong(&ok, 10);
    return ok;
}

quint64 splitMix64(quint64& state) {
    quint64 z = (state += 0x9E3779B97F4A7C15ull);
    z = (z ^ (z >> 30)) * 0xBF58476D1CE4E5B9ull;
    z = (z ^ (z >> 27)) * 0x94D049BB133111EBull;
    return z ^ (z >> 31);
}

// A text argument: the rest of the line, or a double-quoted string with the escapes
// \" \\ \n \r \t and \xHH. The result holds Latin-1 bytes.
bool parseText(const QString& raw, QByteArray& bytes, QString& error) {
    bytes.clear();
    if (!raw.startsWith(QLatin1Char('"'))) {
        for (QChar c : raw) {
            if (c.unicode() > 0xFF) {
                error = QStringLiteral("text is not Latin-1");
                return false;
            }
            bytes.append(static_cast<char>(c.unicode()));
        }
        return true;
    }
    int i = 1;
    for (; i < raw.size() && raw.at(i) != QLatin1Char('"'); ++i) {
        QChar c = raw.at(i);
        if (c == QLatin1Char('\\')) {
            if (++i >= raw.size()) {
                break;
            }
            const QChar e = raw.at(i);
            if (e == QLatin1Char('n')) {
                c = QLatin1Char('\n');
            } else if (e == QLatin1Char('r')) {
                c = QLatin1Char('\r');
            } else if (e == QLatin1Char('t')) {
                c = QLatin1Char('\t');
            } else if (e == QLatin1Char('x')) {
                const int h =
                    i + 2 < raw.size() ? util::hexDigitValue(raw.at(i + 1).unicode()) : -1;
                const int l = h >= 0 ? util::hexDigitValue(raw.at(i + 2).unicode()) : -1;
                if (l < 0) {
                    error = QStringLiteral("\\x needs two hexadecimal digits");
                    return false;
                }
                c = QChar(h * 16 + l);
                i += 2;
            } else if (e == QLatin1Char('"') || e == QLatin1Char('\\')) {
                c = e;
            } else {
                error = QStringLiteral("unknown escape \\%1").arg(e);
                return false;
            }
        }
        if (c.unicode() > 0xFF) {
            error = QStringLiteral("text is not Latin-1");
            return false;
        }
        bytes.append(static_cast<char>(c.unicode()));
    }
    if (i >= raw.size() || !raw.mid(i + 1).trimmed().isEmpty()) {
        error = QStringLiteral("unterminated or trailing text after quoted string");
        return false;
    }
    return true;
}

bool parseRange(const QStringList& words, quint64& start, quint64& end, QString& error) {
    if (!parseNumber(words.at(1), start) || !parseNumber(words.at(2), end)) {
        error = QStringLiteral("bad address");
        return false;
    }
    if (end <= start || end > AddressSpaceEnd) {
        error = QStringLiteral("range must satisfy START < END <= 0x100000000");
        return false;
    }
    return true;
}

} // namespace

bool ImageDescription::put(quint64 address, const QByteArray& bytes) {
    if (bytes.isEmpty()) {
        return true;
    }
    const quint64 end = address + static_cast<quint64>(bytes.size());
    // Blocks that overlap or touch [address, end) are joined into one.
    auto first = blocks.lower_bound(address);
    if (first != blocks.begin()) {
        auto prev = std::prev(first);
        if (prev->first + static_cast<quint64>(prev->second.size()) >= address) {
            first = prev;
        }
    }
    auto last = first;
    quint64 start = address;
    quint64 stop = end;
    quint64 removed = 0;
    for (; last != blocks.end() && last->first <= end; ++last) {
        start = std::min(start, last->first);
        stop = std::max(stop, last->first + static_cast<quint64>(last->second.size()));
        removed += static_cast<quint64>(last->second.size());
    }
    if (totalBytes() - removed + (stop - start) > MaxImageBytes) {
        return false;
    }
    QByteArray joined(static_cast<qsizetype>(stop - start), '\0');
    for (auto it = first; it != last; ++it) {
        std::memcpy(joined.data() + (it->first - start), it->second.constData(),
                    static_cast<size_t>(it->second.size()));
    }
    std::memcpy(joined.data() + (address - start), bytes.constData(),
                static_cast<size_t>(bytes.size()));
    blocks.erase(first, last);
    blocks.emplace(start, std::move(joined));
    return true;
}

quint64 ImageDescription::totalBytes() const {
    quint64 total = 0;
    for (const auto& b : blocks) {
        total += static_cast<quint64>(b.second.size());
    }
    return total;
}

static bool parseDirective(const QString& line, ImageDescription& out, QString& error) {
    static const QRegularExpression blanks(QStringLiteral("\\s+"));
    const QString keyword = line.section(blanks, 0, 0);
    const QString rest = line.mid(keyword.size()).trimmed();
    const QStringList words = line.split(blanks, Qt::SkipEmptyParts);
    QByteArray bytes;
    quint64 start = 0;
    quint64 end = 0;

    if (keyword == QLatin1String("fw") || keyword == QLatin1String("kxs") ||
        keyword == QLatin1String("enq")) {
        if (!parseText(rest, bytes, error)) {
            return false;
        }
        if (bytes.size() > 255) {
            error = QStringLiteral("metadata text longer than 255 bytes");
            return false;
        }
        QString& target = keyword == QLatin1String("fw")    ? out.fwVersion
                          : keyword == QLatin1String("kxs") ? out.kxsVersion
                                                            : out.enqString;
        target = QString::fromLatin1(bytes.constData(), bytes.size());
        return true;
    }
    if (keyword == QLatin1String("line-length")) {
        quint64 n = 0;
        if (words.size() != 2 || !parseNumber(words.at(1), n) || n < 1 || n > 255) {
            error = QStringLiteral("line-length needs a number from 1 to 255");
            return false;
        }
        out.lineLength = static_cast<int>(n);
        return true;
    }
    if (keyword == QLatin1String("extended") || keyword == QLatin1String("gaps")) {
        const bool extended = keyword == QLatin1String("extended");
        const QString on = extended ? QStringLiteral("on") : QStringLiteral("zero");
        const QString off = extended ? QStringLiteral("off") : QStringLiteral("keep");
        if (words.size() != 2 || (words.at(1) != on && words.at(1) != off)) {
            error = QStringLiteral("%1 needs %2 or %3").arg(keyword, on, off);
            return false;
        }
        (extended ? out.extendedAddresses : out.fillGaps) = words.at(1) == on;
        return true;
    }
    if (keyword == QLatin1String("fill")) {
        quint64 value = 0;
        if (words.size() != 4) {
            error = QStringLiteral("usage: fill START END VALUE");
            return false;
        }
        if (!parseRange(words, start, end, error)) {
            return false;
        }
        if (!parseNumber(words.at(3), value) || value > 255) {
            error = QStringLiteral("fill value must be a byte");
            return false;
        }
        if (end - start > ImageDescription::MaxImageBytes) {
            error = QStringLiteral("image too large");
            return false;
        }
        bytes = QByteArray(static_cast<qsizetype>(end - start), static_cast<char>(value));
    } else if (keyword == QLatin1String("random")) {
        quint64 seed = 0;
        if (words.size() != 4) {
            error = QStringLiteral("usage: random START END SEED");
            return false;
        }
        if (!parseRange(words, start, end, error)) {
            return false;
        }
        if (!parseNumber(words.at(3), seed)) {
            error = QStringLiteral("bad seed");
            return false;
        }
        if (end - start > ImageDescription::MaxImageBytes) {
            error = QStringLiteral("image too large");
            return false;
        }
        bytes.resize(static_cast<qsizetype>(end - start));
        quint64 state = seed;
        for (qsizetype i = 0; i < bytes.size(); i += 8) {
            const quint64 r = splitMix64(state);
            std::memcpy(bytes.data() + i, &r,
                        static_cast<size_t>(std::min<qsizetype>(8, bytes.size() - i)));
        }
    } else if (keyword == QLatin1String("bytes")) {
        if (words.size() < 3 || !parseNumber(words.at(1), start)) {
            error = QStringLiteral("usage: bytes ADDRESS HEX...");
            return false;
        }
        const QString digits = words.mid(2).join(QString());
        bytes = QByteArray::fromHex(digits.toLatin1());
        static const QRegularExpression hexOnly(QStringLiteral("^([0-9A-Fa-f]{2})+$"));
        if (!hexOnly.match(digits).hasMatch()) {
            error = QStringLiteral("bytes must be pairs of hexadecimal digits");
            return false;
        }
    } else if (keyword == QLatin1String("text")) {
        if (words.size() < 3 || !parseNumber(words.at(1), start)) {
            error = QStringLiteral("usage: text ADDRESS TEXT");
            return false;
        }
        if (!parseText(rest.mid(words.at(1).size()).trimmed(), bytes, error)) {
            return false;
        }
    } else {
        error = QStringLiteral("unknown directive \"%1\"").arg(keyword);
        return false;
    }
    if (start + static_cast<quint64>(bytes.size()) > AddressSpaceEnd) {
        error = QStringLiteral("bytes reach beyond 0xFFFFFFFF");
        return false;
    }
    if (!out.extendedAddresses && start + static_cast<quint64>(bytes.size()) > 0x10000) {
        error = QStringLiteral("address beyond 0xFFFF with extended off");
        return false;
    }
    if (!out.put(start, bytes)) {
        error = QStringLiteral("image too large");
        return false;
    }
    return true;
}

bool parseImageDescription(const QByteArray& text, ImageDescription& out, QString& error) {
    const QStringList lines = QString::fromUtf8(text).split(QLatin1Char('\n'));
    for (int i = 0; i < lines.size(); ++i) {
        QString line = lines.at(i);
        if (line.endsWith(QLatin1Char('\r'))) {
            line.chop(1);
        }
        const QString trimmed = line.trimmed();
        if (trimmed.isEmpty() || trimmed.startsWith(QLatin1Char('#'))) {
            continue;
        }
        // Leading blanks are dropped; text arguments keep their inner and trailing blanks
        // only when quoted.
        QString what;
        if (!parseDirective(trimmed, out, what)) {
            error = QStringLiteral("line %1: %2").arg(i + 1).arg(what);
            return false;
        }
    }
    return true;
}
