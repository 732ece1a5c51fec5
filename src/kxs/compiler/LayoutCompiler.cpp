#include "kxs/compiler/LayoutCompiler.h"

#include "kxs/KxsFormat.h"
#include "kxs/compiler/KxsWriter.h"
#include "kxs/compiler/SourceScanner.h"

#include <QHash>
#include <QRegularExpression>
#include <QStringList>

namespace kxs {
namespace compiler {

namespace {

using Tokens = QVector<SourceToken>;

bool parseUnsigned(const QString& text, quint64 max, quint64* out) {
    static const QRegularExpression number(QStringLiteral("^(0[xX][0-9a-fA-F]+|[0-9]+)$"));
    if (!number.match(text).hasMatch()) {
        return false;
    }
    bool ok = false;
    const quint64 value = text.startsWith(QLatin1String("0x"), Qt::CaseInsensitive)
                              ? text.mid(2).toULongLong(&ok, 16)
                              : text.toULongLong(&ok, 10);
    if (!ok || value > max) {
        return false;
    }
    *out = value;
    return true;
}

bool parseSigned32(const QString& text, qint32* out) {
    const bool negative = text.startsWith(QLatin1Char('-'));
    quint64 magnitude = 0;
    if (!parseUnsigned(negative ? text.mid(1) : text, negative ? 0x80000000ull : 0x7FFFFFFFull,
                       &magnitude)) {
        return false;
    }
    *out = negative ? static_cast<qint32>(-static_cast<qint64>(magnitude))
                    : static_cast<qint32>(magnitude);
    return true;
}

QString quoteName(const QString& name) {
    return QLatin1Char('"') + name + QLatin1Char('"');
}

const char* typeWord(quint8 type) {
    switch (type) {
    case EntrySetting:
        return "setting";
    case EntryInteger:
        return "integer";
    case EntryString:
        return "string";
    case EntryCategory:
        return "category";
    default:
        return "entry";
    }
}

// One run of the compiler over a source text.
class Compilation {
public:
    bool run(const QString& source);
    QByteArray bytes() const { return m_writer.toBytes(); }
    LayoutCompiler::Error error;

private:
    bool line(const QString& text);
    bool statement(const Tokens& t, const SourceScanner& scanner);
    bool listLine(const Tokens& t, bool hasDefinition);
    bool version(const Tokens& t);
    bool format(const Tokens& t);
    bool category(const Tokens& t);
    bool setting(const Tokens& t, const SourceScanner& scanner);
    bool integer(const Tokens& t, int byteSize);
    bool string(const Tokens& t);
    bool strings(const Tokens& t);
    bool flushSetting();
    bool emitList();
    bool reserve(quint8 type, const QString& name, int line);
    bool writerResult(bool ok, int line);
    bool fail(int line, const QString& message);
    bool fail(const QString& message) { return fail(m_line, message); }

    KxsWriter m_writer;
    int m_line = 0;
    bool m_haveVersion = false;
    bool m_haveFormat = false;
    QHash<QString, int> m_names[5]; // per entry type: name -> line that defined it

    struct PendingSetting {
        bool active = false;
        int line = 0;
        QString name;
        quint32 address = 0;
        qint32 size = 0;
        QString definition;
    } m_setting;

