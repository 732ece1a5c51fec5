#pragma once

#include <QByteArray>
#include <QtGlobal>

namespace sf::parser {

// Arithmetic of phantom bytes: with a period P of 2 or more the byte at full address a
// is a phantom byte exactly when a mod P == 1; a period below 2 means no phantom bytes.
// Counts are 64-bit so that spans near the top of the address space cannot overflow.
class PhantomBytes {
public:
    static constexpr quint64 MaxSpan = 0x3FFFFFFF;

    explicit PhantomBytes(int period = 1) : m_period(period) {}

    // The period of a processor kind: 4, 2, 1 for PhantomEvery4, PhantomEvery2,
    // PhantomNone; 2 for any other value.
    static int periodFor(int processor);

    int period() const { return m_period; }
    bool isPhantom(quint64 address) const;
    // Phantom addresses in [address, address + span).
    quint64 phantomsIn(quint64 address, quint64 span) const;
    // True when length > 0 and every address of [address, address + length) is a
    // phantom address. Two neighbouring addresses are never both phantom, so this holds
    // only for a single byte at a phantom address.
    bool allPhantom(quint64 address, quint64 length) const;
    // The span starting at address that holds exactly realCount real bytes and ends
    // with a real byte. realCount itself when the period is below 2 or the count is 0.
    quint64 countWithPhantoms(quint64 address, quint64 realCount) const;
    // span minus the phantom addresses in it.
    quint64 countWithoutPhantoms(quint64 address, quint64 span) const;
    // The span for realCount real bytes, phantom addresses holding 0; input bytes past
    // the end of data count as 0. The input itself when the period is below 2; empty
    // when the span would exceed MaxSpan.
    QByteArray insert(const QByteArray& data, quint64 address, quint64 realCount) const;
    // The real bytes among the first min(span, size) bytes of data, which start at
    // address. The input itself when the period is below 2.
    QByteArray remove(const QByteArray& data, quint64 address, quint64 span) const;

private:
    int m_period;
};

} // namespace sf::parser
