#include "util/LinkProtocol.h"

#include "sf/parser/HexParser.h"
#include "sf/parser/HexTextWriter.h"
#include "sf/parser/Inhex32Entry.h"
#include "sf/parser/PhantomBytes.h"

#include <QFile>
#include <QSaveFile>
#include <QTextStream>

namespace util::link {

namespace {

char checksum(const QByteArray& bytes) {
    quint8 sum = 0;
    for (char c : bytes) {
        sum = static_cast<quint8>(sum + static_cast<quint8>(c));
    }
    return static_cast<char>(static_cast<quint8>(0x100 - sum));
}

} // namespace

QByteArray encode(char lead, char command, const QByteArray& payload) {
    QByteArray body;
    body += command;
    body += static_cast<char>(payload.size() & 0xFF);
    body += payload.left(255);
    return lead + body + checksum(body);
}

QByteArray refusal(Refusal reason) {
    return QByteArray(1, NAK) + static_cast<char>(reason);
}

QByteArray wordAddress(quint32 word) {
    QByteArray bytes(4, '\0');
    for (int k = 0; k < 4; ++k) {
        bytes[k] = static_cast<char>((word >> (24 - 8 * k)) & 0xFF);
    }
    return bytes;
}

QByteArray wordRange(quint32 word, int count) {
    return wordAddress(word) + static_cast<char>(count & 0xFF);
}

quint32 wordOf(const QByteArray& payload) {
    quint32 word = 0;
    for (int k = 0; k < 4 && payload.size() >= 4; ++k) {
        word = (word << 8) | static_cast<quint8>(payload.at(k));
    }
    return word;
}

int countOf(const QByteArray& payload) {
    return payload.size() >= 5 ? static_cast<quint8>(payload.at(4)) : 0;
}

FrameDecoder::Result FrameDecoder::next(Frame* frame) {
    int start = 0;
    while (start < m_buffer.size() && !m_leads.contains(m_buffer.at(start))) {
        ++start;
    }
    m_skipped += start;
    m_buffer.remove(0, start);
    if (m_buffer.isEmpty()) {
        return NeedMore;
    }
    const char lead = m_buffer.at(0);
    if (lead == NAK) {
        if (m_buffer.size() < 2) {
            return NeedMore;
        }
        *frame = Frame{lead, m_buffer.at(1), QByteArray()};
        m_buffer.remove(0, 2);
        return Complete;
    }
    if (m_buffer.size() < 3) {
        return NeedMore;
    }
    const int length = static_cast<quint8>(m_buffer.at(2));
    if (m_buffer.size() < 4 + length) {
        return NeedMore;
    }
    const QByteArray body = m_buffer.mid(1, 2 + length);
    const bool good = checksum(body) == m_buffer.at(3 + length);
    *frame = Frame{lead, body.at(0), body.mid(2)};
    m_buffer.remove(0, 4 + length);
    return good ? Complete : Damaged;
}

int DeviceProfile::addressesPerWord() const {
    return family == QLatin1String("kx4") ? 1 : 2;
}

int DeviceProfile::phantomPeriod() const {
    return family == QLatin1String("kx4") ? 1 : family == QLatin1String("dravolin") ? 4 : 2;
}

int DeviceProfile::realBytes(quint32 word, int count) const {
    const sf::parser::PhantomBytes phantoms(phantomPeriod());
    return static_cast<int>(
        phantoms.countWithoutPhantoms(imageAddress(word), quint64(count) * addressesPerWord()));
}

bool regionFromImage(const QString& path, const DeviceProfile& profile, quint32 first, quint32 last,
                     QByteArray* image, QByteArray* held) {
    sf::parser::HexParser hex;
    if (!hex.loadHex(path, sf::parser::PhantomNone, QIODevice::ReadOnly)) {
        return false;
    }
    const sf::parser::PhantomBytes phantoms(profile.phantomPeriod());
    image->clear();
    if (held) {
        held->clear();
    }
    for (quint64 a = profile.imageAddress(first); a < profile.imageAddress(last); ++a) {
        const std::optional<QByteArray> byte = hex.readData(quint32(a & 0xFFFF), 1);
        const bool has = byte && byte->size() == 1;
        image->append(has ? byte->at(0) : '\0');
        if (held) {
            held->append(has && !phantoms.isPhantom(a) ? '\1' : '\0');
        }
    }
    return true;
}

bool writeRegionImage(const QString& path, quint64 from, const QByteArray& image, const QString& fw,
                      const QString& kxs, const QString& enq) {
    return writeImage(path, {ImageBlock{from, image}}, fw, kxs, enq);
}

bool writeImage(const QString& path, const QList<ImageBlock>& blocks, const QString& fw,
                const QString& kxs, const QString& enq) {
    using sf::parser::Inhex32Entry;
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly)) {
        return false;
    }
    sf::parser::HexTextWriter writer(&file);
    const std::pair<quint8, QString> texts[] = {{Inhex32Entry::TypeFwVersion, fw},
                                                {Inhex32Entry::TypeKxsVersion, kxs},
                                                {Inhex32Entry::TypeEnqString, enq}};
    for (const auto& text : texts) {
        if (!text.second.isEmpty()) {
            writer.metadata(text.first, text.second);
        }
    }
    for (const ImageBlock& block : blocks) {
        for (int i = 0; i < block.bytes.size(); i += 16) {
            const quint64 address = block.from + quint64(i);
            if (i == 0 || (address & 0xFFFF) < 16) {
                writer.extendedAddress(quint16(address >> 16));
            }
            writer.line(Inhex32Entry::TypeData, quint16(address & 0xFFFF),
                        reinterpret_cast<const quint8*>(block.bytes.constData() + i),
                        qMin(16, int(block.bytes.size()) - i));
        }
    }
    writer.endOfFile();
    return writer.finish() && file.commit();
}

DeviceProfile parseProfile(const QString& line) {
    const QStringList f = line.split(QLatin1Char('\t'), Qt::SkipEmptyParts);
    DeviceProfile p;
    bool ok[4] = {false, false, false, false};
    p.id = f.value(0);
    p.baud = f.value(1).toInt(&ok[0], 0);
    p.name = f.value(2);
    p.family = f.value(3);
    quint64* const flash[] = {&p.programStart, &p.programEnd, &p.pageSize,
                              &p.rowSize,      &p.bootStart,  &p.bootEnd};
    for (int i = 0; i < 6; ++i) {
        *flash[i] = f.value(4 + i).toULongLong(nullptr, 0); // 0 when absent: no flashing
    }
    p.settingsStart = f.value(14).toUInt(&ok[1], 0);
    p.settingsEnd = f.value(15).toUInt(&ok[2], 0);
    ok[3] = p.settingsEnd > p.settingsStart;
    if (!(ok[0] && ok[1] && ok[2] && ok[3])) {
        p.id.clear();
    }
    return p;
}

QList<DeviceProfile> readProfiles(const QString& deviceFile) {
    QList<DeviceProfile> profiles;
    QFile file(deviceFile);
    if (!file.open(QIODevice::ReadOnly | QIODevice::Text)) {
        return profiles;
    }
    QTextStream in(&file);
    QString line;
    while (in.readLineInto(&line)) {
        const DeviceProfile p = parseProfile(line);
        if (!p.id.isEmpty()) {
            profiles.append(p);
        }
    }
    return profiles;
}

bool findProfile(const QList<DeviceProfile>& profiles, const QString& id, DeviceProfile* out) {
    for (const DeviceProfile& p : profiles) {
        if (p.id == id) {
            *out = p;
            return true;
        }
    }
    return false;
}

} // namespace util::link
