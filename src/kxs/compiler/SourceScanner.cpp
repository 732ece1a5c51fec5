#include "kxs/compiler/SourceScanner.h"

#include "util/HexDigit.h"

namespace kxs {
namespace compiler {

namespace {

bool isBlank(QChar c) {
    return c == QLatin1Char(' ') || c == QLatin1Char('\t') || c == QLatin1Char('\r');
}

bool endsWord(QChar c) {
    return isBlank(c) || c == QLatin1Char('"') || c == QLatin1Char('#') || c == QLatin1Char('=') ||
           c == QLatin1Char('{') || c == QLatin1Char('}');
}

} // namespace

bool SourceScanner::scan(const QString& line) {
    m_tokens.clear();
    m_hasDefinition = false;
    m_definition.clear();
    m_error.clear();
    int pos = 0;
    const int n = line.size();
    while (pos < n) {
        const QChar c = line.at(pos);
        if (isBlank(c)) {
            ++pos;
        } else if (c == QLatin1Char('#')) {
            return true;
        } else if (c == QLatin1Char('=')) {
            m_hasDefinition = true;
            m_definition = line.mid(pos + 1).trimmed();
            return true;
        } else if (c == QLatin1Char('"')) {
            if (!scanQuoted(line, &pos)) {
                return false;
            }
        } else if (c == QLatin1Char('{') || c == QLatin1Char('}')) {
            m_tokens.append(SourceToken{SourceToken::Word, QString(c)});
            ++pos;
        } else {
            const int start = pos;
            while (pos < n && !endsWord(line.at(pos))) {
                ++pos;
            }
            m_tokens.append(SourceToken{SourceToken::Word, line.mid(start, pos - start)});
        }
    }
    return true;
}

bool SourceScanner::scanQuoted(const QString& line, int* pos) {
    const int n = line.size();
    int i = *pos + 1;
    QString text;
    while (i < n) {
        const QChar c = line.at(i);
        if (c == QLatin1Char('"')) {
            m_tokens.append(SourceToken{SourceToken::Quoted, text});
            *pos = i + 1;
            return true;
        }
        if (c != QLatin1Char('\\')) {
            text.append(c);
            ++i;
            continue;
        }
        if (i + 1 >= n) {
            break;
        }
        const QChar e = line.at(i + 1);
        if (e == QLatin1Char('"') || e == QLatin1Char('\\')) {
            text.append(e);
            i += 2;
        } else if (e == QLatin1Char('n')) {
            text.append(QLatin1Char('\n'));
            i += 2;
        } else if (e == QLatin1Char('t')) {
            text.append(QLatin1Char('\t'));
            i += 2;
        } else if (e == QLatin1Char('x')) {
            const int hi = i + 2 < n ? util::hexDigitValue(line.at(i + 2).unicode()) : -1;
            const int lo = i + 3 < n ? util::hexDigitValue(line.at(i + 3).unicode()) : -1;
            if (hi < 0 || lo < 0) {
                m_error = QStringLiteral("\\x needs two hexadecimal digits");
                return false;
            }
            text.append(QChar(hi * 16 + lo));
            i += 4;
        } else {
            m_error = QStringLiteral("unknown escape \\%1 in quoted text").arg(e);
            return false;
        }
    }
    m_error = QStringLiteral("quoted text is not closed");
    return false;
}

} // namespace compiler
} // namespace kxs
