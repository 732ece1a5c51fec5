// The setting base class: presets from code names, flags, bytes and byte order, field
// lookup with case blocks and ternaries, string purifying with its messages, scale-chain
// preprocessing, and the resolution of references to other settings.
#include "sf/BoolSetting.h"
#include "sf/CheckBoolSetting.h"
#include "sf/DependentResolver.h"
#include "sf/FieldEvaluator.h"
#include "sf/NumSetting.h"
#include "sf/Setting.h"
#include "sf/parser/CalcParser.h"

#include "support/FakeSettingHost.h"
#include "support/LanguageSupport.h"
#include "support/TableFile.h"

#include <QSignalSpy>
#include <QtTest>

using namespace sf;
using parser::Token;
using parser::TokenList;
using settingstest::FakeSettingHost;
using settingstest::hexBytes;

namespace {

// Fields in definition order: the type, then inputs 5, 6, 2 and 3.
const SettingInput PROBE_ORDER[] = {InputType,  InputName,  InputUnits,
                                    InputRange, InputScale, InputEnd};

// A bare setting over a definition, with the probe's input order.
class ProbeSetting : public Setting {
public:
    ProbeSetting(const QString& codeName, const QString& definition, SettingHost* host)
        : Setting(codeName, std::make_unique<TokenList>(FakeSettingHost::tokenize(definition)),
                  host) {
        setInputOrder(PROBE_ORDER);
    }
    bool setData(const QVariant&) override { return false; }
};

QString joined(const TokenList& tokens) {
    QStringList parts;
    for (const Token& t : tokens) {
        parts.append(t.getPayload());
    }
    return parts.join(QLatin1Char(' '));
}

// A host holding Mode1 (a number whose value is given) and Flags1 (16 labelled bits).
void addReferencedSettings(FakeSettingHost& host, int mode) {
    host.build(QStringLiteral("Mode1"), QStringLiteral("num, MODE, u8, 0`9, [], 0, \"Mode\", \"\""),
               QByteArray(1, static_cast<char>(mode)));
    host.build(QStringLiteral("Flags1"),
               QStringLiteral("bool, 16, {\"a\", \"b\", \"c\", \"d\" inverted}"),
               hexBytes("00 05"));
}

// The field at position found by walking to it: separators outside braces count, the
// walk fails at an End token or a closing brace without an opening one before the
// field, and the field ends at the next such separator or End (failing at an unmatched
// closing brace inside it).
bool walkToField(const TokenList& tokens, int position, int* begin, int* end) {
    const int n = tokens.size();
    int depth = 0;
    int field = 0;
    int i = 0;
    for (; field < position; ++i) {
        if (i >= n || tokens.at(i).getType() == parser::End) {
            return false;
        }
        const parser::TokenType t = tokens.at(i).getType();
        depth += t == parser::LCurly ? 1 : t == parser::RCurly ? -1 : 0;
        if (depth < 0) {
            return false;
        }
        field += (t == parser::Separator && depth == 0) ? 1 : 0;
    }
    if (i >= n) {
        return false;
    }
    int j = i;
    for (depth = 0; j < n; ++j) {
        const parser::TokenType t = tokens.at(j).getType();
        if (t == parser::End || (t == parser::Separator && depth == 0)) {
            break;
        }
        depth += t == parser::LCurly ? 1 : t == parser::RCurly ? -1 : 0;
        if (depth < 0) {
            return false;
        }
    }
    *begin = i;
    *end = j;
    return true;
}

} // namespace

class TestSetting : public QObject {
    Q_OBJECT
private slots:
    void presetFromCodeName_data() { testsupport::loadTable(); }

    void presetFromCodeName() {
        QFETCH(QString, codeName);
        QFETCH(int, preset);
        QFETCH(QString, baseName);
        FakeSettingHost host;
        ProbeSetting s(codeName, QStringLiteral("x, y"), &host);
        QCOMPARE(s.getPreset(), preset);
        QCOMPARE(s.getBaseCodeName(), baseName);
    }

