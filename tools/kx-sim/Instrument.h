#pragma once

#include "util/LinkProtocol.h"

#include <QByteArray>
#include <QString>

// The behaviour of a simulated instrument, apart from its serial line: display mode (the
// enquiry answer, entering service mode) and the service-mode requests on its settings
// memory. Bytes in, bytes out; the simulator's main loop moves them.
class Instrument {
public:
    // memory: the settings region's image bytes; program: program flash's image bytes.
    Instrument(const util::link::DeviceProfile& profile, QByteArray memory, QByteArray program,
               QString enq);

    // Answers the bytes received; what to send back.
    QByteArray receive(const QByteArray& bytes);

    // The settings memory as image bytes of the region (phantom addresses 0).
    const QByteArray& memory() const { return m_memory; }
    const QByteArray& program() const { return m_program; }
    bool memoryChanged() { return std::exchange(m_changed, false); }
    // True once after a reset that followed a row write: the instrument now runs the
    // firmware its flash holds, whose identification the simulator looks up.
    bool restartedWithNewFirmware() { return std::exchange(m_restarted, false); }
    void setEnq(const QString& enq) { m_enq = enq; }
    bool inServiceMode() const { return m_service; }

    // Faults: another identifier; an image address whose stored byte reads back flipped.
    void setIdentifier(const QString& id) { m_id = id; }
    void setFlippedAddress(qint64 address) { m_flipped = address; }

private:
    QByteArray serve(const util::link::Frame& request);
    QByteArray readWords(quint32 word, int count) const;
    bool writeWords(quint32 word, int count, const QByteArray& real);
    bool inRegion(quint32 word, int count) const;
    // Image bytes from an image address as they read back: the flipped byte inverted.
    QByteArray withFault(QByteArray image, quint64 from) const;
    QByteArray serveBootloader(const util::link::Frame& request);
    // Program flash [from, from + span) lies in flash, outside the bootloader's area.
    bool writableFlash(quint64 from, quint64 span) const;

    util::link::DeviceProfile m_profile;
    QByteArray m_memory;
    QByteArray m_program;
    bool m_flashed = false;
    bool m_restarted = false;
    QString m_enq;
    QString m_id;
    qint64 m_flipped = -1;
    bool m_service = false;
    bool m_changed = false;
    util::link::FrameDecoder m_decoder{QByteArray(1, util::link::STX)};
};
