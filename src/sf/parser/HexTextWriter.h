#pragma once

#include <QByteArray>
#include <QString>
#include <QtGlobal>

class QIODevice;

namespace sf::parser {

class Inhex32Entry;

// Writes record lines to an open device through a buffer. A failed write is remembered
// and reported by finish(); later writes are dropped.
class HexTextWriter {
public:
    explicit HexTextWriter(QIODevice* device);

    void record(const Inhex32Entry& entry);
    void line(quint8 type, quint16 address, const quint8* data, int length);
    void extendedAddress(quint16 upper);
    void endOfFile();
    // A metadata record at address 0 holding the text's Latin-1 bytes, cut to 255 bytes;
    // nothing for an empty text.
    void metadata(quint8 type, const QString& text);
    // Flushes the buffer; false if any write failed.
    bool finish();

private:
    void flushIfFull();

    QIODevice* m_device;
    QByteArray m_buffer;
    bool m_ok;
};

} // namespace sf::parser
