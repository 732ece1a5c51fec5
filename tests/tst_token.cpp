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

TokenType typeNamed(const QString& name) {
    int t = 0;
    while (t < SIZE && getTokenTypeString(t) != name) {
        ++t;
    }
    return static_cast<TokenType>(t);
}

} // namespace

class TestToken : public QObject {
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
};

QTEST_GUILESS_MAIN(TestToken)
#include "tst_token.moc"
