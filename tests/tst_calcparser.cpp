// The expression calculator: comparisons with tolerance, single operations forwards and
// inverted, unary minus folding, token lists the tokeniser never makes, the success flag,
// and scale chains that round-trip. Expressions and chains from text: cli-language.t.
#include "sf/parser/CalcParser.h"
#include "support/LanguageSupport.h"
#include "support/TableFile.h"

#include <QLocale>
#include <QtTest>

#include <cmath>
#include <limits>

using namespace sf::parser;
using detail::MathOp;
using testsupport::renderTokens;
using testsupport::tokensOf;

namespace {
// Exact comparison that also accepts two NaNs.
bool same(double a, double b) {
    return a == b || (std::isnan(a) && std::isnan(b));
}
} // namespace

class TestCalcParser : public QObject {
    Q_OBJECT

private slots:
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

QTEST_GUILESS_MAIN(TestCalcParser)
#include "tst_calcparser.moc"
