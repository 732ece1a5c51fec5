#include "Instrument.h"

#include "sf/parser/PhantomBytes.h"

#include <utility>

using namespace util::link;

Instrument::Instrument(const DeviceProfile& profile, QByteArray memory, QByteArray program,
                       const Identity& identity, bool runnable, Recogniser recognise)
    : m_profile(profile), m_memory(std::move(memory)), m_program(std::move(program)),
      m_identity(identity), m_runnable(runnable), m_recognise(std::move(recognise)),
      m_id(profile.id), m_service(!runnable) {}

QByteArray Instrument::receive(const QByteArray& bytes) {
    QByteArray out;
    for (char c : bytes) {
        if (m_cutNow) {
            break;
        }
        if (!m_service) {
            if (c == 0x05) {
                out += char(0x06) + m_identity.enq.toLatin1() + char(0x04);
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
        restart();
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

void Instrument::restart() {
    if (std::exchange(m_flashed, false)) {
        Identity found;
        m_runnable = m_recognise && m_recognise(m_program, &found);
        if (m_runnable) {
            m_identity = found;
        }
        m_changed = true;
    }
    m_service = !m_runnable;
    m_decoder.clear();
}

QByteArray Instrument::serveBootloader(const Frame& request) {
    const DeviceProfile& p = m_profile;
    const QByteArray& payload = request.payload;
    const quint64 from = p.imageAddress(wordOf(payload));
    switch (request.command) {
    case CmdErase:
        if (payload.size() != 5 || p.pageSize == 0 || (from - p.programStart) % p.pageSize ||
            !writableFlash(from, quint64(countOf(payload)) * p.pageSize)) {
            return refusal(BadAddress);
        }
        return erase(from, countOf(payload));
    case CmdRowWrite:
        if (payload.size() < 4 || p.rowSize == 0 || (from - p.programStart) % p.rowSize ||
            !writableFlash(from, p.rowSize)) {
            return refusal(BadAddress);
        }
        if (quint64(payload.size() - 4) !=
            sf::parser::PhantomBytes(p.phantomPeriod()).countWithoutPhantoms(from, p.rowSize)) {
            return refusal(BadLength);
        }
        return writeRow(from, payload.mid(4));
    case CmdRowVerify: {
        const quint64 span = quint64(countOf(payload)) * quint64(p.addressesPerWord());
        if (payload.size() != 5 || !writableFlash(from, span)) {
            return refusal(BadAddress);
        }
        const QByteArray image =
            withFault(m_program.mid(int(from - p.programStart), int(span)), from);
        return encode(ACK, CmdRowVerify,
                      sf::parser::PhantomBytes(p.phantomPeriod()).remove(image, from, span));
    }
    default:
        return refusal(UnknownCommand);
    }
}

QByteArray Instrument::erase(quint64 from, int pages) {
    const DeviceProfile& p = m_profile;
    if (m_cut == Cut::Erase) {
        int total = 0;
        for (quint64 page = p.programStart; page < p.programEnd; page += p.pageSize) {
            total += p.inBootloader(page) ? 0 : 1;
        }
        const int half = qMax(1, total / 2);
        if (m_pagesErased + pages >= half) {
            pages = half - m_pagesErased; // the line goes with half of the pages erased
            m_cutNow = true;
        }
    }
    // Erased flash reads 0xFF in its real bytes; phantom addresses stay 0.
    const sf::parser::PhantomBytes phantoms(p.phantomPeriod());
    const quint64 span = quint64(pages) * p.pageSize;
    const QByteArray erased(int(phantoms.countWithoutPhantoms(from, span)), char(0xFF));
    m_program.replace(
        int(from - p.programStart), int(span),
        phantoms.insert(erased, from, quint64(erased.size())).leftJustified(int(span), '\0'));
    m_pagesErased += pages;
    m_runnable = false;
    m_flashed = m_changed = true;
    return m_cutNow ? QByteArray() : encode(ACK, CmdErase, QByteArray());
}

QByteArray Instrument::writeRow(quint64 from, QByteArray real) {
    const DeviceProfile& p = m_profile;
    if (m_cut == Cut::Program && m_rowsWritten == 1) {
        // The line goes with half of the row programmed: 0xFF leaves the rest erased.
        real = real.left(real.size() / 2).leftJustified(real.size(), char(0xFF));
        m_cutNow = true;
    }
    // Programming flash only clears bits: a row written without an erase keeps the zeros
    // it had.
    const QByteArray row = sf::parser::PhantomBytes(p.phantomPeriod())
                               .insert(real, from, quint64(real.size()))
                               .leftJustified(int(p.rowSize), '\0');
    for (int i = 0; i < row.size(); ++i) {
        const int at = int(from - p.programStart) + i;
        m_program[at] = char(m_program.at(at) & row.at(i));
    }
    ++m_rowsWritten;
    m_runnable = false;
    m_flashed = m_changed = true;
    return m_cutNow ? QByteArray() : encode(ACK, CmdRowWrite, QByteArray());
}
