#include "Transfers.h"

#include "sf/parser/PhantomBytes.h"
#include "util/FirmwareImage.h"

#include <cstdio>

using namespace util::link;

void say(const QString& text) {
    std::fputs(text.toUtf8().constData(), stdout);
    std::fflush(stdout);
}

bool readWords(HelperLink& link, const DeviceProfile& p, quint32 first, quint32 last,
               QByteArray* image, bool report) {
    const sf::parser::PhantomBytes phantoms(p.phantomPeriod());
    const quint32 total = last - first;
    for (quint32 word = first; word < last; word += MAX_WORDS) {
        const int count = static_cast<int>(qMin<quint32>(MAX_WORDS, last - word));
        Frame reply;
        if (!link.request(CmdRead, wordRange(word, count), &reply) ||
            reply.payload.size() != p.realBytes(word, count)) {
            return false;
        }
        const int span = int(p.imageAddress(word + count) - p.imageAddress(word));
        QByteArray part =
            phantoms.insert(reply.payload, p.imageAddress(word), quint64(reply.payload.size()));
        part.append(QByteArray(span - int(part.size()), '\0')); // a phantom byte last
        *image += part;
        if (report) {
            say(QStringLiteral("Progress %1%\n").arg(100 * (word + count - first) / total));
        }
    }
    return true;
}

bool writeWords(HelperLink& link, const DeviceProfile& p, quint32 first, quint32 last,
                const QByteArray& image) {
    const sf::parser::PhantomBytes phantoms(p.phantomPeriod());
    for (quint32 word = first; word < last; word += MAX_WORDS) {
        const int count = static_cast<int>(qMin<quint32>(MAX_WORDS, last - word));
        const quint64 offset = p.imageAddress(word) - p.imageAddress(first);
        const quint64 span = p.imageAddress(word + count) - p.imageAddress(word);
        const QByteArray real =
            phantoms.remove(image.mid(int(offset), int(span)), p.imageAddress(word), span);
        Frame reply;
        if (!link.request(CmdWrite, wordRange(word, count) + real, &reply)) {
            return false;
        }
    }
    return true;
}

namespace {

// Consecutive words, at most one request's worth, of which the file holds real bytes.
struct Run {
    quint32 word = 0;
    int count = 0;
    int offset = 0; // of its first image address in the region
    int span = 0;   // its image addresses
};

QList<Run> heldRuns(const DeviceProfile& p, quint32 first, quint32 last, const QByteArray& held) {
    QList<Run> runs;
    const int per = p.addressesPerWord();
    for (quint32 word = first; word < last; ++word) {
        const int at = int(p.imageAddress(word) - p.imageAddress(first));
        if (!held.mid(at, per).contains('\1')) {
            continue;
        }
        if (!runs.isEmpty() && runs.last().word + quint32(runs.last().count) == word &&
            runs.last().count < MAX_WORDS) {
            ++runs.last().count;
            runs.last().span += per;
        } else {
            runs << Run{word, 1, at, per};
        }
    }
    return runs;
}

void reportRun(int done, int total) {
    say(QStringLiteral("Progress %1%\n").arg(100 * done / qMax(1, total)));
}

} // namespace

bool writeHeld(HelperLink& link, const DeviceProfile& p, quint32 first, quint32 last,
               const QByteArray& image, const QByteArray& held) {
    const sf::parser::PhantomBytes phantoms(p.phantomPeriod());
    const QList<Run> runs = heldRuns(p, first, last, held);
    for (int i = 0; i < runs.size(); ++i) {
        const Run& run = runs.at(i);
        QByteArray words = image.mid(run.offset, run.span);
        const QByteArray mask = held.mid(run.offset, run.span);
        if (mask.count('\1') < p.realBytes(run.word, run.count)) {
            QByteArray current; // the instrument's bytes the file does not hold stay
            if (!readWords(link, p, run.word, run.word + quint32(run.count), &current, false)) {
                return false;
            }
            for (int k = 0; k < run.span; ++k) {
                if (mask.at(k) == 0) {
                    words[k] = current.at(k);
                }
            }
        }
        const quint64 from = p.imageAddress(run.word);
        Frame reply;
        if (!link.request(CmdWrite,
                          wordRange(run.word, run.count) +
                              phantoms.remove(words, from, quint64(run.span)),
                          &reply)) {
            return false;
        }
        reportRun(i + 1, int(runs.size()));
    }
    if (runs.isEmpty()) {
        reportRun(1, 1);
    }
    return true;
}

bool verifyHeld(HelperLink& link, const DeviceProfile& p, quint32 first, quint32 last,
                const QByteArray& image, const QByteArray& held, bool* same) {
    const QList<Run> runs = heldRuns(p, first, last, held);
    *same = true;
    for (int i = 0; i < runs.size(); ++i) {
        const Run& run = runs.at(i);
        QByteArray actual;
        if (!readWords(link, p, run.word, run.word + quint32(run.count), &actual, false)) {
            return false;
        }
        for (int k = 0; k < run.span; ++k) {
            if (held.at(run.offset + k) && actual.at(k) != image.at(run.offset + k)) {
                *same = false;
            }
        }
        reportRun(i + 1, int(runs.size()));
    }
    return true;
}

