#pragma once

#include <QByteArray>

#include <optional>
#include <vector>

namespace sf {

namespace parser {
class HexParser;
class Inhex32Entry;
} // namespace parser

// Reads the bytes of many settings from one loaded setup image. Gives the same answers as
// HexParser::readData, which searches the record list from its start for every read;
// when the image's data records do not overlap (as in every image the program writes),
// the records are found by binary search over an index built once instead, so reading
// all settings of a layout costs O(n log n) rather than O(n * records). Images with
// overlapping records are read through HexParser::readData itself.
class ImageReader {
public:
    // The image must stay loaded and unchanged while the reader is used.
    explicit ImageReader(const parser::HexParser& image);

    std::optional<QByteArray> read(quint32 address, quint32 count) const;
    bool isIndexed() const { return m_indexed; }

private:
    struct Range {
        quint64 start = 0;
        quint64 end = 0; // exclusive
        const parser::Inhex32Entry* record = nullptr;
    };

    const parser::HexParser& m_image;
    std::vector<Range> m_ranges; // sorted by start, not overlapping
    bool m_indexed = false;
};

} // namespace sf
