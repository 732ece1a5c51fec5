// Speed of the definition language: tokenizing layout definitions and evaluating the
// expressions, ranges and scale-factor chains that a layout of a few thousand settings
// asks for when it is opened and edited.
//
//   cmake -S . -B build/bench -G Ninja -DKX_BUILD_BENCH=ON -DCMAKE_BUILD_TYPE=Release
//   cmake --build build/bench --target bench_language
//   build/bench/bin/bench_language

#include "sf/parser/CalcParser.h"
#include "sf/parser/Interpreter.h"
#include "sf/parser/Token.h"

#include <benchmark/benchmark.h>

#include <QRegularExpression>
#include <QStringList>

using namespace sf::parser;

namespace {

// Settings per simulated layout.
constexpr int LAYOUT_SIZE = 2000;

// Typical definitions: numbers with ranges and scale chains, conditional ranges, case
// blocks, bit fields with quoted labels, lists, markers.
const QStringList DEFINITIONS = {
    QStringLiteral("num, u16, 0`1000, [*10/256], 2, \"Battery voltage\", \"V\", VoltHelp"),
    QStringLiteral("num, s16, -40`125, [-40], 0, \"Temperature\", \"degC\", TempHelp"),
    QStringLiteral("num, u8, 0`Max - 1, [*100/255], 1, \"Throttle\", \"%\", ThrHelp, HID"),
    QStringLiteral("bool, 8, {\"Brake\", \"Throttle \\\"max\\\"\", \"Aux\", \"Light\"}, BoolHelp"),
    QStringLiteral("list, Modes, ModeCount, \"Drive mode\", ModeHelp, DIS"),
    QStringLiteral("num, u16, Mode > 2 ? 0`500 : 0`250, [*(3.1416*2)/1000], 3, \"Wheel\", "
                   "\"m\", WheelHelp"),
    QStringLiteral("num, u32, {Units: 0`99999, 0`62137}, [*Scale/1000], 1, \"Distance\", "
                   "\"km\", DistHelp"),
    QStringLiteral("checkbool[16], 16, \"Features\", FeatHelp"),
    QStringLiteral("num, u8, 0`Cell[3] * 2, [/2], 1, \"Half cell\", \"V\", CellHelp"),
    QStringLiteral("num, s32, -(Limit * 2)`Limit <= 100 && Enabled != 0 ? Limit : 100, "
                   "[*0x10/10h], 2, \"Current\", \"A\", AmpHelp"),
};

// Conditions and range ends as the calculator sees them, references already replaced by
// values.
const QStringList EXPRESSIONS = {
    QStringLiteral("3 > 2"),
    QStringLiteral("1 == 1 && 50 < 100"),
    QStringLiteral("-(4 * 0x10) / 10h >= -1 || 0"),
    QStringLiteral("99 - 1"),
    QStringLiteral("-40"),
    QStringLiteral("(250 * 2) <= 100 && 1 != 0"),
    QStringLiteral("2 ^ 3 ^ 2"),
    QStringLiteral("12.5 * 2"),
};

const QStringList CHAINS = {
    QStringLiteral("*10/256"),          QStringLiteral("-40"),        QStringLiteral("*100/255"),
    QStringLiteral("*(3.1416*2)/1000"), QStringLiteral("*1000/1000"), QStringLiteral("/2"),
};

QVector<TokenList> tokenized(const QStringList& texts) {
    QVector<TokenList> lists;
    for (const QString& text : texts) {
        TokenList tokens;
        Interpreter::tokenize(&tokens, text, TOKEN_REGEX);
        tokens.removeLast(); // fields reach the calculator without End
        lists.append(tokens);
    }
    return lists;
}

void BM_TokenizeLayout(benchmark::State& state) {
    TokenList tokens;
    for (auto _ : state) {
        for (int i = 0; i < LAYOUT_SIZE; ++i) {
            Interpreter::tokenize(&tokens, DEFINITIONS.at(i % DEFINITIONS.size()), TOKEN_REGEX);
            benchmark::DoNotOptimize(tokens.size());
        }
    }
    state.SetItemsProcessed(state.iterations() * LAYOUT_SIZE);
}
BENCHMARK(BM_TokenizeLayout)->Unit(benchmark::kMillisecond);

void BM_EvaluateExpressions(benchmark::State& state) {
    const QVector<TokenList> lists = tokenized(EXPRESSIONS);
    CalcParser calc;
    for (auto _ : state) {
        for (int i = 0; i < LAYOUT_SIZE; ++i) {
            TokenList tokens = lists.at(i % lists.size());
            benchmark::DoNotOptimize(calc.calculate(tokens));
        }
    }
    state.SetItemsProcessed(state.iterations() * LAYOUT_SIZE);
}
BENCHMARK(BM_EvaluateExpressions)->Unit(benchmark::kMillisecond);

// A range field: split at the backtick, both ends evaluated.
void BM_EvaluateRanges(benchmark::State& state) {
    const QVector<TokenList> lists =
        tokenized({QStringLiteral("0`1000"), QStringLiteral("-40`125"), QStringLiteral("0`99 - 1"),
                   QStringLiteral("-(50 * 2)`1 <= 100 && 1 != 0")});
    CalcParser calc;
    for (auto _ : state) {
        for (int i = 0; i < LAYOUT_SIZE; ++i) {
            const TokenList& range = lists.at(i % lists.size());
            int at = 0;
            while (range.at(at).getType() != Range) {
                ++at;
            }
            TokenList low = range.mid(0, at);
            TokenList high = range.mid(at + 1);
            benchmark::DoNotOptimize(calc.calculate(low) + calc.calculate(high));
        }
    }
    state.SetItemsProcessed(state.iterations() * LAYOUT_SIZE);
}
BENCHMARK(BM_EvaluateRanges)->Unit(benchmark::kMillisecond);

// A value scaled for display and the edited value scaled back.
void BM_ScaleChains(benchmark::State& state) {
    const QVector<TokenList> lists = tokenized(CHAINS);
    CalcParser calc;
    for (auto _ : state) {
        for (int i = 0; i < LAYOUT_SIZE; ++i) {
            TokenList forward = lists.at(i % lists.size());
            TokenList backward = forward;
            const double shown = calc.calculateScaledFromRaw(i, forward);
            benchmark::DoNotOptimize(calc.calculateRawFromScaled(shown, backward));
        }
    }
    state.SetItemsProcessed(state.iterations() * LAYOUT_SIZE);
}
BENCHMARK(BM_ScaleChains)->Unit(benchmark::kMillisecond);

// Recognising one piece of text: the hand-written recogniser against trying the pattern
// table's regular expressions in order, which it replaces.
const QStringList PIECES = {QStringLiteral("num"),  QStringLiteral(","),     QStringLiteral("1000"),
                            QStringLiteral("0x1F"), QStringLiteral("Volt"),  QStringLiteral("`"),
                            QStringLiteral(" "),    QStringLiteral("\"V\""), QStringLiteral("*")};

void BM_RecognizePieces(benchmark::State& state) {
    for (auto _ : state) {
        for (const QString& piece : PIECES) {
            benchmark::DoNotOptimize(recognizeTokenType(piece));
        }
    }
    state.SetItemsProcessed(state.iterations() * PIECES.size());
}
BENCHMARK(BM_RecognizePieces);

void BM_RecognizePiecesByPatterns(benchmark::State& state) {
    QVector<QRegularExpression> patterns;
    for (int t = 0; t < SIZE; ++t) {
        patterns.append(QRegularExpression(
            QRegularExpression::anchoredPattern(QString::fromLatin1(TOKENS[t]))));
        patterns.last().optimize();
    }
    for (auto _ : state) {
        for (const QString& piece : PIECES) {
            int type = String;
            for (int t = 0; t < SIZE; ++t) {
                if (TOKENS[t][0] != '\0' && patterns.at(t).match(piece).hasMatch()) {
                    type = t;
                    break;
                }
            }
            benchmark::DoNotOptimize(type);
        }
    }
    state.SetItemsProcessed(state.iterations() * PIECES.size());
}
BENCHMARK(BM_RecognizePiecesByPatterns);

} // namespace

BENCHMARK_MAIN();
