#pragma once

#include "util/LinkProtocol.h"

#include <QByteArray>
#include <QString>

#include <functional>
#include <utility>

// The firmware an instrument runs: its metadata records.
struct Identity {
    QString fw, kxs, enq;
};

// The behaviour of a simulated instrument, apart from its serial line: display mode (the
// enquiry answer, entering service mode) and the service-mode requests on its settings
// memory and program flash. Bytes in, bytes out; the simulator's main loop moves them.
//
// The bootloader marks the program as not runnable before it erases or writes flash; a reset
// after flashing starts the program only when the flash holds a whole firmware it
// recognises. An instrument without runnable firmware sits in its bootloader: it answers
// nothing to the enquiry, the entry byte and the service-mode requests as always.
class Instrument {
public:
    // Whether a program is a whole firmware, and which (identity set only when it is).
    using Recogniser = std::function<bool(const QByteArray& program, Identity* identity)>;
    // The line cut in the middle of erasing (when half of program flash's pages are erased)
    // or of programming (during the second row write, half of that row programmed).
    enum class Cut { None, Erase, Program };

    // memory: the settings region's image bytes; program: program flash's image bytes.
    Instrument(const util::link::DeviceProfile& profile, QByteArray memory, QByteArray program,
               const Identity& identity, bool runnable, Recogniser recognise);

    // Answers the bytes received; what to send back.
    QByteArray receive(const QByteArray& bytes);

    // The settings memory as image bytes of the region (phantom addresses 0).
    const QByteArray& memory() const { return m_memory; }
    const QByteArray& program() const { return m_program; }
    // The firmware last run; its settings layout is the memory's.
    const Identity& identity() const { return m_identity; }
    bool runnable() const { return m_runnable; }
    // True once after the memory or flash changed, or the instrument restarted.
    bool memoryChanged() { return std::exchange(m_changed, false); }
    bool inServiceMode() const { return m_service; }
    // True once the cut fault struck: nothing more is answered.
    bool lineCut() const { return m_cutNow; }

    // Faults: another identifier; an image address whose stored byte reads back flipped;
    // the line cut while flashing.
    void setIdentifier(const QString& id) { m_id = id; }
    void setFlippedAddress(qint64 address) { m_flipped = address; }
    void setCut(Cut cut) { m_cut = cut; }

private:
    QByteArray serve(const util::link::Frame& request);
    QByteArray readWords(quint32 word, int count) const;
    bool writeWords(quint32 word, int count, const QByteArray& real);
    bool inRegion(quint32 word, int count) const;
    // Image bytes from an image address as they read back: the flipped byte inverted.
    QByteArray withFault(QByteArray image, quint64 from) const;
    QByteArray serveBootloader(const util::link::Frame& request);
    QByteArray erase(quint64 from, int pages);
    QByteArray writeRow(quint64 from, QByteArray real);
    // Program flash [from, from + span) lies in flash, outside the bootloader's area.
    bool writableFlash(quint64 from, quint64 span) const;
    // The reset command: the program runs when it is a firmware, else the bootloader stays.
    void restart();

    util::link::DeviceProfile m_profile;
    QByteArray m_memory;
    QByteArray m_program;
    Identity m_identity;
    bool m_runnable = true;
    Recogniser m_recognise;
    bool m_flashed = false; // erased or written since the last restart
    QString m_id;
    qint64 m_flipped = -1;
    Cut m_cut = Cut::None;
    bool m_cutNow = false;
    int m_pagesErased = 0;
    int m_rowsWritten = 0;
    bool m_service = false;
    bool m_changed = false;
    util::link::FrameDecoder m_decoder{QByteArray(1, util::link::STX)};
};
