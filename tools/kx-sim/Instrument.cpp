#include "Instrument.h"

#include "sf/parser/PhantomBytes.h"

#include <utility>

using namespace util::link;

Instrument::Instrument(const DeviceProfile& profile, QByteArray memory, QString enq)
    : m_profile(profile), m_memory(std::move(memory)), m_enq(std::move(enq)), m_id(profile.id) {}

QByteArray Instrument::receive(const QByteArray& bytes) {
    QByteArray out;
    for (char c : bytes) {
        if (!m_service) {
            if (c == 0x05) {
                out += char(0x06) + m_enq.toLatin1() + char(0x04);
            } else if (c == SYNC) {
                out += SYNC;
                m_service = true;
                m_decoder.clear();
            }
            continue;
        }
        if (c == SYNC && m_decoder.pending().isEmpty()) {
            out += SYNC; // the entry procedure again
            continue;
        }
        m_decoder.feed(QByteArray(1, c));
        Frame request;
        const FrameDecoder::Result result = m_decoder.next(&request);
        if (result == FrameDecoder::Damaged) {
            out += refusal(BadChecksum);
        } else if (result == FrameDecoder::Complete) {
            out += serve(request);
        }
    }
    return out;
}

bool Instrument::inRegion(quint32 word, int count) const {
    return count > 0 && count <= MAX_WORDS && word >= m_profile.settingsStart &&
           quint64(word) + quint64(count) <= m_profile.settingsEnd;
}

QByteArray Instrument::readWords(quint32 word, int count) const {
    const quint64 from = m_profile.imageAddress(word);
    const quint64 span = m_profile.imageAddress(word + count) - from;
    const quint64 offset = from - m_profile.imageAddress(m_profile.settingsStart);
    QByteArray image = m_memory.mid(int(offset), int(span));
    if (m_flipped >= 0 && quint64(m_flipped) >= from && quint64(m_flipped) < from + span) {
        image[int(quint64(m_flipped) - from)] =
            char(image.at(int(quint64(m_flipped) - from)) ^ 0xFF);
    }
    return sf::parser::PhantomBytes(m_profile.phantomPeriod()).remove(image, from, span);
}

bool Instrument::writeWords(quint32 word, int count, const QByteArray& real) {
    if (real.size() != m_profile.realBytes(word, count)) {
        return false;
    }
    const quint64 from = m_profile.imageAddress(word);
    const quint64 span = m_profile.imageAddress(word + count) - from;
    QByteArray image = sf::parser::PhantomBytes(m_profile.phantomPeriod())
                           .insert(real, from, quint64(real.size()));
    image.append(QByteArray(int(span) - int(image.size()), '\0'));
    const quint64 offset = from - m_profile.imageAddress(m_profile.settingsStart);
    m_memory.replace(int(offset), int(span), image);
    m_changed = true;
    return true;
}

QByteArray Instrument::serve(const Frame& request) {
    const QByteArray& p = request.payload;
    const quint32 word = wordOf(p);
    const int count = countOf(p);
    switch (request.command) {
    case CmdVersion:
        return encode(ACK, CmdVersion, m_id.toLatin1().left(4));
    case CmdRead:
        if (p.size() != 5 || !inRegion(word, count)) {
            return refusal(BadAddress);
        }
        return encode(ACK, CmdRead, readWords(word, count));
    case CmdWrite:
        if (p.size() < 5 || !inRegion(word, count)) {
            return refusal(BadAddress);
        }
        if (!writeWords(word, count, p.mid(5))) {
            return refusal(BadLength);
        }
        return encode(ACK, CmdWrite, QByteArray());
    case CmdReset:
        m_service = false;
        return encode(ACK, CmdReset, QByteArray());
    default:
        return refusal(UnknownCommand);
    }
}
