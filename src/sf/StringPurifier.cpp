#include "sf/StringPurifier.h"

#include "sf/FieldEvaluator.h"

#include <algorithm>

namespace sf {

using parser::Token;
using parser::TokenList;
using parser::TokenType;

namespace {

QString num(int n) {
    return QString::number(n);
}

} // namespace

bool StringPurifier::purifyToken(Token& token) {
    if (token.getType() != parser::String && token.getType() != parser::Dependent) {
        return false;
    }
    const QChar quote(QLatin1Char('"'));
    const QChar tilde(QLatin1Char('~'));
    const QChar backslash(QLatin1Char('\\'));
    const QString text = token.getPayload().trimmed();
    // The common cases, a text with nothing to resolve, with or without its quotes: the
    // text inside the quotes, in one copy (or none).
    const auto plain = [&](QStringView view) {
        return !view.contains(quote) && !view.contains(tilde) && !view.contains(backslash);
    };
    const qsizetype n = text.size();
    if (n >= 2 && text.at(0) == quote && text.at(n - 1) == quote &&
        plain(QStringView(text).mid(1, n - 2))) {
        token.setPayload(text.mid(1, n - 2));
        return true;
    }
    if (plain(text)) {
        token.setPayload(text);
        return true;
    }
    QString out;
    out.reserve(text.size());
    QChar previous;
    int delimiters = 0;
    for (const QChar c : text) {
        if (c == quote) {
            if (previous == backslash) {
                out.chop(1);
                out += quote;
            } else {
                ++delimiters;
            }
            previous = quote;
        } else if (c == tilde) {
            if (previous == backslash) {
                out.chop(1);
                out += tilde;
                previous = tilde;
            } else if (previous != quote) {
                out += tilde;
                previous = tilde;
            }
        } else if (c == backslash && previous == backslash) {
            previous = QChar();
        } else {
            out += c;
            previous = c;
        }
    }
    if (delimiters % 2 != 0) {
        return false;
    }
    token.setPayload(out);
    return true;
}

StringPurifier::StringPurifier(TokenList& tokens, Reporter report)
    : m_tokens(tokens), m_report(std::move(report)) {}

QString StringPurifier::line() const {
    QString text;
    for (int i = 0; i < m_tokens.size(); ++i) {
        const auto original =
            std::find_if(m_originals.cbegin(), m_originals.cend(),
                         [i](const QPair<int, QString>& entry) { return entry.first == i; });
        text += (original != m_originals.cend() ? original->second : m_tokens.at(i).getPayload());
        text += QLatin1Char(' ');
    }
    return text;
}

int StringPurifier::firstBrace(int begin, int end) const {
    for (int i = begin; i < end; ++i) {
        const TokenType t = m_tokens.at(i).getType();
        if (t == parser::LCurly || t == parser::RCurly) {
            return i;
        }
    }
    return -1;
}

bool StringPurifier::purifyRange(int begin, int end) {
    if (begin >= end) {
        return true;
    }
    int question = -1;
    int depth = 0;
    for (int i = begin; i < end && question < 0; ++i) {
        const TokenType t = m_tokens.at(i).getType();
        if (t == parser::LCurly) {
            ++depth;
        } else if (t == parser::RCurly) {
            --depth;
        } else if (t == parser::TernaryOp && depth == 0) {
            question = i;
        }
    }
    if (question >= 0) {
        const int brace = firstBrace(begin, end);
        if (brace >= 0) {
            m_report(QStringLiteral("Malformed String. Block braces '{', '}' not supported inside "
                                    "strings fields, at token %1 in: %2")
                         .arg(num(brace), line()));
            return false;
        }
        const int colon = FieldEvaluator::matchingSeparator(m_tokens, question, end, nullptr);
        if (colon < 0) {
            m_report(QStringLiteral("Malformed Ternary at token %1 is missing a ':', between "
                                    "tokens %2, %3 in: %4")
                         .arg(num(question), num(question + 1), num(end), line()));
            return false;
        }
        return purifyRange(question + 1, colon) && purifyRange(colon + 1, end);
    }
    if (m_tokens.at(begin).getType() == parser::LCurly) {
        return purifyCase(begin, end);
    }
    return purifyTerminal(begin, end);
}

bool StringPurifier::purifyCase(int open, int end) {
    const int close = FieldEvaluator::matchingCurly(m_tokens, open, end);
    if (close < 0) {
        m_report(QStringLiteral("Missing '}' in case at token %1").arg(open));
        return false;
    }
    // Entries directly inside the block; the first is the selector.
    QList<QPair<int, int>> entries;
    int start = open + 1;
    for (int i = open + 1; i < close; ++i) {
        const TokenType t = m_tokens.at(i).getType();
        if (t == parser::LCurly || t == parser::RCurly) {
            m_report(QStringLiteral("Malformed String. Block braces '{', '}' not supported "
                                    "inside strings fields, at token %1 in: %2")
                         .arg(num(i), line()));
            return false;
        }
        if (t == parser::Separator) {
            entries.append(qMakePair(start, i));
            start = i + 1;
        }
    }
    if (close > open + 1) {
        entries.append(qMakePair(start, close));
    }
    if (entries.size() < 2) {
        m_report(QStringLiteral("Empty case (ie. {}) at token %1").arg(open));
        return false;
    }
    for (int e = 1; e < entries.size(); ++e) {
        if (!purifyTerminal(entries.at(e).first, entries.at(e).second)) {
            return false;
        }
    }
    if (close + 1 < end) {
        m_report(QStringLiteral("Internal error - early termination at token %1, expected to "
                                "continue to %2, in line: %2")
                     .arg(num(close + 1), num(end)));
        return false;
    }
    return true;
}

bool StringPurifier::purifyTerminal(int begin, int end) {
    if (begin >= end) {
        return true; // an empty text
    }
    Token& token = m_tokens[begin];
    const TokenType type = token.getType();
    if (type == parser::LCurly || type == parser::RCurly) {
        m_report(QStringLiteral("Malformed String. Block braces '{', '}' not supported inside "
                                "strings fields, at token %1 in: %2")
                     .arg(num(begin), line()));
        return false;
    }
    if (type == parser::Dependent) {
        m_report(QStringLiteral("Unquoted string field at token %1 in line: %2\nOverriding and "
                                "treating as a String.")
                     .arg(num(begin), line()));
        token.setType(parser::String);
    } else if (type != parser::String) {
        m_report(QStringLiteral("String token expected, instead found type %1, at token %2, "
                                "line: %3")
                     .arg(parser::getTokenTypeString(type), num(begin), line()));
        return false;
    }
    const QString original = token.getPayload();
    if (!purifyToken(token)) {
        m_report(QStringLiteral("Failed to 'purify' String at token %1, line: %2")
                     .arg(num(begin), line()));
        return false;
    }
    m_originals.append(qMakePair(begin, original));
    if (begin + 1 < end) {
        m_report(QStringLiteral("Internal error - early termination at token %1, expected to "
                                "continue to %2, in line: %2")
                     .arg(num(begin + 1), num(end)));
        return false;
    }
    return true;
}

} // namespace sf