    struct PendingList {
        bool open = false;
        int line = 0;
        QString name;
        QString countName;
        QStringList items;
    } m_list;
};

bool Compilation::fail(int line, const QString& message) {
    error.line = line;
    error.message = message;
    return false;
}

bool Compilation::writerResult(bool ok, int line) {
    return ok || fail(line, m_writer.errorString());
}

bool Compilation::reserve(quint8 type, const QString& name, int line) {
    QHash<QString, int>& names = m_names[type < 5 ? type : 0];
    const auto it = names.constFind(name);
    if (it != names.constEnd()) {
        return fail(line, QStringLiteral("duplicate %1 name %2 (first defined on line %3)")
                              .arg(QLatin1String(typeWord(type)), quoteName(name))
                              .arg(it.value()));
    }
    names.insert(name, line);
    return true;
}

bool Compilation::run(const QString& source) {
    const QStringList lines = source.split(QLatin1Char('\n'));
    for (const QString& text : lines) {
        ++m_line;
        if (!line(text)) {
            return false;
        }
    }
    if (!flushSetting()) {
        return false;
    }
    if (m_list.open) {
        return fail(
            m_list.line,
            QStringLiteral("string list %1 is not closed with }").arg(quoteName(m_list.name)));
    }
    return true;
}

bool Compilation::line(const QString& text) {
    const QString trimmed = text.trimmed();
    if (trimmed.startsWith(QLatin1String("..."))) {
        if (!m_setting.active) {
            return fail(QStringLiteral("a continuation line (...) must follow a setting"));
        }
        m_setting.definition += trimmed.mid(3).trimmed();
        return true;
    }
    SourceScanner scanner;
    if (!scanner.scan(text)) {
        return fail(scanner.error());
    }
    const Tokens& t = scanner.tokens();
    if (t.isEmpty() && !scanner.hasDefinition()) {
        return true; // blank or comment line
    }
    if (!flushSetting()) {
        return false;
    }
    if (m_list.open) {
        return listLine(t, scanner.hasDefinition());
    }
    return statement(t, scanner);
}

bool Compilation::statement(const Tokens& t, const SourceScanner& scanner) {
    if (t.isEmpty() || t.first().kind != SourceToken::Word) {
        return fail(QStringLiteral("a line must start with a statement word"));
    }
    const QString word = t.first().text;
    if (word == QLatin1String("setting")) {
        return setting(t, scanner);
    }
    static const QStringList others{QStringLiteral("version"),  QStringLiteral("format"),
                                    QStringLiteral("category"), QStringLiteral("integer"),
                                    QStringLiteral("u8"),       QStringLiteral("u16"),
                                    QStringLiteral("u32"),      QStringLiteral("u64"),
                                    QStringLiteral("string"),   QStringLiteral("strings")};
    if (!others.contains(word)) {
        return fail(QStringLiteral("unknown statement \"%1\"").arg(word));
    }
    if (scanner.hasDefinition()) {
        return fail(QStringLiteral("unexpected = (only a setting has a definition)"));
    }
    if (word == QLatin1String("version")) {
        return version(t);
    }
    if (word == QLatin1String("format")) {
        return format(t);
    }
    if (word == QLatin1String("category")) {
        return category(t);
    }
    if (word == QLatin1String("integer") || word == QLatin1String("u32")) {
        return integer(t, 4);
    }
    if (word == QLatin1String("u8")) {
        return integer(t, 1);
    }
    if (word == QLatin1String("u16")) {
        return integer(t, 2);
    }
    if (word == QLatin1String("u64")) {
        return integer(t, 8);
    }
    if (word == QLatin1String("string")) {
        return string(t);
    }
    return strings(t);
}

bool Compilation::version(const Tokens& t) {
    if (m_haveVersion) {
        return fail(QStringLiteral("version is given twice"));
    }
    if (t.size() != 2) {
        return fail(QStringLiteral("version needs exactly one text: version \"TEXT\""));
    }
    m_haveVersion = true;
    return writerResult(m_writer.setVersion(t.at(1).text), m_line);
}

bool Compilation::format(const Tokens& t) {
    if (m_haveFormat) {
        return fail(QStringLiteral("format is given twice"));
    }
    quint64 value = 0;
    if (t.size() != 2 || t.at(1).kind != SourceToken::Word ||
        !parseUnsigned(t.at(1).text, 0xFFFF, &value) || !isSupportedFormat(quint32(value))) {
        return fail(QStringLiteral("format must be 1000 or 1001"));
    }
    m_haveFormat = true;
    m_writer.setFormat(static_cast<quint16>(value));
    return true;
}

bool Compilation::category(const Tokens& t) {
    if (t.size() < 3 || t.size() > 4 || t.at(2).kind != SourceToken::Quoted ||
        (t.size() == 4 && t.at(3).kind != SourceToken::Quoted)) {
        return fail(QStringLiteral("category needs a label, a quoted title and optionally a "
                                   "quoted preset name: category LABEL \"Title\" \"Preset\""));
    }
    const QString label = t.at(1).text;
    const QString preset = t.size() == 4 ? t.at(3).text : QString();
    if (label.isEmpty()) {
        return fail(QStringLiteral("category label is empty"));
    }
    return reserve(EntryCategory, label, m_line) &&
           writerResult(m_writer.addCategory(label, t.at(2).text, preset), m_line);
}

bool Compilation::setting(const Tokens& t, const SourceScanner& scanner) {
    if (t.size() != 4 || !scanner.hasDefinition()) {
        return fail(QStringLiteral(
            "setting needs a name, an address, a size and a definition: setting NAME ADDRESS "
            "SIZE = DEFINITION"));
    }
    quint64 address = 0;
    if (t.at(2).kind != SourceToken::Word ||
        !parseUnsigned(t.at(2).text, 0xFFFFFFFFull, &address)) {
        return fail(QStringLiteral("setting address \"%1\" is not an unsigned 32-bit number")
                        .arg(t.at(2).text));
    }
    qint32 size = 0;
    if (t.at(3).kind != SourceToken::Word || !parseSigned32(t.at(3).text, &size)) {
        return fail(QStringLiteral("setting size \"%1\" is not a 32-bit number").arg(t.at(3).text));
    }
    if (t.at(1).text.isEmpty()) {
        return fail(QStringLiteral("setting name is empty"));
    }
    m_setting.active = true;
    m_setting.line = m_line;
    m_setting.name = t.at(1).text;
    m_setting.address = static_cast<quint32>(address);
    m_setting.size = size;
    m_setting.definition = scanner.definition();
    return true;
}

bool Compilation::flushSetting() {
    if (!m_setting.active) {
        return true;
    }
    m_setting.active = false;
    const PendingSetting& s = m_setting;
    return reserve(EntrySetting, s.name, s.line) &&
           writerResult(m_writer.addSetting(s.name, s.address, s.size, s.definition), s.line);
}

bool Compilation::integer(const Tokens& t, int byteSize) {
    quint64 value = 0;
    if (t.size() != 3 || t.at(2).kind != SourceToken::Word) {
        return fail(
            QStringLiteral("%1 needs a name and a value: %1 NAME VALUE").arg(t.first().text));
    }
    const quint64 max = byteSize == 8 ? ~quint64(0) : (quint64(1) << (8 * byteSize)) - 1;
    if (!parseUnsigned(t.at(2).text, max, &value)) {
        return fail(QStringLiteral("value \"%1\" is not an unsigned number that fits in %2 byte(s)")
                        .arg(t.at(2).text)
                        .arg(byteSize));
    }
    if (t.at(1).text.isEmpty()) {
        return fail(QStringLiteral("integer name is empty"));
    }
    return reserve(EntryInteger, t.at(1).text, m_line) &&
           writerResult(m_writer.addInteger(t.at(1).text, value, byteSize), m_line);
}

bool Compilation::string(const Tokens& t) {
    if (t.size() != 3 || t.at(2).kind != SourceToken::Quoted || t.at(1).text.isEmpty()) {
        return fail(QStringLiteral("string needs a name and a quoted text: string NAME \"TEXT\""));
    }
    return reserve(EntryString, t.at(1).text, m_line) &&
           writerResult(m_writer.addString(t.at(1).text, t.at(2).text), m_line);
}

bool Compilation::strings(const Tokens& t) {
    if (t.size() < 2 || t.at(1).text.isEmpty()) {
        return fail(QStringLiteral("strings needs a name: strings NAME \"a\" \"b\" ..."));
    }
    m_list = PendingList();
    m_list.line = m_line;
    m_list.name = t.at(1).text;
    m_list.countName = m_list.name + QStringLiteral("_COUNT");
    int i = 2;
    if (i < t.size() && t.at(i).kind == SourceToken::Word &&
        t.at(i).text == QLatin1String("count")) {
        if (i + 1 >= t.size() || t.at(i + 1).text.isEmpty() ||
            (t.at(i + 1).kind == SourceToken::Word && t.at(i + 1).text == QLatin1String("{"))) {
            return fail(QStringLiteral("count needs the name of the count constant"));
        }
        m_list.countName = t.at(i + 1).text;
        i += 2;
    }
    if (i == t.size() - 1 && t.at(i).kind == SourceToken::Word &&
        t.at(i).text == QLatin1String("{")) {
        m_list.open = true;
        return true;
    }
    for (; i < t.size(); ++i) {
        if (t.at(i).kind != SourceToken::Quoted) {
            return fail(
                QStringLiteral("string list items are quoted texts, not \"%1\"").arg(t.at(i).text));
        }
        m_list.items.append(t.at(i).text);
    }
    return emitList();
}

bool Compilation::listLine(const Tokens& t, bool hasDefinition) {
    if (hasDefinition) {
        return fail(QStringLiteral("unexpected = inside a string list"));
    }
    for (int i = 0; i < t.size(); ++i) {
        const SourceToken& tok = t.at(i);
        if (tok.kind == SourceToken::Quoted) {
            m_list.items.append(tok.text);
        } else if (tok.text == QLatin1String("}") && i == t.size() - 1) {
            m_list.open = false;
            return emitList();
        } else {
            return fail(
                QStringLiteral("string list items are quoted texts, not \"%1\"").arg(tok.text));
        }
    }
    return true;
}

// The first item takes the list's name, item k (from 2) the name NAME#k; the count
// constant (4 bytes) follows the last item.
bool Compilation::emitList() {
    const PendingList& list = m_list;
    if (list.items.isEmpty()) {
        return fail(list.line,
                    QStringLiteral("string list %1 has no texts").arg(quoteName(list.name)));
    }
    for (int k = 0; k < list.items.size(); ++k) {
        const QString name =
            k == 0 ? list.name : list.name + QLatin1Char('#') + QString::number(k + 1);
        if (!reserve(EntryString, name, list.line) ||
            !writerResult(m_writer.addString(name, list.items.at(k)), list.line)) {
            return false;
        }
    }
    return reserve(EntryInteger, list.countName, list.line) &&
           writerResult(m_writer.addInteger(list.countName, quint64(list.items.size()), 4),
                        list.line);
}

} // namespace

bool LayoutCompiler::compileDetailed(const QString& source, QByteArray* out, Error* error) {
    Compilation compilation;
    if (!compilation.run(source)) {
        if (error) {
            *error = compilation.error;
        }
        return false;
    }
    if (out) {
        *out = compilation.bytes();
    }
    return true;
}

bool LayoutCompiler::compile(const QString& source, QByteArray* out, QString* error) {
    Error detail;
    if (compileDetailed(source, out, &detail)) {
        return true;
    }
    if (error) {
        *error = QStringLiteral("line %1: %2").arg(detail.line).arg(detail.message);
    }
    return false;
}

} // namespace compiler
} // namespace kxs
