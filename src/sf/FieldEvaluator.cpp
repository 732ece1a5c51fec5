#include "sf/FieldEvaluator.h"

#include <cmath>

namespace sf {

using parser::Token;
using parser::TokenList;
using parser::TokenType;

namespace {

const QString EMPTY_CASE = QStringLiteral("Empty case ( ie. {} ): ");
const QString CASE_HIT_END = QStringLiteral("Malformed case. Hit END token before closing '}': ");
const QString NO_SEPARATOR = QStringLiteral("Malformed ternary. Ternary separator not found: ");
const QString BRACES_IN_TERNARY =
    QStringLiteral("Malformed ternary. Block braces '{', '}' not supported inside ternaries: ");
const QString MISSING_SEPARATOR =
    QStringLiteral("Malformed ternary. Missing ternary separator ':' in: ");
const QString IGNORED_TERNARY =
    QStringLiteral("Ternary operator being ignored at non-zero depth in: ");

TokenList slice(const TokenList& tokens, int begin, int end) {
    TokenList out;
    for (int i = begin; i < end; ++i) {
        out.append(tokens.at(i));
    }
    return out;
}

} // namespace

bool FieldEvaluator::locate(const TokenList& tokens, int position, int* begin, int* end) {
    if (position < 0 || !begin || !end) {
        return false;
    }
    Ranges all;
    locateAll(tokens, &all);
    if (position >= all.size()) {
        return false;
    }
    *begin = all.at(position).begin;
    *end = all.at(position).end;
    return true;
}
void FieldEvaluator::locateAll(const TokenList& tokens, Ranges* out) {
    out->clear();
    const int n = tokens.size();
    int start = 0;
    // Fields start at depth 0 (they follow a separator outside braces), so the depth of
    // each field's own scan is the depth of the whole walk.
    int depth = 0;
    while (start < n) {
        int j = start;
        for (; j < n; ++j) {
            const TokenType t = tokens.at(j).getType();
            if (t == parser::End || (t == parser::Separator && depth == 0)) {
                break;
            }
            if (t == parser::LCurly) {
                ++depth;
            } else if (t == parser::RCurly && --depth < 0) {
                return; // this field and every later one fail
            }
        }
        out->append({start, j});
        if (j >= n || tokens.at(j).getType() == parser::End) {
            return;
        }
        start = j + 1;
    }
}

FieldEvaluator::FieldEvaluator(const TokenList& tokens, Condition condition, Reporter report)
    : m_tokens(tokens), m_condition(std::move(condition)), m_report(std::move(report)) {}

void FieldEvaluator::report(const QString& message) const {
    if (m_report) {
        m_report(message);
    }
}

int FieldEvaluator::matchingSeparator(const TokenList& tokens, int question, int end,
                                      bool* anySeparator) {
    int nesting = 0;
    if (anySeparator) {
        *anySeparator = false;
    }
    for (int i = question + 1; i < end; ++i) {
        const TokenType t = tokens.at(i).getType();
        if (t == parser::TernaryOp) {
            ++nesting;
        } else if (t == parser::TernaryOpSeparator) {
            if (anySeparator) {
                *anySeparator = true;
            }
            if (nesting == 0) {
                return i;
            }
            --nesting;
        }
    }
    return -1;
}

int FieldEvaluator::matchingCurly(const TokenList& tokens, int open, int end) {
    int depth = 0;
    for (int i = open; i < end; ++i) {
        const TokenType t = tokens.at(i).getType();
        if (t == parser::LCurly) {
            ++depth;
        } else if (t == parser::RCurly && --depth == 0) {
            return i;
        }
    }
    return -1;
}

bool FieldEvaluator::evaluate(int begin, int end, TokenList* out) const {
    if (!out) {
        return false;
    }
    out->clear();
    if (begin < 0 || end > m_tokens.size() || begin > end) {
        return false;
    }
    // A ternary chooses a branch, which may hold a further ternary: walk down the chosen
    // branches until none is left.
    bool warned = false;
    for (;;) {
        int question = -1;
        bool braces = false;
        bool deepTernary = false;
        int depth = 0;
        for (int i = begin; i < end; ++i) {
            switch (m_tokens.at(i).getType()) {
            case parser::LCurly:
                ++depth;
                braces = true;
                break;
            case parser::RCurly:
                --depth;
                braces = true;
                break;
            case parser::TernaryOp:
                if (depth != 0) {
                    deepTernary = true;
                } else if (question < 0) {
                    question = i;
                }
                break;
            default:
                break;
            }
        }
        if (deepTernary && !warned) {
            report(IGNORED_TERNARY);
            warned = true;
        }
        if (question < 0) {
            break;
        }
        if (braces) {
            report(BRACES_IN_TERNARY);
            return false;
        }
        bool anySeparator = false;
        const int colon = matchingSeparator(m_tokens, question, end, &anySeparator);
        if (colon < 0) {
            report(anySeparator ? MISSING_SEPARATOR : NO_SEPARATOR);
            return false;
        }
        double value = 0.0;
        if (!m_condition || !m_condition(slice(m_tokens, begin, question), &value)) {
            return false;
        }
        if (value != 0.0) { // NaN counts as true, as in the calculator's logic
            begin = question + 1;
            end = colon;
        } else {
            begin = colon + 1;
        }
    }

    out->reserve(end - begin);
    for (int i = begin; i < end;) {
        if (m_tokens.at(i).getType() != parser::LCurly) {
            out->append(m_tokens.at(i));
            ++i;
            continue;
        }
        const int close = matchingCurly(m_tokens, i, end);
        if (close < 0) {
            report(CASE_HIT_END);
            return false;
        }
        if (!evaluateCase(i, close, out)) {
            return false;
        }
        i = close + 1;
    }
    return true;
}

bool FieldEvaluator::evaluateCase(int open, int close, TokenList* out) const {
    // Entries between the braces, split at separators directly inside this block.
    QList<QPair<int, int>> entries;
    int depth = 0;
    int start = open + 1;
    for (int i = open + 1; i < close; ++i) {
        const TokenType t = m_tokens.at(i).getType();
        if (t == parser::LCurly) {
            ++depth;
        } else if (t == parser::RCurly) {
            --depth;
        } else if (t == parser::Separator && depth == 0) {
            entries.append(qMakePair(start, i));
            start = i + 1;
        }
    }
    if (close > open + 1) {
        entries.append(qMakePair(start, close));
    }
    if (entries.size() < 2) {
        report(EMPTY_CASE);
        return false;
    }
    double selector = 0.0;
    if (!m_condition ||
        !m_condition(slice(m_tokens, entries.first().first, entries.first().second), &selector)) {
        return false;
    }
    const int choices = entries.size() - 1;
    int chosen = choices - 1;
    if (std::isfinite(selector) && selector >= 0.0 && selector < choices) {
        chosen = static_cast<int>(selector);
    }
    const QPair<int, int>& entry = entries.at(chosen + 1);
    for (int i = entry.first; i < entry.second; ++i) {
        out->append(m_tokens.at(i));
    }
    return true;
}

} // namespace sf