    // The reference count never goes below zero; dependents are listed once.
    void referencesAndDependents() {
        FakeSettingHost host;
        ProbeSetting a(QStringLiteral("A1"), QStringLiteral("x"), &host);
        ProbeSetting b(QStringLiteral("B1"), QStringLiteral("x"), &host);
        QCOMPARE(a.dereference(), 0);
        QCOMPARE(a.addReference(), 1);
        QCOMPARE(a.addReference(), 2);
        QCOMPARE(a.dereference(), 1);
        QCOMPARE(a.dereference(), 0);
        QCOMPARE(a.dereference(), 0);
        QVERIFY(!a.addDependent(nullptr));
        QVERIFY(a.addDependent(&b));
        QVERIFY(!a.addDependent(&b));
        QCOMPARE(a.getDependents(), QList<Setting*>{&b});
    }

    void bytes() {
        FakeSettingHost host;
        ProbeSetting s(QStringLiteral("P1"), QStringLiteral("x"), &host);
        QVERIFY(!s.initializeDataPointer()); // sizes still 0
        s.setSizeBits(24);
        QVERIFY(!s.initializeDataPointer()); // size in bytes still 0
        s.setSizeBytes(3);
        QVERIFY(s.initializeDataPointer());
        QCOMPARE(s.getBytes(), QByteArray(3, '\0'));
        QVERIFY(!s.writeRawData(nullptr));
        QVERIFY(s.writeRawData("\x12\x34\x56\x78"));
        QCOMPARE(s.getBytes(), hexBytes("12 34 56")); // exactly the size in bytes
        QCOMPARE(s.getData(RoleRaw).toInt(), 0x12);   // base: the first byte
        QVERIFY(!s.getData(RoleDisplay).isValid());
    }

    void fieldLookup_data() { testsupport::loadTable(); }

    void fieldLookup() {
        QFETCH(QString, definition);
        QFETCH(int, input);
        QFETCH(int, offset);
        QFETCH(QString, text);
        FakeSettingHost host;
        ProbeSetting s(QStringLiteral("P1"), definition, &host);
        QCOMPARE(s.getSettingInputOffset(static_cast<SettingInput>(input)), offset);
        int begin = -1;
        int end = -1;
        const bool found = s.getSettingInputRange(static_cast<SettingInput>(input), &begin, &end);
        QCOMPARE(found, text != QLatin1String("-"));
        if (found) {
            QCOMPARE(joined(s.getTokenList()->mid(begin, end - begin)), text);
        }
    }

    // Fields found all at once must be the fields found by walking to each one, whatever the
    // braces, separators and End tokens: random lists of those over fixed seeds.
    void allFieldsAgreeWithLookup() {
        const parser::TokenType kinds[] = {parser::String, parser::Separator, parser::Separator,
                                           parser::LCurly, parser::RCurly,    parser::End};
        for (quint32 seed = 1; seed <= 3000; ++seed) {
            QRandomGenerator random(seed);
            TokenList tokens;
            const int length = random.bounded(14);
            for (int i = 0; i < length; ++i) {
                tokens.append(Token(QStringLiteral("t"), kinds[random.bounded(6)]));
            }
            FieldEvaluator::Ranges all;
            FieldEvaluator::locateAll(tokens, &all);
            for (int position = 0; position <= length + 1; ++position) {
                int begin = -1;
                int end = -1;
                const bool found = walkToField(tokens, position, &begin, &end);
                QVERIFY2(found == (position < all.size()),
                         qPrintable(QStringLiteral("seed %1, field %2").arg(seed).arg(position)));
                if (found) {
                    QCOMPARE(all.at(position).begin, begin);
                    QCOMPARE(all.at(position).end, end);
                }
            }
        }
    }

    // A field's case blocks and ternaries resolved with Mode1 at a value; "-" when it
    // fails. A malformed field reports its message once, however often it is read.
    void fieldEvaluation_data() { testsupport::loadTable(); }

    void fieldEvaluation() {
        QFETCH(QString, field);
        QFETCH(int, mode);
        QFETCH(QString, expected);
        QFETCH(QString, message);
        FakeSettingHost host;
        addReferencedSettings(host, mode);
        ProbeSetting s(QStringLiteral("P1"), QStringLiteral("p, ") + field + QStringLiteral(", z"),
                       &host);
        for (int pass = 0; pass < 2; ++pass) {
            TokenList out;
            const bool ok = s.getSettingInput(InputName, &out);
            QCOMPARE(ok, expected != QLatin1String("-"));
            if (ok) {
                QCOMPARE(joined(out), expected);
            }
        }
        QCOMPARE(host.problems(), message.isEmpty()
                                      ? QStringList()
                                      : QStringList{message + s.debug_getProcessedKXSLine()});
    }

