#include "Instrument.h"

#include "sf/parser/PhantomBytes.h"

#include <utility>

using namespace util::link;

Instrument::Instrument(const DeviceProfile& profile, QByteArray memory, QByteArray program,
                       QString enq)
    : m_profile(profile), m_memory(std::move(memory)), m_program(std::move(program)),
      m_enq(std::move(enq)), m_id(profile.id) {}

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
    const QByteArray image = withFault(m_memory.mid(int(offset), int(span)), from);
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
        m_restarted = std::exchange(m_flashed, false);
        return encode(ACK, CmdReset, QByteArray());
    default:
        return serveBootloader(request);
    }
}

QByteArray Instrument::withFault(QByteArray image, quint64 from) const {
    if (m_flipped >= 0 && quint64(m_flipped) >= from &&
        quint64(m_flipped) < from + quint64(image.size())) {
        const int at = int(quint64(m_flipped) - from);
        image[at] = char(image.at(at) ^ 0xFF);
    }
    return image;
}

bool Instrument::writableFlash(quint64 from, quint64 span) const {
    const DeviceProfile& p = m_profile;
    return span > 0 && from >= p.programStart && from + span <= p.programEnd &&
           !(from < p.bootEnd && from + span > p.bootStart);
}

QByteArray Instrument::serveBootloader(const Frame& request) {
    const DeviceProfile& p = m_profile;
    const QByteArray& payload = request.payload;
    const quint64 from = p.imageAddress(wordOf(payload));
    const sf::parser::PhantomBytes phantoms(p.phantomPeriod());
    switch (request.command) {
    case CmdErase: {
        const quint64 span = quint64(countOf(payload)) * p.pageSize;
        if (payload.size() != 5 || p.pageSize == 0 || (from - p.programStart) % p.pageSize ||
            !writableFlash(from, span)) {
            return refusal(BadAddress);
        }
        // Erased flash reads 0xFF in its real bytes; phantom addresses stay 0.
        const QByteArray erased(phantoms.countWithoutPhantoms(from, span), char(0xFF));
        m_program.replace(
            int(from - p.programStart), int(span),
            phantoms.insert(erased, from, quint64(erased.size())).leftJustified(int(span), '\0'));
        return encode(ACK, CmdErase, QByteArray());
    }
    case CmdRowWrite: {
        if (payload.size() < 4 || p.rowSize == 0 || (from - p.programStart) % p.rowSize ||
            !writableFlash(from, p.rowSize)) {
            return refusal(BadAddress);
        }
        const QByteArray real = payload.mid(4);
        if (quint64(real.size()) != phantoms.countWithoutPhantoms(from, p.rowSize)) {
            return refusal(BadLength);
        }
        // Programming flash only clears bits: a row written without an erase keeps the
        // zeros it had.
        const QByteArray row =
            phantoms.insert(real, from, quint64(real.size())).leftJustified(int(p.rowSize), '\0');
        for (int i = 0; i < row.size(); ++i) {
            const int at = int(from - p.programStart) + i;
            m_program[at] = char(m_program.at(at) & row.at(i));
        }
        m_flashed = m_changed = true;
        return encode(ACK, CmdRowWrite, QByteArray());
    }
    case CmdRowVerify: {
        const quint64 span = quint64(countOf(payload)) * quint64(p.addressesPerWord());
        if (payload.size() != 5 || !writableFlash(from, span)) {
            return refusal(BadAddress);
        }
        const QByteArray image =
            withFault(m_program.mid(int(from - p.programStart), int(span)), from);
        return encode(ACK, CmdRowVerify, phantoms.remove(image, from, span));
    }
    default:
        return refusal(UnknownCommand);
    }
}
