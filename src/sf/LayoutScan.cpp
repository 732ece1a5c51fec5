#include "sf/LayoutScan.h"

#include "kxs/KxsFormat.h"
#include "kxs/parser/KxsParser.h"

#include <QVector>

namespace sf {

namespace {

struct Placed {
    quint32 position = 0; // offset of the entry in the file
    QString name;
};

} // namespace

bool LayoutScan::scan(const QByteArray& layout) {
    m_headings.clear();
    kxs::parser::KxsParser parser;
    if (!parser.openKxsData(layout)) {
        return false;
    }

    QVector<Placed> headings;
    const kxs::NamesTableEntryV1* entry = nullptr;
    const char* data = nullptr;
    while (parser.hasNext(kxs::EntryCategory) &&
           parser.getNext(&entry, &data, kxs::EntryCategory)) {
        kxs::CategoryData texts;
        if (!kxs::readCategoryData(entry, data, &texts)) {
            break; // the interpreter stops here too
        }
        headings.append({parser.getOffset() - kxs::entryLength(entry), kxs::entryName(entry)});
    }

    parser.reset();
    int next = 0; // first heading not yet passed
    QString current;
    while (parser.hasNext(kxs::EntrySetting) && parser.getNext(&entry, &data, kxs::EntrySetting)) {
        qint32 sizeBytes = 0;
        if (!kxs::readSettingSize(entry, data, &sizeBytes)) {
            break;
        }
        if (sizeBytes > MAX_SETTING_SIZE) {
            return false;
        }
        const quint32 position = parser.getOffset() - kxs::entryLength(entry);
        while (next < headings.size() && headings[next].position <= position) {
            current = headings[next].name;
            ++next;
        }
        m_headings.append(current);
    }
    return true;
}

} // namespace sf
