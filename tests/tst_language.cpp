// Tokens and operators of the definition language: recognition of pieces of text, display
// names, constructors and the operator table; the expression calculator: comparisons with
// tolerance, single operations forwards and inverted, unary minus folding, token lists the
// tokeniser never makes, the success flag, and scale chains that round-trip. Expressions and
// chains from text: cli-language.t.
#include "sf/parser/CalcParser.h"
#include "sf/parser/MathOp.h"
#include "sf/parser/Token.h"
#include "support/LanguageSupport.h"
#include "support/TableFile.h"

#include <QLocale>
#include <QRegularExpression>
#include <QtTest>

#include <cmath>
#include <limits>

using namespace sf::parser;
using detail::MathOp;
using testsupport::renderTokens;
using testsupport::tokensOf;

namespace {

// Recognition as the pattern table states it: the first kind whose pattern matches the
// whole text, String when none does.
TokenType recognizeByPatterns(const QString& text) {
    static const QVector<QRegularExpression> patterns = [] {
        QVector<QRegularExpression> v;
        for (int t = 0; t < SIZE; ++t) {
            const QString p = QString::fromLatin1(TOKENS[t]);
            v.append(p.isEmpty() ? QRegularExpression()
                                 : QRegularExpression(QRegularExpression::anchoredPattern(p)));
        }
        return v;
    }();
    for (int t = 0; t < SIZE; ++t) {
        if (TOKENS[t][0] != '\0' && patterns.at(t).match(text).hasMatch()) {
            return static_cast<TokenType>(t);
        }
    }
    return String;
}

TokenType typeNamed(const QString& name) {
    int t = 0;
    while (t < SIZE && getTokenTypeString(t) != name) {
        ++t;
    }
    return static_cast<TokenType>(t);
}

// Exact comparison that also accepts two NaNs.
bool same(double a, double b) {
    return a == b || (std::isnan(a) && std::isnan(b));
}

} // namespace

class TestLanguage : public QObject {
    Q_OBJECT
private slots:
    void recognition_data() { testsupport::loadTable(); }

    void recognition() {
        QFETCH(QString, text);
        QFETCH(QString, type);
        QCOMPARE(getTokenTypeString(Token(text).getType()), type);
        QCOMPARE(getTokenTypeString(recognizeByPatterns(text)), type);
        QCOMPARE(Token(text).getPayload(), text);
    }

    // The hand-written recogniser must agree with the pattern table on every short text made
    // of the characters that the patterns treat specially.
    void recognitionMatchesPatternsExhaustively() {
        const QString alphabet = QStringLiteral("09.afhHxXg-<=,` \t\"") + QChar(0xA0) + QChar(0x0B);
        QStringList texts{QString()};
        QStringList layer{QString()};
        for (int length = 1; length <= 3; ++length) {
            QStringList next;
            for (const QString& prefix : layer) {
                for (const QChar c : alphabet) {
                    next.append(prefix + c);
                }
            }
            texts += next;
            layer = next;
        }
        for (const QString& text : texts) {
            if (recognizeTokenType(text) != recognizeByPatterns(text)) {
                QFAIL(qPrintable(QStringLiteral("\"%1\": %2 instead of %3")
                                     .arg(text, getTokenTypeString(recognizeTokenType(text)),
                                          getTokenTypeString(recognizeByPatterns(text)))));
            }
        }
    }

    void numberConstructor_data() { testsupport::loadTable(); }

    void numberConstructor() {
        QFETCH(double, value);
        QFETCH(QString, payload);
        const Token t(value);
        QCOMPARE(t.getPayload(), payload);
        QCOMPARE(t.getType(), Numeric);
    }

    void operatorFromText_data() { testsupport::loadTable(); }

    void operatorFromText() {
        QFETCH(QString, text);
        QCOMPARE(MathOp(text).getType(), 0u);
        QVERIFY(!MathOp::isOpChar(text));
    }