namespace {

constexpr int ERASE_WAIT_MS = 3000; // erasing flash takes longer than a reply
constexpr int MAX_PAGES = 255;      // pages per erase request

// Progress over a phase of known length, printed when the percentage changes.
class Progress {
public:
    explicit Progress(int total) : m_total(qMax(1, total)) { say(QStringLiteral("Progress 0%\n")); }
    void step() {
        const int percent = 100 * ++m_done / m_total;
        if (percent != m_shown) {
            m_shown = percent;
            say(QStringLiteral("Progress %1%\n").arg(percent));
        }
    }

private:
    int m_total;
    int m_done = 0;
    int m_shown = 0;
};

// Image addresses of the rows that hold something other than erased bytes.
QList<quint64> rowsToWrite(const DeviceProfile& p, const FirmwareImage& image) {
    QList<quint64> rows;
    for (quint64 row = p.programStart; row < p.programEnd; row += p.rowSize) {
        const QByteArray bytes = image.program.mid(int(row - p.programStart), int(p.rowSize));
        if (!p.inBootloader(row) && bytes.count(char(0xFF)) != bytes.size()) {
            rows << row;
        }
    }
    return rows;
}

bool erase(HelperLink& link, const DeviceProfile& p) {
    quint64 page = p.programStart;
    while (page < p.programEnd) {
        if (p.inBootloader(page)) {
            page += p.pageSize;
            continue;
        }
        int pages = 0;
        while (pages < MAX_PAGES && page + pages * p.pageSize < p.programEnd &&
               !p.inBootloader(page + pages * p.pageSize)) {
            ++pages;
        }
        Frame reply;
        const QByteArray request = wordRange(p.wordAt(page), pages);
        if (!link.request(CmdErase, request, &reply, ERASE_WAIT_MS)) {
            return false;
        }
        page += pages * p.pageSize;
    }
    return true;
}

QByteArray rowRealBytes(const DeviceProfile& p, const FirmwareImage& image, quint64 row) {
    return sf::parser::PhantomBytes(p.phantomPeriod())
        .remove(image.program.mid(int(row - p.programStart), int(p.rowSize)), row, p.rowSize);
}

} // namespace

QString checkFirmware(const DeviceProfile& p, const FirmwareImage& image) {
    if (p.pageSize == 0 || p.rowSize == 0 || p.programEnd <= p.programStart) {
        return QStringLiteral("size cannot be 0! (no flash layout for %1 in device.txt)").arg(p.id);
    }
    if (!image.error.isEmpty()) {
        return image.error;
    }
    if (rowsToWrite(p, image).isEmpty() && !image.hasSettings) {
        return QStringLiteral("Could not process firmware file: it holds nothing for a %1")
            .arg(p.name);
    }
    return QString();
}

QString flashFirmware(HelperLink& link, const DeviceProfile& p, const FirmwareImage& image) {
    for (const QString& warning : image.warnings) {
        say(warning + QLatin1Char('\n'));
    }
    const QList<quint64> rows = rowsToWrite(p, image);
    const int settingsSteps = image.hasSettings ? 1 : 0;
    say(QStringLiteral("Now writing\n"));
    if (!erase(link, p)) {
        return QStringLiteral("Erase command receive failed!");
    }
    Progress writing(int(rows.size()) + settingsSteps);
    for (quint64 row : rows) {
        Frame reply;
        const QByteArray request = wordAddress(p.wordAt(row)) + rowRealBytes(p, image, row);
        if (!link.request(CmdRowWrite, request, &reply)) {
            return QStringLiteral("Flash write command receive failed!");
        }
        writing.step();
    }
    if (image.hasSettings) {
        if (!writeWords(link, p, p.settingsStart, p.settingsEnd, image.settings)) {
            return QStringLiteral("EEProm write command receive failed!");
        }
        writing.step();
    }
    say(QStringLiteral("Now verifying\n"));
    Progress verifying(int(rows.size()) + settingsSteps);
    const int rowWords = int(p.rowSize / quint64(p.addressesPerWord()));
    for (quint64 row : rows) {
        Frame reply;
        if (!link.request(CmdRowVerify, wordRange(p.wordAt(row), rowWords), &reply)) {
            return QStringLiteral("Flash Read command receive failed!");
        }
        if (reply.payload != rowRealBytes(p, image, row)) {
            return QStringLiteral("Row verify failure at address 0x%1").arg(row, 0, 16);
        }
        verifying.step();
    }
    if (image.hasSettings) {
        QByteArray actual;
        if (!readWords(link, p, p.settingsStart, p.settingsEnd, &actual, false)) {
            return QStringLiteral("EEPROM Read command receive failed!");
        }
        if (actual != image.settings) {
            return QStringLiteral("Verification failure!");
        }
        verifying.step();
    }
    return QString();
}
