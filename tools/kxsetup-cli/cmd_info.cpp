// kxsetup-cli info FILE [--json]: a setup or firmware image's metadata texts, record
// count, data byte count and the address ranges its data records cover.
#include "Command.h"

#include "sf/parser/HexParser.h"

#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <algorithm>
#include <vector>

namespace {

using sf::parser::HexParser;
using sf::parser::Inhex32Entry;

struct Range {
    quint64 start;
    quint64 end; // exclusive
};

struct Extent {
    quint64 dataBytes = 0;
    std::vector<Range> ranges; // sorted, overlapping and touching ranges merged
};

// Full addresses of the data records (upper 16 bits from the last extended-address
// record before them), merged where they touch or overlap.
Extent extentOf(const sf::parser::RecordList& records) {
    Extent extent;
    quint16 upper = 0;
    bool sorted = true;
    for (const auto& r : records) {
        if (r->isExtendedAddress()) {
            upper = r->upperAddress();
            continue;
        }
        if (!r->isData() || r->getLength() == 0) {
            continue;
        }
        extent.dataBytes += r->getLength();
        const quint64 start = (static_cast<quint64>(upper) << 16) + r->getAddress();
        const quint64 end = start + r->getLength();
        if (!extent.ranges.empty()) {
            Range& last = extent.ranges.back();
            if (start >= last.start && start <= last.end) {
                last.end = std::max(last.end, end);
                continue;
            }
            sorted = sorted && start > last.end;
        }
        extent.ranges.push_back({start, end});
    }
    if (!sorted) {
        std::sort(extent.ranges.begin(), extent.ranges.end(),
                  [](const Range& a, const Range& b) { return a.start < b.start; });
        std::vector<Range> merged;
        for (const Range& r : extent.ranges) {
            if (!merged.empty() && r.start <= merged.back().end) {
                merged.back().end = std::max(merged.back().end, r.end);
            } else {
                merged.push_back(r);
            }
        }
        extent.ranges.swap(merged);
    }
    return extent;
}

// Control characters shown as \xHH so that each text stays on its line.
QString printable(const QString& text) {
    QString out;
    for (const QChar c : text) {
        if (c.unicode() < 0x20 || c.unicode() == 0x7F || c == QLatin1Char('\\')) {
            out += QStringLiteral("\\x%1").arg(c.unicode(), 2, 16, QLatin1Char('0'));
        } else {
            out += c;
        }
    }
    return out;
}

QString hexAddress(quint64 address) {
    return QStringLiteral("0x%1")
        .arg(address, 8, 16, QLatin1Char('0'))
        .toUpper()
        .replace(QLatin1String("0X"), QLatin1String("0x"));
}

int runInfo(cli::Context& ctx) {
    static const QString cmd = QStringLiteral("info");
    const bool json = cli::takeFlag(ctx.args, QStringLiteral("--json"));
    for (const QString& a : ctx.args) {
        if (a.startsWith(QLatin1String("--"))) {
            return cli::usageError(ctx, cmd, QStringLiteral("unknown option %1").arg(a));
        }
    }
    if (ctx.args.size() != 1) {
        return cli::usageError(ctx, cmd, QStringLiteral("info needs exactly one file"));
    }
    const QString name = ctx.args.first();
    QFile file(ctx.filePath(name));
    if (!file.open(QIODevice::ReadOnly)) {
        return cli::inputError(ctx, name,
                               QStringLiteral("cannot open: %1").arg(file.errorString()));
    }
    HexParser parser;
    if (!parser.loadHex(&file, sf::parser::PhantomNone)) {
        return cli::inputError(
            ctx, name, QStringLiteral("not a valid Intel HEX file (%1)").arg(parser.errorString()));
    }
    const Extent extent = extentOf(parser.records());
    const qint64 records = static_cast<qint64>(parser.records().size());

    if (json) {
        QJsonArray ranges;
        for (const Range& r : extent.ranges) {
            ranges.append(QJsonArray{static_cast<qint64>(r.start), static_cast<qint64>(r.end)});
        }
        QJsonObject root;
        root.insert(QStringLiteral("file"), name);
        root.insert(QStringLiteral("fw"), parser.getFwVersion());
        root.insert(QStringLiteral("kxs"), parser.getKxsVersion());
        root.insert(QStringLiteral("enq"), parser.getEnqString());
        root.insert(QStringLiteral("records"), records);
        root.insert(QStringLiteral("dataBytes"), static_cast<qint64>(extent.dataBytes));
        root.insert(QStringLiteral("ranges"), ranges);
        ctx.out << QString::fromUtf8(QJsonDocument(root).toJson(QJsonDocument::Compact)) << "\n";
        return cli::ExitOk;
    }
    ctx.out << "file:       " << name << "\n"
            << "fw:         " << printable(parser.getFwVersion()) << "\n"
            << "kxs:        " << printable(parser.getKxsVersion()) << "\n"
            << "enq:        " << printable(parser.getEnqString()) << "\n"
            << "records:    " << records << "\n"
            << "data bytes: " << extent.dataBytes << "\n"
            << "ranges:     " << extent.ranges.size() << "\n";
    for (const Range& r : extent.ranges) {
        ctx.out << "  " << hexAddress(r.start) << " - " << hexAddress(r.end - 1) << "  ("
                << (r.end - r.start) << " bytes)\n";
    }
    return cli::ExitOk;
}

cli::Registrar reg({QStringLiteral("info"), QStringLiteral("info FILE [--json]"),
                    QStringLiteral("Print a setup or firmware file's metadata and extent"),
                    runInfo});

} // namespace