    void operatorFromToken_data() { testsupport::loadTable(); }

    void operatorFromToken() {
        QFETCH(QString, payload);
        QFETCH(QString, type);
        QFETCH(uint, kind);
        const TokenType kindOfToken = typeNamed(type);
        QCOMPARE(getTokenTypeString(kindOfToken), type);
        QCOMPARE(MathOp(Token(payload, kindOfToken)).getType(), kind);
    }

    void operatorBeyondTable() {
        QCOMPARE(MathOp(QStringLiteral("||")).getPrecedence(),
                 MathOp(QStringLiteral("&&")).getPrecedence());
        QCOMPARE(MathOp(MathOp::GreaterEqual).toString(), QStringLiteral(">="));
        const MathOp op(14u);
        QCOMPARE(op.getType(), 14u);
        QCOMPARE(op.toString(), QStringLiteral("u"));
        QCOMPARE(op.getPrecedence(), 0);
        QCOMPARE(MathOp(0xFFFFFFFFu).getPrecedence(), 0);
        QVERIFY(!MathOp::isOpChar(QStringLiteral("u")));
    }

    void compareDouble_data() { testsupport::loadTable(); }

    void compareDouble() {
        QFETCH(double, a);
        QFETCH(double, b);
        QFETCH(bool, equal);
        QCOMPARE(CalcParser::compareDouble(a, b), equal);
        QCOMPARE(CalcParser::compareDouble(b, a), equal);
    }

    void performMathOp_data() { testsupport::loadTable(); }

    void performMathOp() {
        QFETCH(uint, kind);
        QFETCH(double, a);
        QFETCH(double, b);
        QFETCH(double, forward);
        QFETCH(double, inverted);
        CalcParser calc;
        const double f = calc.performMathOp(a, b, MathOp(kind), false);
        QVERIFY(calc.lastCalcSuccessful());
        QVERIFY2(same(f, forward), qPrintable(QString::number(f)));
        const double i = calc.performMathOp(a, b, MathOp(kind), true);
        QVERIFY(calc.lastCalcSuccessful());
        QVERIFY2(same(i, inverted), qPrintable(QString::number(i)));
    }

    void unknownOperatorFails_data() { testsupport::loadTable(); }

    void unknownOperatorFails() {
        QFETCH(quint32, kind);
        CalcParser calc;
        calc.performMathOp(1.0, 1.0, MathOp(1u), false);
        QVERIFY(calc.lastCalcSuccessful());
        for (const bool inverse : {false, true}) {
            QCOMPARE(calc.performMathOp(3.0, 4.0, MathOp(kind), inverse), 0.0);
            QVERIFY(!calc.lastCalcSuccessful());
        }
    }

    void unaryFolding_data() { testsupport::loadTable(); }

    void unaryFolding() {
        QFETCH(QString, definition);
        QFETCH(bool, ok);
        QFETCH(QString, folded);
        TokenList tokens = tokensOf(definition);
        QVERIFY(!tokens.isEmpty());
        QCOMPARE(CalcParser::prepareUnaryOps(tokens), ok);
        if (ok) {
            QCOMPARE(renderTokens(tokens), folded);
        }
    }

    void leadingMinusInChainIsSubtraction() {
        TokenList tokens = tokensOf(QStringLiteral("- 5"));
        TokenList chain = tokens;
        QVERIFY(CalcParser::prepareUnaryOps(tokens, true));
        QCOMPARE(renderTokens(tokens), QStringLiteral("-5 $"));
        QVERIFY(CalcParser::prepareUnaryOps(chain, false));
        QCOMPARE(renderTokens(chain), QStringLiteral("- 5 $"));
    }

    void calculate_data() { testsupport::loadTable(); }

