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
const double NaN = std::numeric_limits<double>::quiet_NaN();
const double Inf = std::numeric_limits<double>::infinity();

// Exact comparison that also accepts two NaNs.
bool same(double a, double b) {
    return a == b || (std::isnan(a) && std::isnan(b));
}
} // namespace

class TestCalcParser : public QObject {
    Q_OBJECT

private slots:
    void compareDouble_data() {
        QTest::addColumn<double>("a");
        QTest::addColumn<double>("b");
        QTest::addColumn<bool>("equal");
        QTest::newRow("0.1+0.2 vs 0.3") << 0.1 + 0.2 << 0.3 << true;
        QTest::newRow("0 vs 1e-300") << 0.0 << 1e-300 << false;
        QTest::newRow("one ulp above 1") << 1.0 << std::nextafter(1.0, 2.0) << false;
        QTest::newRow("large within tolerance") << 1e20 << 1e20 + 16384.0 << true;
        QTest::newRow("negative pair within") << -1.0 << std::nextafter(-1.0, 0.0) << true;
        QTest::newRow("zero and negative zero") << 0.0 << -0.0 << true;
        QTest::newRow("infinities") << Inf << Inf << true;
        QTest::newRow("NaN never equal") << NaN << NaN << false;
    }

    void compareDouble() {
        QFETCH(double, a);
        QFETCH(double, b);
        QFETCH(bool, equal);
        QCOMPARE(CalcParser::compareDouble(a, b), equal);
        QCOMPARE(CalcParser::compareDouble(b, a), equal);
    }

    void performMathOp_data() {
        QTest::addColumn<quint32>("kind");
        QTest::addColumn<double>("a");
        QTest::addColumn<double>("b");
        QTest::addColumn<double>("forward");
        QTest::addColumn<double>("inverted");

        QTest::newRow("+") << 1u << 7.0 << 2.0 << 9.0 << 5.0;
        QTest::newRow("*") << 3u << 7.0 << 2.0 << 14.0 << 3.5;
        QTest::newRow("/") << 4u << 7.0 << 2.0 << 3.5 << 14.0;
        QTest::newRow("^") << 5u << 9.0 << 2.0 << 81.0 << 3.0;
        QTest::newRow("/ by zero") << 4u << 1.0 << 0.0 << Inf << 0.0;
        QTest::newRow("|| one set") << 6u << 0.0 << 2.0 << 1.0 << 0.0;
        QTest::newRow("|| none set") << 6u << 0.0 << 0.0 << 0.0 << 1.0;
        QTest::newRow("&& both set") << 7u << -1.0 << 0.5 << 1.0 << 0.0;
        QTest::newRow("|| NaN is non-zero") << 6u << NaN << 0.0 << 1.0 << 0.0;
        QTest::newRow("== equal") << 8u << 0.1 + 0.2 << 0.3 << 1.0 << 0.0;
        QTest::newRow("== different") << 8u << 1.0 << 2.0 << 0.0 << 1.0;
        QTest::newRow("!= different") << 9u << 1.0 << 2.0 << 1.0 << 0.0;
        // The ordering operators treat equal operands specially in both directions.
        QTest::newRow("< equal") << 10u << 1.0 << 1.0 << 0.0 << 1.0;
        QTest::newRow("< less") << 10u << 1.0 << 2.0 << 1.0 << 0.0;
        QTest::newRow("<= equal") << 11u << 1.0 << 1.0 << 1.0 << 0.0;
        QTest::newRow("> equal") << 12u << 1.0 << 1.0 << 0.0 << 1.0;
        QTest::newRow("> within tolerance") << 12u << 0.1 + 0.2 << 0.3 << 0.0 << 1.0;
        QTest::newRow(">= equal") << 13u << 1.0 << 1.0 << 1.0 << 0.0;
    }

    void performMathOp() {
        QFETCH(quint32, kind);
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

    void unknownOperatorFails_data() {
        QTest::addColumn<quint32>("kind");
        QTest::newRow("no operator") << 0u;
        QTest::newRow("just beyond the table") << 14u;
    }

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

    void unaryFolding_data() {
        testsupport::loadTable(QStringLiteral("calcparser-unaryFolding.txt"));
    }

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

    void calculate_data() {
        QTest::addColumn<TokenList>("tokens");
        QTest::addColumn<bool>("ok");
        QTest::addColumn<double>("value");
        // Hand-made token lists the tokeniser never produces.
        const Token eq(QStringLiteral("=="), LogicalOperator);
        const Token end(QString(), End);
        QTest::newRow("0 == 1e-300")
            << TokenList{Token(QStringLiteral("0")), eq, Token(QStringLiteral("1e-300"), Numeric)}
            << true << 0.0;
        QTest::newRow("number tokens from values")
            << TokenList{Token(1.5), Token(MathOp(MathOp::Multiply)), Token(-2.0)} << true << -3.0;
        QTest::newRow("comparison as Operator token")
            << TokenList{Token(2.0), Token(MathOp(MathOp::GreaterEqual)), Token(2.0)} << true
            << 1.0;
        QTest::newRow("whitespace tokens ignored")
            << TokenList{Token(QStringLiteral("1")), Token(QStringLiteral(" ")),
                         Token(QStringLiteral("+")), Token(QStringLiteral("2"))}
            << true << 3.0;
        QTest::newRow("empty list") << TokenList{} << false << 0.0;
        QTest::newRow("only End") << TokenList{end} << false << 0.0;
        QTest::newRow("End in the middle")
            << TokenList{Token(QStringLiteral("1")), end, Token(QStringLiteral("+")),
                         Token(QStringLiteral("2"))}
            << false << 0.0;
        QTest::newRow("numeric token with text")
            << TokenList{Token(QStringLiteral("abc"), Numeric)} << false << 0.0;
        QTest::newRow("hexadecimal token without digits")
            << TokenList{Token(QStringLiteral("0x"), Hexadecimal)} << false << 0.0;
        QTest::newRow("undefined token") << TokenList{Token()} << false << 0.0;
        QTest::newRow("operator with unknown text")
            << TokenList{Token(QStringLiteral("1")), Token(QStringLiteral("%"), Operator),
                         Token(QStringLiteral("2"))}
            << false << 0.0;
    }

    void calculate() {
        QFETCH(TokenList, tokens);
        QFETCH(bool, ok);
        QFETCH(double, value);
        CalcParser calc;
        const double result = calc.calculate(tokens);
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

    void scaleChainRoundTrip_data() {
        QTest::addColumn<QString>("chain");
        QTest::newRow("battery voltage") << "*10/256";
        QTest::newRow("offset and gain") << "-40*5/4";
        QTest::newRow("wheel circumference") << "*(3.1416*2)/1000";
        QTest::newRow("negative gain") << "*-0.5+100";
    }

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
    void exactText_data() {
        QTest::addColumn<double>("value");
        QTest::newRow("zero") << 0.0;
        QTest::newRow("negative zero") << -0.0;
        QTest::newRow("negative integer") << -42.0;
        QTest::newRow("largest plain integer") << 999999999999999.0;
        QTest::newRow("first integer in general format") << 1e15;
        QTest::newRow("beyond exact integers") << 9007199254740993.0;
        QTest::newRow("fraction") << 0.1;
        QTest::newRow("tiny") << 1e-300;
        QTest::newRow("huge") << 1e300;
        QTest::newRow("infinity") << std::numeric_limits<double>::infinity();
    }
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
