#pragma once

// The serial protocol between our helper program (serialup.exe) and an instrument in its
// service mode, shared by the helper and the simulated instrument (docs/device-protocol.md).

#include <QByteArray>
#include <QList>
#include <QString>

namespace util::link {

constexpr char SYNC = 0x55; // enters service mode; answered with itself
constexpr char STX = 0x02;  // starts a request frame
constexpr char ACK = 0x06;  // starts a reply frame
constexpr char NAK = 0x15;  // a refusal: NAK and one reason byte

enum Command : char {
    CmdVersion = 'V',   // reply: the 4-character device identifier
    CmdRead = 'R',      // word address (4), word count (1); reply: the words' real bytes
    CmdWrite = 'W',     // word address (4), word count (1), the real bytes; reply: empty
    CmdReset = 'X',     // reply: empty; the instrument restarts into display mode
    CmdErase = 'E',     // bootloader: word address (4), pages (1); reply: empty
    CmdRowWrite = 'P',  // bootloader: word address (4), the row's real bytes; reply: empty
    CmdRowVerify = 'C', // bootloader: word address (4), word count (1); reply: the real bytes
};

enum Refusal : char { BadChecksum = 1, UnknownCommand = 2, BadAddress = 3, BadLength = 4 };

constexpr int MAX_WORDS = 32; // words per read or write request

struct Frame {
    char lead = 0;    // STX, ACK or NAK
    char command = 0; // the reason byte for NAK
    QByteArray payload;
};

// lead, command, length, payload and a checksum that makes command to checksum sum to 0.
QByteArray encode(char lead, char command, const QByteArray& payload);
QByteArray refusal(Refusal reason);

// The start of a read or write request: word address (most significant byte first) and
// word count; and the address and count read back from such a payload (0 when short).
QByteArray wordAddress(quint32 word);
QByteArray wordRange(quint32 word, int count);
quint32 wordOf(const QByteArray& payload);
int countOf(const QByteArray& payload);

// Cuts frames out of a byte stream. Bytes before a lead byte are skipped (counted as
// noise); a frame whose checksum does not add up is reported as such.
class FrameDecoder {
public:
    enum Result { NeedMore, Complete, Damaged };
    explicit FrameDecoder(QByteArray leads) : m_leads(std::move(leads)) {}
    void feed(const QByteArray& bytes) { m_buffer += bytes; }
    Result next(Frame* frame);
    int skipped() const { return m_skipped; }
    void clear() { m_buffer.clear(); }
    // Bytes received but not yet taken by next().
    const QByteArray& pending() const { return m_buffer; }

private:
    QByteArray m_leads;
    QByteArray m_buffer;
    int m_skipped = 0;
};

// One instrument model of device.txt: tab-separated fields, empty ones skipped.
struct DeviceProfile {
    QString id;                // field 0
    int baud = 0;              // field 1
    QString name;              // field 2
    QString family;            // field 3: "dravolin", "kx3", "kx4"
    quint64 programStart = 0;  // field 4: program flash, image addresses [start, end)
    quint64 programEnd = 0;    // field 5
    quint64 pageSize = 0;      // field 6: image addresses one erase clears
    quint64 rowSize = 0;       // field 7: image addresses one row write programs
    quint64 bootStart = 0;     // field 8: the bootloader's own flash, never erased or written
    quint64 bootEnd = 0;       // field 9
    quint32 settingsStart = 0; // field 14: word address
    quint32 settingsEnd = 0;   // field 15: word address (exclusive)
    // Image addresses per word (2 for the word-addressed families, 1 for kx4), and the
    // period of phantom bytes among them (4, 2 or none).
    int addressesPerWord() const;
    int phantomPeriod() const;
    quint64 imageAddress(quint32 word) const { return quint64(word) * addressesPerWord(); }
    quint32 wordAt(quint64 imageAddress) const {
        return quint32(imageAddress / quint64(addressesPerWord()));
    }
    bool inBootloader(quint64 address) const { return address >= bootStart && address < bootEnd; }
    // The real bytes of count words from word.
    int realBytes(quint32 word, int count) const;
};

// The image bytes of words [first, last) from a HEX file, found by their 16-bit record
// address as the settings are read; addresses the file does not hold count as 0. With
// `held`, one byte per image address: 1 where the file holds a real byte, else 0.
bool regionFromImage(const QString& path, const DeviceProfile& profile, quint32 first, quint32 last,
                     QByteArray* image, QByteArray* held = nullptr);
// Writes image bytes that start at image address `from` as an Intel HEX file (16 bytes
// per record, extended addresses as needed), after metadata records for the texts that
// are not empty; the file is replaced in one step.
bool writeRegionImage(const QString& path, quint64 from, const QByteArray& image,
                      const QString& fw = QString(), const QString& kxs = QString(),
                      const QString& enq = QString());

// Blocks of image bytes, each from its image address, written as one Intel HEX file.
struct ImageBlock {
    quint64 from = 0;
    QByteArray bytes;
};
bool writeImage(const QString& path, const QList<ImageBlock>& blocks, const QString& fw = QString(),
                const QString& kxs = QString(), const QString& enq = QString());

// One line of the device file; a profile with an empty identifier when the line has no
// usable baud rate and settings region.
DeviceProfile parseProfile(const QString& line);
QList<DeviceProfile> readProfiles(const QString& deviceFile);
// The profile whose identifier is id; false when there is none.
bool findProfile(const QList<DeviceProfile>& profiles, const QString& id, DeviceProfile* out);

} // namespace util::link