    void calculate() {
        QFETCH(QStringList, tokens);
        QFETCH(bool, ok);
        QFETCH(double, value);
        TokenList list;
        for (const QString& item : tokens) {
            const QString kind = item.section(QLatin1Char(':'), 0, 0);
            const QString text = item.section(QLatin1Char(':'), 1);
            int type = 0;
            while (type < SIZE && getTokenTypeString(type) != kind)
                ++type;
            list << (item.startsWith(QLatin1Char('#'))    ? Token(item.mid(1).toDouble())
                     : kind == QLatin1String("op")        ? Token(MathOp(text))
                     : item == QLatin1String("Undefined") ? Token()
                     : type < SIZE && item.contains(QLatin1Char(':'))
                         ? Token(text, static_cast<TokenType>(type))
                         : Token(item));
        }
        CalcParser calc;
        const double result = calc.calculate(list);
        QCOMPARE(calc.lastCalcSuccessful(), ok);
        QVERIFY2(same(result, value), qPrintable(QString::number(result, 'g', 17)));
    }

    // Every call sets the success flag anew and consumes its token list, good or bad.
    void successFlagAndListConsumption() {
        CalcParser calc;
        QVERIFY(!calc.lastCalcSuccessful()); // nothing calculated yet
        TokenList bad = tokensOf(QStringLiteral("1 +"));
        TokenList good = tokensOf(QStringLiteral("1 + 1"));
        TokenList badChain = tokensOf(QStringLiteral("*"));
        TokenList goodChain = tokensOf(QStringLiteral("*3"));
        TokenList empty;

        calc.calculate(bad);
        QVERIFY(!calc.lastCalcSuccessful());
        QCOMPARE(calc.calculate(good), 2.0);
        QVERIFY(calc.lastCalcSuccessful());
        calc.calculateRawFromScaled(1.0, badChain);
        QVERIFY(!calc.lastCalcSuccessful());
        QCOMPARE(calc.calculateRawFromScaled(6.0, goodChain), 2.0);
        QVERIFY(calc.lastCalcSuccessful());
        calc.calculate(empty);
        QVERIFY(!calc.lastCalcSuccessful());
        QVERIFY(bad.isEmpty() && good.isEmpty() && badChain.isEmpty() && goodChain.isEmpty());
    }

    void numbersIgnoreTheLocale() {
        const QLocale saved;
        QLocale::setDefault(QLocale(QLocale::German, QLocale::Germany));
        TokenList tokens = tokensOf(QStringLiteral("1.5 * 2"));
        CalcParser calc;
        const double value = calc.calculate(tokens);
        QLocale::setDefault(saved);
        QVERIFY(calc.lastCalcSuccessful());
        QCOMPARE(value, 3.0);
    }

    void scaleChainRoundTrip_data() { testsupport::loadTable(); }

    void scaleChainRoundTrip() {
        QFETCH(QString, chain);
        CalcParser calc;
        for (const double raw : {0.0, 1.0, 255.0, 1000.0, 65535.0}) {
            TokenList forward = tokensOf(chain);
            const double scaled = calc.calculateScaledFromRaw(raw, forward);
            QVERIFY(calc.lastCalcSuccessful());
            TokenList backward = tokensOf(chain);
            const double back = calc.calculateRawFromScaled(scaled, backward);
            QVERIFY(calc.lastCalcSuccessful());
            QVERIFY2(std::fabs(back - raw) < 1e-9,
                     qPrintable(QStringLiteral("%1 -> %2 -> %3").arg(raw).arg(scaled).arg(back)));
        }
    }

    // Values written into token lists read back exactly and look as the general format
    // with 17 digits writes them, integers included.
    void exactText_data() { testsupport::loadTable(); }
    void exactText() {
        QFETCH(double, value);
        const QString text = CalcParser::exactText(value);
        QCOMPARE(text, QString::number(value, 'g', 17));
        double back = 0.0;
        QVERIFY(CalcParser::tokenValue(Token(text, sf::parser::Numeric), &back));
        QVERIFY(back == value);
    }
};

QTEST_GUILESS_MAIN(TestLanguage)
#include "tst_language.moc"
