#pragma once

#include "util/LinkProtocol.h"

#include <QByteArray>
#include <QString>

// The behaviour of a simulated instrument, apart from its serial line: display mode (the
// enquiry answer, entering service mode) and the service-mode requests on its settings
// memory. Bytes in, bytes out; the simulator's main loop moves them.
class Instrument {
public:
    Instrument(const util::link::DeviceProfile& profile, QByteArray memory, QString enq);

    // Answers the bytes received; what to send back.
    QByteArray receive(const QByteArray& bytes);

    // The settings memory as image bytes of the region (phantom addresses 0).
    const QByteArray& memory() const { return m_memory; }
    bool memoryChanged() { return std::exchange(m_changed, false); }
    bool inServiceMode() const { return m_service; }

    // Faults: another identifier; an image address whose stored byte reads back flipped.
    void setIdentifier(const QString& id) { m_id = id; }
    void setFlippedAddress(qint64 address) { m_flipped = address; }

private:
    QByteArray serve(const util::link::Frame& request);
    QByteArray readWords(quint32 word, int count) const;
    bool writeWords(quint32 word, int count, const QByteArray& real);
    bool inRegion(quint32 word, int count) const;

    util::link::DeviceProfile m_profile;
    QByteArray m_memory;
    QString m_enq;
    QString m_id;
    qint64 m_flipped = -1;
    bool m_service = false;
    bool m_changed = false;
    util::link::FrameDecoder m_decoder{QByteArray(1, util::link::STX)};
};
