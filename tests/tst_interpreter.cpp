// The definition interpreter: splitting and tokenising definition texts, preprocessing
// token lists, and walking a layout's categories, settings, constants and string lists.
#include "sf/Category.h"
#include "sf/RawSetting.h"
#include "sf/parser/Interpreter.h"
#include "support/LanguageSupport.h"
#include "support/TableFile.h"

#include "kxs/compiler/KxsWriter.h"

#include <QtTest>

#include <memory>

using namespace sf::parser;
using kxs::compiler::KxsWriter;
using testsupport::renderTokens;
using testsupport::tokensOf;

namespace {

std::unique_ptr<Interpreter> open(const KxsWriter& writer) {
    auto interpreter = std::make_unique<Interpreter>();
    if (!interpreter->loadKxsData(writer.toBytes())) {
        return nullptr;
    }
    return interpreter;
}

} // namespace

class TestInterpreter : public QObject {
    Q_OBJECT

private slots:
    // Splitting

    void split_data() { testsupport::loadTable(); }

    void split() {
        QFETCH(QString, text);
        QFETCH(QString, pattern);
        QFETCH(bool, keep);
        QFETCH(QString, pieces);
        pattern.replace(QStringLiteral("{tokens}"), TOKEN_REGEX.pattern());
        QStringList out{QStringLiteral("stale")};
        QVERIFY(Interpreter::splitInput(text, &out, QRegularExpression(pattern), keep));
        QCOMPARE(out.join(QChar(0xB7)), pieces);
        QCOMPARE(out.size(), pieces.count(QChar(0xB7)) + 1);
        // The delimiter pattern of definitions is recognised without running it; an equal
        // pattern written differently runs it, with the same result.
        const QRegularExpression wrapped(QStringLiteral("(?:%1)").arg(pattern));
        QVERIFY(Interpreter::splitInput(text, &out, wrapped, keep));
        QCOMPARE(out.join(QChar(0xB7)), pieces);
    }

    // Every character splits the same way with and without the shortcut for the token
    // delimiters.
    void tokenDelimiterShortcut() {
        const QRegularExpression wrapped(QStringLiteral("(?:%1)").arg(TOKEN_REGEX.pattern()));
        for (ushort u = 1; u < 0x180; ++u) {
            const QString text = QStringLiteral("a") + QChar(u) + QStringLiteral("b");
            QStringList fast;
            QStringList slow;
            QVERIFY(Interpreter::splitInput(text, &fast, TOKEN_REGEX, true));
            QVERIFY(Interpreter::splitInput(text, &slow, wrapped, true));
            QVERIFY2(fast == slow, qPrintable(QStringLiteral("character %1").arg(u)));
        }
    }

    // A pattern that matches the empty text must still move on by a character each step.
    void splitEndsOnEmptyMatches() {
        QStringList out;
        QVERIFY(Interpreter::splitInput(QStringLiteral("ab,c"), &out,
                                        QRegularExpression(QStringLiteral("x*")), true));
        QCOMPARE(out.join(QString()), QStringLiteral("ab,c"));
    }

    // Tokenising and preprocessing

    void tokenize_data() { testsupport::loadTable(); }

    void tokenize() {
        QFETCH(QString, text);
        QFETCH(QString, tokens);
        TokenList list{Token(QStringLiteral("stale"))};
        QVERIFY(Interpreter::tokenize(&list, text, TOKEN_REGEX));
        QCOMPARE(renderTokens(list), tokens);
        QCOMPARE(list.last().getType(), End);
    }

    void tokenizeFailureLeavesList() {
        TokenList list{Token(QStringLiteral("kept"))};
        QVERIFY(!Interpreter::tokenize(&list, QString(), TOKEN_REGEX));
        QCOMPARE(list.size(), 1);
        QVERIFY(!Interpreter::tokenize(nullptr, QStringLiteral("x"), TOKEN_REGEX));
    }

    void preprocessEdges() {
        QVERIFY(!Interpreter::preprocessTokenList(nullptr));
        TokenList empty;
        QVERIFY(Interpreter::preprocessTokenList(&empty));
        QVERIFY(empty.isEmpty());

        // Only blanks: all removed. A leading blank does not hide the kind word.
        TokenList list{Token(QStringLiteral(" ")), Token(QStringLiteral("num")),
                       Token(QStringLiteral(" ")), Token(QStringLiteral("Speed"))};
        QVERIFY(Interpreter::preprocessTokenList(&list));
        QCOMPARE(renderTokens(list), QStringLiteral("s:num @Speed"));

        // Running it again changes nothing.
        TokenList twice = tokensOf(QStringLiteral("x, a <= Cell[2] && \"q\""));
        const QString once = renderTokens(twice);
        QVERIFY(Interpreter::preprocessTokenList(&twice));
        QCOMPARE(renderTokens(twice), once);
    }

