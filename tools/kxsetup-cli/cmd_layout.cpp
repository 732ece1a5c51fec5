// kxsetup-cli layout FILE.kxs [--json]: lists a layout file's header and every entry of
// its names table in order.

#include "Command.h"

#include "kxs/KxsFormat.h"
#include "kxs/parser/KxsParser.h"

#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

namespace {

const char* typeName(quint8 type) {
    switch (type) {
    case kxs::EntryAny:
        return "any";
    case kxs::EntrySetting:
        return "setting";
    case kxs::EntryInteger:
        return "integer";
    case kxs::EntryString:
        return "string";
    case kxs::EntryCategory:
        return "category";
    default:
        return "unknown";
    }
}

// A text in double quotes with quotes, backslashes and control characters escaped, so
// that each entry stays on one line.
QString quoted(const QString& text) {
    QString out = QStringLiteral("\"");
    for (const QChar c : text) {
        if (c == QLatin1Char('"') || c == QLatin1Char('\\')) {
            out += QLatin1Char('\\');
            out += c;
        } else if (c.unicode() < 0x20 || c.unicode() == 0x7F) {
            out += QStringLiteral("\\x%1").arg(c.unicode(), 2, 16, QLatin1Char('0'));
        } else {
            out += c;
        }
    }
    return out + QLatin1Char('"');
}

// Integers beyond 2^53 do not survive a JSON number; they are written as decimal text.
QJsonValue jsonInteger(quint64 value) {
    if (value <= (quint64(1) << 53)) {
        return QJsonValue(static_cast<double>(value));
    }
    return QJsonValue(QString::number(value));
}

// One entry: its JSON object and its line of plain output.
struct Listed {
    QJsonObject json;
    QString line;
};

Listed describe(const kxs::NamesTableEntryV1* entry, const char* data) {
    Listed l;
    const quint8 type = kxs::entryType(entry);
    const QString name = kxs::entryName(entry);
    l.json.insert(QStringLiteral("type"), type);
    l.json.insert(QStringLiteral("typeName"), QLatin1String(typeName(type)));
    l.json.insert(QStringLiteral("name"), name);
    l.line = QStringLiteral("%1 %2").arg(QLatin1String(typeName(type)), -8).arg(name);
    QString problem;
    if (!data) {
        problem = QStringLiteral("data block lies outside the file");
    } else if (type == kxs::EntrySetting) {
        kxs::SettingData s;
        if (kxs::readSettingData(entry, data, &s)) {
            l.json.insert(QStringLiteral("address"), static_cast<double>(s.address));
            l.json.insert(QStringLiteral("size"), s.sizeBytes);
            l.json.insert(QStringLiteral("definition"), s.definition);
            l.line += QStringLiteral(" address 0x%1 size %2 = %3")
                          .arg(s.address, 4, 16, QLatin1Char('0'))
                          .arg(s.sizeBytes)
                          .arg(quoted(s.definition));
        } else {
            problem = QStringLiteral("setting data shorter than 8 bytes");
        }
    } else if (type == kxs::EntryInteger) {
        quint64 value = 0;
        if (kxs::readIntegerData(entry, data, &value)) {
            l.json.insert(QStringLiteral("value"), jsonInteger(value));
            l.json.insert(QStringLiteral("bytes"), static_cast<int>(kxs::entrySize(entry)));
            l.line += QStringLiteral(" = %1 (%2 bytes)").arg(value).arg(kxs::entrySize(entry));
        } else {
            problem =
                QStringLiteral("integer of %1 bytes (not 1, 2, 4 or 8)").arg(kxs::entrySize(entry));
        }
    } else if (type == kxs::EntryString) {
        const QString text = kxs::readStringData(entry, data);
        l.json.insert(QStringLiteral("text"), text);
        l.line += QStringLiteral(" = ") + quoted(text);
    } else if (type == kxs::EntryCategory) {
        kxs::CategoryData c;
        if (kxs::readCategoryData(entry, data, &c)) {
            l.json.insert(QStringLiteral("title"), c.title);
            l.json.insert(QStringLiteral("preset"), c.preset);
            l.line += QStringLiteral(" title %1 preset %2").arg(quoted(c.title), quoted(c.preset));
        } else {
            problem = QStringLiteral("category texts run past the data block");
        }
    } else {
        l.line += QStringLiteral(" (%1 data bytes)").arg(kxs::entrySize(entry));
    }
    if (!problem.isEmpty()) {
        l.json.insert(QStringLiteral("problem"), problem);
        l.line += QStringLiteral(" [%1]").arg(problem);
    }
    return l;
}

int runLayout(cli::Context& ctx) {
    const bool json = cli::takeFlag(ctx.args, QStringLiteral("--json"));
    if (ctx.args.size() != 1) {
        return cli::usageError(ctx, QStringLiteral("layout"),
                               ctx.args.isEmpty() ? QStringLiteral("no layout file given")
                                                  : QStringLiteral("give exactly one layout file"));
    }
    if (ctx.args.first().startsWith(QLatin1Char('-'))) {
        return cli::usageError(ctx, QStringLiteral("layout"),
                               QStringLiteral("unknown option %1").arg(ctx.args.first()));
    }
    const QString fileName = ctx.args.first();
    QFile file(ctx.filePath(fileName));
    if (!file.open(QIODevice::ReadOnly)) {
        return cli::inputError(ctx, fileName, file.errorString());
    }
    const QByteArray bytes = file.readAll();
    kxs::parser::KxsParser parser;
    if (!parser.openKxsData(bytes)) {
        return cli::inputError(ctx, fileName, kxs::parser::KxsParser::headerProblem(bytes));
    }

    QJsonArray entries;
    QStringList lines;
    const kxs::NamesTableEntryV1* entry = nullptr;
    const char* data = nullptr;
    while (parser.getNextListed(&entry, &data)) {
        const Listed l = describe(entry, data);
        entries.append(l.json);
        lines.append(l.line);
    }
    if (!parser.atEndOfNames()) {
        return cli::inputError(
            ctx, fileName,
            QStringLiteral("names table entry at offset %1 is damaged").arg(parser.getOffset()));
    }

    if (json) {
        QJsonObject root;
        root.insert(QStringLiteral("version"), parser.getKxsVersion());
        root.insert(QStringLiteral("format"), static_cast<double>(parser.getKxsFormat()));
        root.insert(QStringLiteral("entries"), entries);
        ctx.out << QJsonDocument(root).toJson(QJsonDocument::Indented);
    } else {
        ctx.out << "version " << quoted(parser.getKxsVersion()) << "\n"
                << "format  " << parser.getKxsFormat() << "\n"
                << "entries " << lines.size() << "\n";
        for (const QString& line : lines) {
            ctx.out << line << "\n";
        }
    }
    return cli::ExitOk;
}

cli::Registrar reg({QStringLiteral("layout"), QStringLiteral("layout FILE.kxs [--json]"),
                    QStringLiteral("List a layout file's version, format and entries"), runLayout});

} // namespace
