// Fuzz target for the setup image reader and writer: loads arbitrary bytes as an Intel
// HEX image for each processor kind, reads settings bytes, merges records built from
// raw settings and writes the image back, checking that what is written reads back the
// same.
#include "sf/RawSetting.h"
#include "sf/parser/HexParser.h"

#include <QBuffer>

#include <cstdint>
#include <cstdlib>

using sf::parser::HexParser;
using sf::parser::RecordList;

namespace {

// Reformatting is skipped for wide images: the zero-filled block would be large and slow.
constexpr quint64 MaxFuzzReformatSpan = 1 << 16;

void check(bool condition) {
    if (!condition) {
        std::abort();
    }
}

QByteArray written(const HexParser& parser, bool reformat, int lineLength, bool* ok) {
    QBuffer out;
    out.open(QIODevice::WriteOnly);
    *ok = parser.writeToDevice(&out, reformat, lineLength);
    return out.data();
}

bool sameRecords(const RecordList& a, const RecordList& b) {
    if (a.size() != b.size()) {
        return false;
    }
    for (size_t i = 0; i < a.size(); ++i) {
        if (*a[i] != *b[i]) {
            return false;
        }
    }
    return true;
}

bool hasExtendedRecords(const RecordList& list) {
    for (const auto& r : list) {
        if (r->isExtendedAddress()) {
            return true;
        }
    }
    return false;
}

void exercise(const QByteArray& text, int processor) {
    HexParser parser;
    if (!parser.loadHexData(text, processor)) {
        check(!parser.isOpen() && parser.records().empty());
        return;
    }

    // Reading by address: the first data record's bytes, and some arbitrary spans. A read
    // may fail (a record can start at a phantom address, and one real byte from there
    // needs addresses no record holds); what it returns is exactly the bytes asked for.
    const quint8 pick = text.isEmpty() ? 0 : static_cast<quint8>(text.at(text.size() - 1));
    for (const auto& r : parser.records()) {
        if (r->isData() && r->getLength() > 0) {
            const std::optional<QByteArray> bytes = parser.readData(r->getAddress(), 1);
            check(!bytes || bytes->size() == 1);
            break;
        }
    }
    for (quint32 address : {0u, 0xE000u, 0xFFFFu, 0x1E000u, pick * 0x101u}) {
        for (quint32 count : {1u, 4u, 17u, 300u}) {
            const std::optional<QByteArray> bytes = parser.readData(address, count);
            check(!bytes || bytes->size() == static_cast<qsizetype>(count));
        }
    }

    // Plain writing reads back as the same records and texts.
    bool ok = false;
    const QByteArray plain = written(parser, false, 16, &ok);
    check(ok);
    HexParser again;
    check(again.loadHexData(plain, processor));
    check(sameRecords(parser.records(), again.records()));
    check(again.getFwVersion() == parser.getFwVersion());
    check(again.getKxsVersion() == parser.getKxsVersion());
    check(again.getEnqString() == parser.getEnqString());

    // Reformatting a narrow image gives a loadable text.
    const auto extent = parser.dataExtent();
    if (extent && extent->second - extent->first <= MaxFuzzReformatSpan) {
        const QByteArray reformatted = written(parser, true, 1 + pick % 255, &ok);
        check(ok == (extent->second <= 0x100000000ull));
        if (ok) {
            HexParser third;
            check(third.loadHexData(reformatted, processor));
        }
    }

    // Settings turned into records and merged in are read back unchanged when no
    // extended addresses make 16-bit lookups ambiguous.
    const quint32 base = pick * 0xF0u;
    sf::RawSetting small(QStringLiteral("small"), 3, static_cast<qint32>(base), true, false);
    small.setData("\x11\x22\x33");
    sf::RawSetting wide(QStringLiteral("wide"), 9, static_cast<qint32>(base + 5), true, false);
    wide.setData("ABCDEFGHI");
    RecordList records;
    check(parser.getRawSettingsAsHexData({&small, &wide}, records, true, 0, 0xFFFFFFFF));
    check(parser.addToFile(records));
    if (!hasExtendedRecords(parser.records())) {
        check(parser.readData(base, 3) == QByteArray("\x11\x22\x33"));
        check(parser.readData(base + 5, 9) == QByteArray("ABCDEFGHI"));
    }
    QBuffer copy;
    copy.open(QIODevice::WriteOnly);
    check(parser.copyToFile(&copy, base, base + 0x200, true, true));
    check(parser.replaceFileContents(records));
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    const QByteArray text =
        QByteArray::fromRawData(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size));
    const int processors[] = {sf::parser::PhantomEvery4, sf::parser::PhantomEvery2,
                              sf::parser::PhantomNone, 7};
    for (int processor : processors) {
        exercise(text, processor);
    }
    // The metadata readers pass bad lines over instead of failing.
    QByteArray copy = text;
    QBuffer buffer(&copy);
    buffer.open(QIODevice::ReadOnly);
    HexParser::getKxsVersion(&buffer);
    return 0;
}