    void purifyStringToken_data() { testsupport::loadTable(); }

    void purifyStringToken() {
        QFETCH(QString, payload);
        QFETCH(int, type);
        QFETCH(QString, expected);
        Token token(payload, static_cast<parser::TokenType>(type));
        const bool ok = Setting::purifyStringToken(token);
        QCOMPARE(ok, expected != QLatin1String("<fails>"));
        QCOMPARE(token.getPayload(), ok ? expected : payload);
    }

    void purifyStringTerminals_data() { testsupport::loadTable(); }

    void purifyStringTerminals() {
        QFETCH(QString, definition);
        QFETCH(bool, succeeds);
        QFETCH(QString, message);
        QFETCH(QString, field);
        FakeSettingHost host;
        ProbeSetting s(QStringLiteral("P1"), definition, &host);
        const QString line = s.debug_getProcessedKXSLine();
        QSignalSpy spy(&host, &SettingHost::problem);
        QCOMPARE(s.purifyStringTerminals(InputName), succeeds);
        if (message.isEmpty()) {
            QCOMPARE(spy.count(), 0);
        } else {
            QCOMPARE(spy.count(), 1);
            QCOMPARE(spy.at(0).at(0).toString(),
                     QString(message).replace(QLatin1String("%L"), line));
        }
        int begin = -1;
        int end = -1;
        QVERIFY(s.getSettingInputRange(InputName, &begin, &end));
        QCOMPARE(joined(s.getTokenList()->mid(begin, end - begin)), field);
    }

    void stringFieldIsPurifiedOnce() {
        // A text purified when the setting was built is not purified again when read: the
        // escaped quote survives, and an unpurified field is purified on reading.
        FakeSettingHost host;
        ProbeSetting s(QStringLiteral("P1"), QStringLiteral("p, \"5\\\" wheel\", \"a\\\\b\""),
                       &host);
        QVERIFY(s.purifyStringTerminals(InputName));
        QCOMPARE(s.getStringField(InputName), QStringLiteral("5\" wheel"));
        QCOMPARE(s.getStringField(InputName), QStringLiteral("5\" wheel"));
        QCOMPARE(s.getStringField(InputUnits), QStringLiteral("a\\b"));
        QCOMPARE(s.getStringField(InputUnits), QStringLiteral("a\\b"));
        QCOMPARE(s.getStringField(InputRange), QString()); // missing field
        QString text;
        QVERIFY(!s.getSettingInputAsString(InputRange, &text));
    }

    // The scale field of "p, a, b, 0`1, FIELD" preprocessed for a layout format; the
    // field's tokens afterwards (renderTokens).
    void preprocessNumericInput_data() { testsupport::loadTable(); }

    void preprocessNumericInput() {
        QFETCH(uint, format);
        QFETCH(QString, field);
        QFETCH(int, input);
        QFETCH(bool, rewritten);
        QFETCH(QString, tokens);
        FakeSettingHost host;
        host.setFormat(format);
        ProbeSetting s(QStringLiteral("P1"), QStringLiteral("p, a, b, 0`1, ") + field, &host);
        const QString all =
            QStringLiteral("s:p , @a , @b , 0 ` 1 , ") + tokens + QStringLiteral(" $");
        QCOMPARE(s.preprocessNumericInput(static_cast<SettingInput>(input)), rewritten);
        QCOMPARE(testsupport::renderTokens(*s.getTokenList()), all);
        // Running it again changes nothing.
        s.preprocessNumericInput(static_cast<SettingInput>(input));
        QCOMPARE(testsupport::renderTokens(*s.getTokenList()), all);
    }

    void resolveReferences_data() { testsupport::loadTable(); }

