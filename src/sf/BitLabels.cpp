#include "sf/BitLabels.h"

#include "sf/FieldEvaluator.h"
#include "sf/SettingHost.h"
#include "sf/StringPurifier.h"

namespace sf {

using parser::Token;
using parser::TokenList;
using parser::TokenType;

const QString BitLabelParser::DEFAULT_ON_TEXT = QStringLiteral("On");
const QString BitLabelParser::DEFAULT_OFF_TEXT = QStringLiteral("Off");

namespace {

// The text of a word or quoted text token, purified; false for other kinds of token.
bool textOf(const Token& token, bool allowNumbers, QString* text) {
    const TokenType t = token.getType();
    if (t == parser::String || t == parser::Dependent) {
        Token copy = token;
        if (!StringPurifier::purifyToken(copy)) {
            return false;
        }
        *text = copy.getPayload();
        return true;
    }
    if (allowNumbers && (t == parser::Numeric || t == parser::Hexadecimal)) {
        *text = token.getPayload();
        return true;
    }
    return false;
}

bool isEquals(const Token& token) {
    return token.getType() == parser::LogicalOperator && token.getPayload() == QLatin1String("=");
}

bool parseEntry(const TokenList& tokens, int begin, int end, QList<BitLabel>* out,
                const BitLabelParser::Reporter& report) {
    if (begin >= end) {
        report(QStringLiteral("Empty bit label at token %1 in: ").arg(begin));
        return false;
    }
    BitLabel label;
    if (!textOf(tokens.at(begin), true, &label.text)) {
        report(QStringLiteral("Bit label text expected at token %1 in: ").arg(begin));
        return false;
    }
    for (int i = begin + 1; i < end;) {
        const int optionEnd = (i + 1 < end && isEquals(tokens.at(i + 1))) ? i + 3 : i + 1;
        if (optionEnd > end || !BitLabelParser::parseOption(tokens, i, optionEnd, &label)) {
            report(QStringLiteral("Unknown or malformed bit label option at token %1 in: ").arg(i));
            return false;
        }
        i = optionEnd;
    }
    out->append(label);
    return true;
}

} // namespace

bool BitLabelParser::parse(const TokenList& tokens, int begin, int end, QList<BitLabel>* out,
                           const Reporter& report) {
    if (!out || begin < 0 || end > tokens.size()) {
        return false;
    }
    out->clear();
    if (begin >= end) {
        return true;
    }
    if (tokens.at(begin).getType() != parser::LCurly) {
        return parseEntry(tokens, begin, end, out, report);
    }
    const int close = FieldEvaluator::matchingCurly(tokens, begin, end);
    if (close != end - 1) {
        report(QStringLiteral("Malformed bit labels: '{' at token %1 must close at the end of "
                              "the field in: ")
                   .arg(begin));
        return false;
    }
    if (close == begin + 1) {
        return true; // {}: no labels
    }
    int start = begin + 1;
    for (int i = begin + 1; i <= close; ++i) {
        const TokenType t = tokens.at(i).getType();
        if (t == parser::LCurly || (t == parser::RCurly && i != close)) {
            report(QStringLiteral("Malformed bit labels: nested braces at token %1 in: ").arg(i));
            return false;
        }
        if (t == parser::Separator || i == close) {
            if (!parseEntry(tokens, start, i, out, report)) {
                return false;
            }
            start = i + 1;
        }
    }
    return true;
}

bool BitLabelParser::parseOption(const TokenList& tokens, int begin, int end, BitLabel* label) {
    if (!label || begin < 0 || end > tokens.size()) {
        return false;
    }
    QString key;
    if (end - begin == 1) {
        if (!textOf(tokens.at(begin), false, &key) ||
            key.compare(QLatin1String("inverted"), Qt::CaseInsensitive) != 0) {
            return false;
        }
        label->inverted = true;
        return true;
    }
    QString value;
    if (end - begin != 3 || !textOf(tokens.at(begin), false, &key) ||
        !isEquals(tokens.at(begin + 1)) || !textOf(tokens.at(begin + 2), true, &value)) {
        return false;
    }
    if (key.compare(QLatin1String("wsi"), Qt::CaseInsensitive) == 0) {
        label->wsi = value;
    } else if (key.compare(QLatin1String("on"), Qt::CaseInsensitive) == 0) {
        label->onText = value;
    } else if (key.compare(QLatin1String("off"), Qt::CaseInsensitive) == 0) {
        label->offText = value;
    } else {
        return false;
    }
    return true;
}

QString BitLabel::stateText(bool shownOn) const {
    if (shownOn) {
        return onText.isEmpty() ? BitLabelParser::DEFAULT_ON_TEXT : onText;
    }
    return offText.isEmpty() ? BitLabelParser::DEFAULT_OFF_TEXT : offText;
}

QVariant bitLabelData(const BitLabel& label, bool stored, DataRole role, SettingHost* host) {
    const bool shown = stored != label.inverted;
    switch (role) {
    case RoleDisplay:
        return label.stateText(shown);
    case RoleEdit:
        return shown;
    case RoleFullText:
        return shown ? QStringLiteral("1") : QStringLiteral("0");
    case RoleName:
    case RoleNote:
        return label.text;
    case RoleRaw:
        return stored ? 1 : 0;
    case RoleMinimum:
        return 0;
    case RoleMaximum:
        return 1;
    case RoleToolTip:
        if (label.wsi.isEmpty() || !host) {
            return QVariant();
        }
        return host->getTooltip(label.wsi);
    default:
        return QVariant();
    }
}

} // namespace sf
