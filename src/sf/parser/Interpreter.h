#pragma once

#include "sf/parser/Token.h"

#include <QByteArray>
#include <QRegularExpression>
#include <QString>
#include <QStringList>

#include <memory>

namespace kxs::parser {
class KxsParser;
}

namespace sf {
class Category;
class RawSetting;
} // namespace sf

namespace sf::parser {

// Walks a layout file's category and setting entries, turns each setting definition into
// a token list, and reads the layout's integer constants and string lists. Categories and
// settings are walked by two independent cursors over the same names table.
//
// Failures are reported by results (false, null, 0, empty lists); nothing is shown.
class Interpreter {
public:
    Interpreter();
    ~Interpreter();
    Interpreter(const Interpreter&) = delete;
    Interpreter& operator=(const Interpreter&) = delete;

    // Opens layout bytes (the setting manager reads the file); on success both cursors are
    // at the start of the names table.
    bool loadKxsData(const QByteArray& bytes);
    bool isOpen() const;
    void close();
    // Both cursors back to the start of the names table.
    void reset();

    bool hasNextCategory();
    bool hasNextSetting();
    // The next category heading (title, label, preset name; enabled), owned by the
    // caller; null when there is none.
    sf::Category* getNextCategory();
    // The next setting entry: its definition tokenised into *tokens (ending with End,
    // trailing DIS/HID marker removed) and a new RawSetting (code name, size, address,
    // enabled, hidden; no bytes yet) owned by the caller. Null when there is no further
    // setting, tokens is null, or the definition cannot be tokenised (the cursor then
    // stays where it was).
    sf::RawSetting* getNextSetting(TokenList* tokens);

    // The integer constant of that name, little-endian from its 1, 2 or 4 bytes (of 8
    // bytes the low 4); 0 for an empty name, a missing entry or any other size.
    quint32 getInteger(const QString& name);
    // getInteger(countName) strings: the string entry found by name and the string
    // entries that follow it. Empty when the count is below 1 or any string is missing.
    QStringList getStringList(const QString& name, const QString& countName);

    QString getKxsVersion() const;
    quint32 getKxsFormat() const;

    // Splits text with splitInput (delimiters kept), makes one token per non-empty piece,
    // preprocesses the list and appends an End token. *out is emptied first.
    static bool tokenize(TokenList* out, const QString& text, const QRegularExpression& delimiters);
    // Cuts text at each match of delimiters that lies outside double quotes; pieces are
    // trimmed; with keepDelimiters each delimiter character is a piece of its own.
    static bool splitInput(const QString& text, QStringList* out,
                           const QRegularExpression& delimiters, bool keepDelimiters);
    // Removes WhiteSpace tokens, joins two-character comparison and logical operators,
    // turns unquoted String tokens (all but the first) into Dependent references and
    // folds Name [ number ] into one Dependent "Name[number]".
    static bool preprocessTokenList(TokenList* tokens);

private:
    void resetCursors();

    std::unique_ptr<kxs::parser::KxsParser> m_parser;
    quint32 m_categoryCursor = 0;
    quint32 m_settingCursor = 0;
};

} // namespace sf::parser