    void resolveReferences() {
        QFETCH(QString, expression);
        QFETCH(int, behaviour);
        QFETCH(bool, succeeds);
        QFETCH(QString, expected);
        FakeSettingHost host;
        addReferencedSettings(host, 3);
        // The tokens as the calculator's sign folding leaves them (so -Mode1 is a NegDependent).
        TokenList tokens = FakeSettingHost::tokenize(QStringLiteral("x, ") + expression);
        tokens = tokens.mid(2, tokens.size() - 3);
        QVERIFY(parser::CalcParser::prepareUnaryOps(tokens));
        const bool ok = host.replaceDependents(nullptr, tokens, parser::Numeric,
                                               static_cast<ReplaceBehaviour>(behaviour));
        QCOMPARE(ok, succeeds);
        if (!expected.isEmpty()) {
            QCOMPARE(joined(tokens), expected);
        }
    }

    void resolverRegistersDependents() {
        FakeSettingHost host;
        addReferencedSettings(host, 1);
        Setting* mode = host.lookupSetting(QStringLiteral("Mode1"));
        Setting* flags = host.lookupSetting(QStringLiteral("Flags1"));
        ProbeSetting s(QStringLiteral("P1"), QStringLiteral("p, Mode1 + Flags1[0] + P1"), &host);
        TokenList tokens;
        QVERIFY(s.getSettingInput(InputName, &tokens));
        // Self-references resolve to nothing here (P1 is not in the host), so use ZeroMissing.
        // While the referrer is still being built it is not registered.
        TokenList copy = tokens;
        QVERIFY(host.replaceDependents(&s, copy, parser::Numeric, ReplaceBehaviour::ZeroMissing));
        QVERIFY(mode->getDependents().isEmpty());
        s.setType(TypeNum);
        QVERIFY(host.replaceDependents(&s, tokens, parser::Numeric, ReplaceBehaviour::ZeroMissing));
        QCOMPARE(mode->getDependents(), QList<Setting*>{&s});
        QCOMPARE(flags->getDependents(), QList<Setting*>{&s});
        QVERIFY(host.replaceDependents(&s, tokens, parser::Numeric, ReplaceBehaviour::Strict));
        QCOMPARE(mode->getDependents().size(), 1);
    }

    void destroyedDependentsDropOut() {
        FakeSettingHost host;
        addReferencedSettings(host, 1);
        Setting* mode = host.lookupSetting(QStringLiteral("Mode1"));
        // A number whose format is chosen by Mode1 and fails: the factory destroys it, and
        // Mode1 must not keep a pointer to it.
        int error = 0;
        QVERIFY(!host.build(QStringLiteral("Bad1"), QStringLiteral("num, W, {Mode1, u8, q8}"),
                            QByteArray(), &error));
        QCOMPARE(error, 3);
        QVERIFY(mode->getDependents().isEmpty());
        {
            ProbeSetting gone(QStringLiteral("G1"), QStringLiteral("x"), &host);
            QVERIFY(mode->addDependent(&gone));
            QCOMPARE(mode->getDependents().size(), 1);
        }
        QVERIFY(mode->getDependents().isEmpty());
    }

    void selfReferenceDoesNotRecurse() {
        // A scale chain that refers to its own setting, directly or through another one,
        // must end; the inner reference reads the stored integer instead.
        FakeSettingHost host;
        Setting* a =
            host.build(QStringLiteral("A1"),
                       QStringLiteral("num, A, u8, 0`255, [*B1], 0, \"A\", \"\""), hexBytes("02"));
        Setting* b =
            host.build(QStringLiteral("B1"),
                       QStringLiteral("num, B, u8, 0`255, [*A1], 0, \"B\", \"\""), hexBytes("03"));
        Setting* c =
            host.build(QStringLiteral("C1"),
                       QStringLiteral("num, C, u8, 0`255, [*C1], 0, \"C\", \"\""), hexBytes("04"));
        QVERIFY(a && b && c);
        QCOMPARE(a->getData(RoleEdit).toDouble(), 2.0 * (3.0 * 2.0));
        QCOMPARE(c->getData(RoleEdit).toDouble(), 16.0);
        QVERIFY(!c->getDependents().contains(c));
    }
};

QTEST_GUILESS_MAIN(TestSetting)
#include "tst_setting.moc"
