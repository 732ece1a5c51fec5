#include "sf/parser/PhantomBytes.h"

#include "sf/parser/PhantomProcessor.h"

#include <algorithm>

namespace sf::parser {

int PhantomBytes::periodFor(int processor) {
    switch (processor) {
    case PhantomEvery4:
        return 4;
    case PhantomEvery2:
        return 2;
    case PhantomNone:
        return 1;
    default:
        return 2;
    }
}

bool PhantomBytes::isPhantom(quint64 address) const {
    return m_period >= 2 && address % static_cast<quint64>(m_period) == 1;
}

bool PhantomBytes::allPhantom(quint64 address, quint64 length) const {
    return length > 0 && phantomsIn(address, length) == length;
}

quint64 PhantomBytes::phantomsIn(quint64 address, quint64 span) const {
    if (m_period < 2) {
        return 0;
    }
    const quint64 p = static_cast<quint64>(m_period);
    // Phantom addresses below x: one per full period, plus one if the partial period
    // reaches past its offset 1.
    auto below = [p](quint64 x) { return x / p + (x % p > 1 ? 1 : 0); };
    return below(address + span) - below(address);
}

quint64 PhantomBytes::countWithPhantoms(quint64 address, quint64 realCount) const {
    if (m_period < 2 || realCount == 0) {
        return realCount;
    }
    // Every P consecutive addresses hold exactly P - 1 real bytes: skip whole periods,
    // then walk the last (at most P) addresses.
    const quint64 p = static_cast<quint64>(m_period);
    const quint64 periods = (realCount - 1) / (p - 1);
    quint64 span = periods * p;
    quint64 left = realCount - periods * (p - 1);
    while (left > 0) {
        if (!isPhantom(address + span)) {
            --left;
        }
        ++span;
    }
    return span;
}

quint64 PhantomBytes::countWithoutPhantoms(quint64 address, quint64 span) const {
    if (m_period < 2 || span == 0) {
        return span;
    }
    return span - phantomsIn(address, span);
}

QByteArray PhantomBytes::insert(const QByteArray& data, quint64 address, quint64 realCount) const {
    if (m_period < 2) {
        return data;
    }
    const quint64 span = countWithPhantoms(address, realCount);
    if (span > MaxSpan) {
        return QByteArray();
    }
    QByteArray out(static_cast<qsizetype>(span), '\0');
    char* target = out.data();
    const char* source = data.constData();
    const quint64 available = static_cast<quint64>(data.size());
    quint64 in = 0;
    for (quint64 i = 0; i < span; ++i) {
        if (!isPhantom(address + i)) {
            if (in < available) {
                target[i] = source[in];
            }
            ++in;
        }
    }
    return out;
}

QByteArray PhantomBytes::remove(const QByteArray& data, quint64 address, quint64 span) const {
    if (m_period < 2) {
        return data;
    }
    const qsizetype n =
        static_cast<qsizetype>(std::min<quint64>(span, static_cast<quint64>(data.size())));
    QByteArray out;
    out.reserve(n);
    const char* source = data.constData();
    for (qsizetype i = 0; i < n; ++i) {
        if (!isPhantom(address + static_cast<quint64>(i))) {
            out.append(source[i]);
        }
    }
    return out;
}

} // namespace sf::parser