    // Layout walking

    void settingMarkers_data() { testsupport::loadTable(); }

    void settingMarkers() {
        QFETCH(QString, definition);
        QFETCH(bool, enabled);
        QFETCH(bool, hidden);
        QFETCH(QString, tokens);
        KxsWriter writer;
        QVERIFY(writer.addSetting(QStringLiteral("Value1"), 0x10, 2, definition));
        auto interpreter = open(writer);
        QVERIFY(interpreter);
        TokenList list;
        std::unique_ptr<sf::RawSetting> raw(interpreter->getNextSetting(&list));
        QVERIFY(raw);
        QCOMPARE(raw->isEnabled(), enabled);
        QCOMPARE(raw->isHidden(), hidden);
        QCOMPARE(renderTokens(list), tokens);
    }

    void walksCategoriesAndSettingsIndependently() {
        KxsWriter writer;
        QVERIFY(writer.setVersion(QStringLiteral("KX-1.63")));
        writer.setFormat(1001);
        QVERIFY(writer.addCategory(QStringLiteral("batt"), QStringLiteral("Battery"),
                                   QStringLiteral("Pack")));
        QVERIFY(writer.addSetting(QStringLiteral("A"), 0, 1, QStringLiteral("num, u8")));
        QVERIFY(writer.addInteger(QStringLiteral("N"), 5, 1));
        QVERIFY(writer.addSetting(QStringLiteral("B"), 1, 1, QStringLiteral("bool, 8")));
        QVERIFY(writer.addCategory(QStringLiteral("spd"), QStringLiteral("Speed"), QString()));
        QVERIFY(writer.addSetting(QStringLiteral("C"), 2, 1, QStringLiteral("list, x")));
        auto interpreter = open(writer);
        QVERIFY(interpreter);
        QCOMPARE(interpreter->getKxsVersion(), QStringLiteral("KX-1.63"));
        QCOMPARE(interpreter->getKxsFormat(), 1001u);

        TokenList tokens;
        QStringList order;
        // Interleave the two walks: neither disturbs the other.
        for (;;) {
            bool any = false;
            if (interpreter->hasNextSetting()) {
                std::unique_ptr<sf::RawSetting> raw(interpreter->getNextSetting(&tokens));
                QVERIFY(raw);
                order << QStringLiteral("setting ") + raw->getCodeName();
                any = true;
            }
            if (interpreter->hasNextCategory()) {
                std::unique_ptr<sf::Category> cat(interpreter->getNextCategory());
                QVERIFY(cat);
                order << QStringLiteral("category %1/%2/%3")
                             .arg(cat->getName(), cat->getLabel(), cat->getPresetName());
                QVERIFY(cat->isEnabled());
                any = true;
            }
            // Constants in between do not disturb either walk.
            QCOMPARE(interpreter->getInteger(QStringLiteral("N")), 5u);
            if (!any) {
                break;
            }
        }
        QCOMPARE(order, (QStringList{"setting A", "category Battery/batt/Pack", "setting B",
                                     "category Speed/spd/", "setting C"}));
        QVERIFY(!interpreter->getNextCategory());
        QVERIFY(!interpreter->getNextSetting(&tokens));
    }

    // An entry whose definition is empty cannot be tokenised: no setting, and the walk does
    // not move past it (callers stop on null).
    void unreadableDefinitionStopsTheWalk() {
        KxsWriter writer;
        QVERIFY(writer.addSetting(QStringLiteral("Empty"), 0, 1, QString()));
        QVERIFY(writer.addSetting(QStringLiteral("Next"), 1, 1, QStringLiteral("num, u8")));
        auto interpreter = open(writer);
        QVERIFY(interpreter);
        TokenList tokens;
        QVERIFY(!interpreter->getNextSetting(&tokens));
        QVERIFY(interpreter->hasNextSetting());
        QVERIFY(!interpreter->getNextSetting(&tokens));
    }

