// Tokens and operators of the definition language: recognition of pieces of text,
// display names, constructors and the operator table.
#include "sf/parser/MathOp.h"
#include "sf/parser/Token.h"
#include "support/TableFile.h"

#include <QRegularExpression>
#include <QtTest>

using namespace sf::parser;
using detail::MathOp;

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

} // namespace

class TestToken : public QObject {
    Q_OBJECT
private slots:
    void recognition_data();
    void recognition();
    void recognitionMatchesPatternsExhaustively();
    void numberConstructor_data();
    void numberConstructor();
    void operatorFromText_data();
    void operatorFromText();
    void operatorFromToken_data();
    void operatorFromToken();
    void operatorBeyondTable();
};

void TestToken::recognition_data() {
    QTest::addColumn<QString>("text");
    QTest::addColumn<TokenType>("type");

    QTest::newRow("integer") << "10" << Numeric;
    QTest::newRow("decimal") << "10.25" << Numeric;
    QTest::newRow("leading dot") << ".5" << Numeric;
    QTest::newRow("trailing dot is no number") << "5." << String;
    QTest::newRow("two dots") << "1.2.3" << String;
    QTest::newRow("exponent is no number") << "1e5" << String;
    QTest::newRow("signed is no number") << "-5" << String;
    QTest::newRow("0x prefix") << "0x1F" << Hexadecimal;
    QTest::newRow("h suffix") << "10h" << Hexadecimal;
    QTest::newRow("word each is hexadecimal") << "each" << Hexadecimal;
    QTest::newRow("word face is a string") << "face" << String;
    QTest::newRow("bare 0x") << "0x" << String;
    QTest::newRow("bare h") << "h" << String;
    QTest::newRow("prefix and suffix") << "0x1Fh" << String;
    QTest::newRow("non-hex digit") << "0x1G" << String;
    QTest::newRow("minus") << "-" << Operator;
    QTest::newRow("ampersand") << "&" << LogicalOperator;
    QTest::newRow("less") << "<" << LogicalOperator;
    QTest::newRow("two-char operator is a string") << "<=" << String;
    QTest::newRow("lparen") << "(" << LParen;
    QTest::newRow("comma") << "," << Separator;
    QTest::newRow("backtick") << "`" << Range;
    QTest::newRow("question") << "?" << TernaryOp;
    QTest::newRow("colon") << ":" << TernaryOpSeparator;
    QTest::newRow("blank") << " " << WhiteSpace;
    QTest::newRow("empty text") << "" << WhiteSpace;
    QTest::newRow("no-break space is no blank") << QString(QChar(0xA0)) << String;
    QTest::newRow("word") << "Speed" << String;
    QTest::newRow("quoted text") << "\"a, b\"" << String;
    QTest::newRow("doubled operator") << "--" << String;
}

void TestToken::recognition() {
    QFETCH(QString, text);
    QFETCH(TokenType, type);
    QCOMPARE(Token(text).getType(), type);
    QCOMPARE(recognizeByPatterns(text), type);
    QCOMPARE(Token(text).getPayload(), text);
}

// The hand-written recogniser must agree with the pattern table on every short text made
// of the characters that the patterns treat specially.
void TestToken::recognitionMatchesPatternsExhaustively() {
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

void TestToken::numberConstructor_data() {
    testsupport::loadTable(QStringLiteral("token-numberConstructor.txt"));
}

void TestToken::numberConstructor() {
    QFETCH(double, value);
    QFETCH(QString, payload);
    const Token t(value);
    QCOMPARE(t.getPayload(), payload);
    QCOMPARE(t.getType(), Numeric);
}

void TestToken::operatorFromText_data() {
    QTest::addColumn<QString>("text");
    QTest::addColumn<quint32>("kind");
    QTest::newRow("reversed pair") << "=<" << 0u;
    QTest::newRow("single ampersand") << "&" << 0u;
    QTest::newRow("single equals") << "=" << 0u;
    QTest::newRow("padded") << " +" << 0u;
    QTest::newRow("empty") << "" << 0u;
    QTest::newRow("word") << "and" << 0u;
}

void TestToken::operatorFromText() {
    QFETCH(QString, text);
    QFETCH(quint32, kind);
    QCOMPARE(MathOp(text).getType(), kind);
    QVERIFY(!MathOp::isOpChar(text));
}

void TestToken::operatorFromToken_data() {
    QTest::addColumn<QString>("payload");
    QTest::addColumn<TokenType>("type");
    QTest::addColumn<quint32>("kind");
    QTest::newRow("operator") << "*" << Operator << 3u;
    QTest::newRow("logical operator") << "&&" << LogicalOperator << 7u;
    QTest::newRow("comparison as operator") << ">=" << Operator << 13u;
    QTest::newRow("string with operator text") << "+" << String << 0u;
    QTest::newRow("dependent with operator text") << "==" << Dependent << 0u;
    QTest::newRow("numeric") << "1" << Numeric << 0u;
    QTest::newRow("lone not") << "!" << LogicalOperator << 0u;
}

void TestToken::operatorFromToken() {
    QFETCH(QString, payload);
    QFETCH(TokenType, type);
    QFETCH(quint32, kind);
    QCOMPARE(MathOp(Token(payload, type)).getType(), kind);
}

void TestToken::operatorBeyondTable() {
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

QTEST_GUILESS_MAIN(TestToken)
#include "tst_token.moc"
