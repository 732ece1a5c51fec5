#include "sf/parser/Interpreter.h"

#include "kxs/KxsFormat.h"
#include "kxs/parser/KxsParser.h"
#include "sf/Category.h"
#include "sf/RawSetting.h"

namespace sf::parser {

namespace {

// Whether the pair of one-character operators forms a two-character operator:
// <= == >= != && ||.
bool joins(const QString& first, const QString& second) {
    if (first.size() != 1 || second.size() != 1) {
        return false;
    }
    const QChar a = first.at(0);
    const QChar b = second.at(0);
    if (b == QLatin1Char('=')) {
        return a == QLatin1Char('<') || a == QLatin1Char('=') || a == QLatin1Char('>') ||
               a == QLatin1Char('!');
    }
    return (a == QLatin1Char('&') && b == QLatin1Char('&')) ||
           (a == QLatin1Char('|') && b == QLatin1Char('|'));
}

bool isQuoted(const QString& text) {
    return text.startsWith(QLatin1Char('"')) && text.endsWith(QLatin1Char('"'));
}

// Whether the double quote at position i counts towards opening or closing a quoted
// text: always at position 0, elsewhere only when not escaped by a backslash.
bool quoteCounts(const QString& text, int i) {
    return text.at(i) == QLatin1Char('"') && (i == 0 || text.at(i - 1) != QLatin1Char('\\'));
}

// One character of TOKEN_REGEX: [ ] , ( ) { } ? : & | = < > ! ` - + * / ^ and the blanks
// that \s matches (tab, line feed, vertical tab, form feed, carriage return, space).
bool isTokenDelimiter(QChar c) {
    switch (c.unicode()) {
    case '[':
    case ']':
    case ',':
    case '(':
    case ')':
    case '{':
    case '}':
    case '?':
    case ':':
    case '&':
    case '|':
    case '=':
    case '<':
    case '>':
    case '!':
    case '`':
    case '-':
    case '+':
    case '*':
    case '/':
    case '^':
    case ' ':
    case '\t':
    case '\n':
    case '\v':
    case '\f':
    case '\r':
        return true;
    default:
        return false;
    }
}

} // namespace

Interpreter::Interpreter() : m_parser(std::make_unique<kxs::parser::KxsParser>()) {}

Interpreter::~Interpreter() = default;

void Interpreter::resetCursors() {
    m_categoryCursor = m_parser->getOffset();
    m_settingCursor = m_parser->getOffset();
}

bool Interpreter::loadKxs(const QString& path) {
    if (!m_parser->openKxsFile(path)) {
        return false;
    }
    resetCursors();
    return true;
}

bool Interpreter::loadKxsData(const QByteArray& bytes) {
    if (!m_parser->openKxsData(bytes)) {
        return false;
    }
    resetCursors();
    return true;
}

bool Interpreter::isOpen() const {
    return m_parser->isOpen();
}

void Interpreter::close() {
    m_parser->close();
}

void Interpreter::reset() {
    m_parser->reset();
    resetCursors();
}

bool Interpreter::hasNextCategory() {
    m_parser->setOffset(m_categoryCursor);
    return m_parser->hasNext(kxs::EntryCategory);
}

bool Interpreter::hasNextSetting() {
    m_parser->setOffset(m_settingCursor);
    return m_parser->hasNext(kxs::EntrySetting);
}

sf::Category* Interpreter::getNextCategory() {
    m_parser->setOffset(m_categoryCursor);
    const kxs::NamesTableEntryV1* entry = nullptr;
    const char* data = nullptr;
    if (!m_parser->getNext(&entry, &data, kxs::EntryCategory)) {
        return nullptr;
    }
    kxs::CategoryData texts;
    if (!kxs::readCategoryData(entry, data, &texts)) {
        return nullptr;
    }
    m_categoryCursor = m_parser->getOffset();
    return new sf::Category(texts.title, kxs::entryName(entry), texts.preset, true);
}

sf::RawSetting* Interpreter::getNextSetting(TokenList* tokens) {
    if (!tokens) {
        return nullptr;
    }
    m_parser->setOffset(m_settingCursor);
    const kxs::NamesTableEntryV1* entry = nullptr;
    const char* data = nullptr;
    if (!m_parser->getNext(&entry, &data, kxs::EntrySetting)) {
        return nullptr;
    }
    kxs::SettingData setting;
    if (!kxs::readSettingData(entry, data, &setting)) {
        return nullptr;
    }
    if (!tokenize(tokens, setting.definition, TOKEN_REGEX)) {
        return nullptr;
    }

    // A trailing marker (and the separator before it) says the setting is disabled or
    // hidden. The payload must match exactly: "dis" is an ordinary reference.
    bool enabled = true;
    bool hidden = false;
    const int marker = tokens->size() - 2;
    if (marker >= 0) {
        const bool disabled = tokens->at(marker) == CUE_DISABLED;
        const bool hid = !disabled && tokens->at(marker) == CUE_HIDDEN;
        if (disabled || hid) {
            tokens->removeAt(marker);
            if (marker - 1 >= 0) {
                tokens->removeAt(marker - 1);
            }
            enabled = !disabled;
            hidden = hid;
        }
    }

    m_settingCursor = m_parser->getOffset();
    return new sf::RawSetting(kxs::entryName(entry), setting.sizeBytes,
                              static_cast<qint32>(setting.address), enabled, hidden);
}

quint32 Interpreter::getInteger(const QString& name) {
    if (name.isEmpty()) {
        return 0;
    }
    const kxs::NamesTableEntryV1* entry = nullptr;
    const char* data = nullptr;
    if (!m_parser->getEntry(&entry, &data, name, kxs::EntryInteger)) {
        return 0;
    }
    quint64 value = 0;
    if (!kxs::readIntegerData(entry, data, &value)) {
        return 0;
    }
    return static_cast<quint32>(value); // of an 8-byte constant, the low 32 bits
}

QStringList Interpreter::getStringList(const QString& name, const QString& countName) {
    const quint32 count = getInteger(countName);
    if (count < 1) {
        return {};
    }
    const kxs::NamesTableEntryV1* entry = nullptr;
    const char* data = nullptr;
    if (!m_parser->getEntry(&entry, &data, name, kxs::EntryString)) {
        return {};
    }
    QStringList list;
    list.append(kxs::readStringData(entry, data));
    while (static_cast<quint32>(list.size()) < count) {
        // Each getNext moves past one entry, so this ends with the names table.
        if (!m_parser->hasNext(kxs::EntryString) ||
            !m_parser->getNext(&entry, &data, kxs::EntryString)) {
            return {}; // never a partial list
        }
        list.append(kxs::readStringData(entry, data));
    }
    return list;
}

QString Interpreter::getKxsVersion() const {
    return m_parser->getKxsVersion();
}

quint32 Interpreter::getKxsFormat() const {
    return m_parser->getKxsFormat();
}

// ---------------------------------------------------------------------------------------
// Splitting, tokenising, preprocessing

bool Interpreter::splitInput(const QString& text, QStringList* out,
                             const QRegularExpression& delimiters, bool keepDelimiters) {
    if (!out || text.isEmpty() || !delimiters.isValid()) {
        return false;
    }
    out->clear();

    // The next delimiter at or after `from`: its position and length (at least one
    // character, so that every step moves on). False when there is none.
    const bool tokenDelimiters = delimiters.pattern() == TOKEN_REGEX.pattern() &&
                                 delimiters.patternOptions() == TOKEN_REGEX.patternOptions();
    auto nextDelimiter = [&](int from, int* pos, int* len) {
        if (from >= text.size()) {
            return false;
        }
        if (tokenDelimiters) {
            // The same character class without running the regular expression.
            for (int i = from; i < text.size(); ++i) {
                if (isTokenDelimiter(text.at(i))) {
                    *pos = i;
                    *len = 1;
                    return true;
                }
            }
            return false;
        }
        const QRegularExpressionMatch m = delimiters.match(text, from);
        if (!m.hasMatch() || m.capturedStart() >= text.size()) {
            return false;
        }
        *pos = m.capturedStart();
        *len = qMax(1, m.capturedLength());
        return true;
    };

    int p = 0;
    int len = 1;
    if (!nextDelimiter(0, &p, &len)) {
        out->append(text);
        return true;
    }
    int start = 0;
    for (;;) {
        // Skip delimiters inside a quoted text: an odd number of counting quotes lies
        // between the start of the piece and the delimiter.
        int quotes = 0;
        int counted = start;
        bool found = true;
        for (;;) {
            for (; counted < p; ++counted) {
                quotes += quoteCounts(text, counted) ? 1 : 0;
            }
            if (quotes % 2 == 0) {
                break;
            }
            if (!nextDelimiter(p + len, &p, &len)) {
                found = false;
                break;
            }
        }
        if (!found) {
            break;
        }
        if (p > start) {
            out->append(text.mid(start, p - start).trimmed());
        }
        if (keepDelimiters) {
            out->append(text.mid(p, len));
        }
        start = p + len;
        if (!nextDelimiter(start, &p, &len)) {
            break;
        }
    }
    out->append(text.mid(start).trimmed());
    return true;
}

bool Interpreter::tokenize(TokenList* out, const QString& text,
                           const QRegularExpression& delimiters) {
    if (!out) {
        return false;
    }
    QStringList pieces;
    if (!splitInput(text, &pieces, delimiters, true)) {
        return false;
    }
    out->clear();
    out->reserve(pieces.size() + 1);
    for (const QString& piece : pieces) {
        if (!piece.isEmpty()) {
            out->append(Token(piece));
        }
    }
    if (!preprocessTokenList(out)) {
        return false;
    }
    out->append(Token(QString(), End));
    return true;
}

bool Interpreter::preprocessTokenList(TokenList* tokens) {
    if (!tokens) {
        return false;
    }
    // Blanks first, so that the two halves of "< =" meet.
    for (int i = tokens->size() - 1; i >= 0; --i) {
        if (tokens->at(i).getType() == WhiteSpace) {
            tokens->removeAt(i);
        }
    }
    // The first token, the kind word, is never changed.
    for (int i = 1; i < tokens->size(); ++i) {
        Token& t = (*tokens)[i];
        if (t.getType() == LogicalOperator && i + 1 < tokens->size() &&
            tokens->at(i + 1).getType() == LogicalOperator &&
            joins(t.getPayload(), tokens->at(i + 1).getPayload())) {
            t.setPayload(t.getPayload() + tokens->at(i + 1).getPayload());
            tokens->removeAt(i + 1);
            continue;
        }
        if (t.getType() != String || isQuoted(t.getPayload())) {
            continue;
        }
        // An unquoted word names another setting. Name [ number ] is one reference
        // (only once: in Name[1][2] the second index stays apart, and tidying the list
        // again changes nothing).
        t.setType(Dependent);
        if (i + 3 < tokens->size() && tokens->at(i + 1).getType() == LBracket &&
            (tokens->at(i + 2).getType() == Numeric ||
             tokens->at(i + 2).getType() == Hexadecimal) &&
            tokens->at(i + 3).getType() == RBracket) {
            t.setPayload(t.getPayload() + tokens->at(i + 1).getPayload() +
                         tokens->at(i + 2).getPayload() + tokens->at(i + 3).getPayload());
            tokens->erase(tokens->begin() + i + 1, tokens->begin() + i + 4);
        }
    }
    return true;
}

} // namespace sf::parser