    void resetStartsOver() {
        KxsWriter writer;
        QVERIFY(writer.addCategory(QStringLiteral("c"), QStringLiteral("C"), QString()));
        QVERIFY(writer.addSetting(QStringLiteral("A"), 0, 1, QStringLiteral("num, u8")));
        auto interpreter = open(writer);
        QVERIFY(interpreter);
        TokenList tokens;
        delete interpreter->getNextSetting(&tokens);
        delete interpreter->getNextCategory();
        QVERIFY(!interpreter->hasNextSetting());
        QVERIFY(!interpreter->hasNextCategory());
        interpreter->reset();
        QVERIFY(interpreter->hasNextSetting());
        QVERIFY(interpreter->hasNextCategory());
        std::unique_ptr<sf::RawSetting> raw(interpreter->getNextSetting(&tokens));
        QVERIFY(raw);
        QCOMPARE(raw->getCodeName(), QStringLiteral("A"));
    }

    void integers_data() { testsupport::loadTable(); }

    void integers() {
        QFETCH(QString, name);
        QFETCH(quint32, value);
        KxsWriter writer;
        QVERIFY(writer.addInteger(QStringLiteral("I1"), 0xAB, 1));
        QVERIFY(writer.addInteger(QStringLiteral("I2"), 0x1234, 2));
        QVERIFY(writer.addInteger(QStringLiteral("I4"), 0x89ABCDEF, 4));
        QVERIFY(writer.addInteger(QStringLiteral("I8"), Q_UINT64_C(0x0000000123456789), 8));
        QVERIFY(writer.addRaw(2, QStringLiteral("I3"), QByteArray("\x01\x02\x03", 3)));
        QVERIFY(writer.addString(QStringLiteral("S"), QStringLiteral("abcd")));
        auto interpreter = open(writer);
        QVERIFY(interpreter);
        QCOMPARE(interpreter->getInteger(name), value);
    }

    void stringLists_data() { testsupport::loadTable(); }

    void stringLists() {
        QFETCH(QString, name);
        QFETCH(QStringList, list);
        QFETCH(QString, countName);
        KxsWriter writer;
        QVERIFY(writer.addInteger(QStringLiteral("Zero"), 0, 1));
        QVERIFY(writer.addInteger(QStringLiteral("One"), 1, 1));
        QVERIFY(writer.addInteger(QStringLiteral("Two"), 2, 2));
        QVERIFY(writer.addInteger(QStringLiteral("Three"), 3, 4));
        QVERIFY(writer.addInteger(QStringLiteral("Huge"), 0xFFFFFFFFu, 4));
        QVERIFY(writer.addString(QStringLiteral("Modes"), QStringLiteral("Off")));
        QVERIFY(writer.addString(QStringLiteral("Mid"), QStringLiteral("Eco")));
        QVERIFY(writer.addString(QStringLiteral("Last"), QStringLiteral("Sport")));
        QVERIFY(writer.addSetting(QStringLiteral("After"), 0, 1, QStringLiteral("num, u8")));
        auto interpreter = open(writer);
        QVERIFY(interpreter);
        QCOMPARE(interpreter->getStringList(name, countName), list);
    }

    void closedInterpreterGivesNothing() {
        Interpreter interpreter;
        QVERIFY(!interpreter.loadKxsData(QByteArray("KXDATA not a layout")));
        QVERIFY(!interpreter.isOpen());
        TokenList tokens;
        QVERIFY(!interpreter.hasNextCategory());
        QVERIFY(!interpreter.getNextSetting(&tokens));
        QVERIFY(!interpreter.getNextCategory());
        QCOMPARE(interpreter.getInteger(QStringLiteral("N")), 0u);
        QVERIFY(interpreter.getStringList(QStringLiteral("S"), QStringLiteral("N")).isEmpty());
        QVERIFY(interpreter.getKxsVersion().isEmpty());
        QCOMPARE(interpreter.getKxsFormat(), 0xFFFFFFFFu);

        KxsWriter writer;
        QVERIFY(writer.addSetting(QStringLiteral("A"), 0, 1, QStringLiteral("num, u8")));
        QVERIFY(interpreter.loadKxsData(writer.toBytes()));
        interpreter.close();
        QVERIFY(!interpreter.hasNextSetting());
        QVERIFY(!interpreter.getNextSetting(&tokens));
    }
};

QTEST_GUILESS_MAIN(TestInterpreter)
#include "tst_interpreter.moc"
