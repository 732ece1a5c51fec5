// Fuzzes the layout file reader: open arbitrary bytes, walk every entry type, look up
// names (fixed ones and ones found in the file) and read every byte the reader hands
// out, so that ASan catches any read outside the input.

#include "kxs/KxsFormat.h"
#include "kxs/parser/KxsParser.h"

#include <QByteArray>
#include <QString>
#include <QStringList>

#include <cstddef>
#include <cstdint>

namespace {

volatile unsigned g_sink = 0;

void touch(const kxs::NamesTableEntryV1* entry, const char* data) {
    unsigned sum = 0;
    const char* bytes = kxs::entryBytes(entry);
    for (int i = 0; i < kxs::entryLength(entry); ++i) {
        sum += static_cast<unsigned char>(bytes[i]);
    }
    const quint32 size = kxs::entrySize(entry);
    for (quint32 i = 0; i < size; ++i) {
        sum += static_cast<unsigned char>(data[i]);
    }
    // The decoding helpers must stay inside the block as well.
    kxs::SettingData setting;
    kxs::CategoryData category;
    quint64 value = 0;
    kxs::readSettingData(entry, data, &setting);
    kxs::readCategoryData(entry, data, &category);
    kxs::readIntegerData(entry, data, &value);
    sum += static_cast<unsigned>(kxs::readStringData(entry, data).size());
    sum += static_cast<unsigned>(kxs::entryName(entry).size() + setting.definition.size() +
                                 category.title.size() + value);
    g_sink = g_sink + sum;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* input, size_t size) {
    if (size > 1 << 20) {
        return 0;
    }
    // Raw data (no copy): the reader works on the fuzzer's exactly sized buffer, so any
    // overread is caught.
    const QByteArray bytes =
        QByteArray::fromRawData(reinterpret_cast<const char*>(input), static_cast<int>(size));
    kxs::parser::KxsParser parser;
    if (!parser.openKxsData(bytes)) {
        return 0;
    }
    g_sink = g_sink + static_cast<unsigned>(parser.getKxsVersion().size() + parser.getKxsFormat());

    const kxs::NamesTableEntryV1* entry = nullptr;
    const char* data = nullptr;
    QStringList names;

    // Sequential iteration for every type (and one unknown), bounded in steps.
    for (quint8 type = 0; type <= 5; ++type) {
        parser.reset();
        for (int steps = 0; steps < 100000 && parser.getNext(&entry, &data, type); ++steps) {
            touch(entry, data);
            parser.hasNext();
            parser.hasNext(type);
            if (names.size() < 16) {
                names << kxs::entryName(entry);
            }
        }
    }

    // The listing walk.
    parser.reset();
    for (int steps = 0; steps < 100000 && parser.getNextListed(&entry, &data); ++steps) {
        if (data) {
            touch(entry, data);
        }
    }
    parser.atEndOfNames();

    // Lookups by name, then walking on from the match.
    names << QStringLiteral("A") << QStringLiteral("Speed") << QString(300, QLatin1Char('x'));
    for (const QString& name : names) {
        for (quint8 type = 0; type <= 4; ++type) {
            if (parser.getEntry(&entry, &data, name, type)) {
                touch(entry, data);
                for (int steps = 0; steps < 8 && parser.hasNext(type); ++steps) {
                    if (!parser.getNext(&entry, &data, type)) {
                        break;
                    }
                    touch(entry, data);
                }
            }
        }
    }

    // Arbitrary cursor positions, including ones inside entries and past the end.
    const quint32 offsets[] = {0u,
                               1u,
                               39u,
                               40u,
                               static_cast<quint32>(size) - 1u,
                               static_cast<quint32>(size),
                               0xFFFFFFF6u,
                               0xFFFFFFFFu};
    for (quint32 offset : offsets) {
        parser.setOffset(offset);
        parser.hasNext(1);
        if (parser.getNext(&entry, &data, 1)) {
            touch(entry, data);
        }
    }
    parser.close();
    return 0;
}
