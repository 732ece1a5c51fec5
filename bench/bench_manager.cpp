// The setting manager on generated layouts of 500 and 5,000 settings: opening a setup
// (layout and image in memory), an edit of a setting with two dependents (including its
// undo record), an undo and a redo. Opening must grow linearly with the layout.
//
//   cmake -S . -B build/bench -DKX_BUILD_BENCH=ON -DCMAKE_BUILD_TYPE=Release
//   cmake --build build/bench --target bench_manager
//   build/bench/bin/bench_manager

#include "kxs/compiler/KxsWriter.h"
#include "sf/SettingManager.h"
#include "sf/parser/Inhex32Entry.h"
#include "util/VersionContainer.h"

#include <benchmark/benchmark.h>

#include <QByteArray>
#include <QString>

#include <memory>

namespace {

const QString VERSION = QStringLiteral("KX4-BENCH");
const QString FIRMWARE = QStringLiteral("FWB");

// A layout of `count` settings in categories of 100, in groups of ten:
//   0     G<g>Base      u8 number 0`255 (two dependents)
//   1, 2  Dep<g>a/b     u16 numbers whose upper bound is G<g>Base * 4, scaled /10
//   3     G<g>Flags     16-bit bit field with three labels
//   4     G<g>Boxes     checkbool[8] with three boxes
//   5     G<g>Mode      list over one of five shared string lists
//   6, 7  Pre<g>x1/x2   u8 numbers for presets 0 and 1 (one row, two columns)
//   8, 9  Num<g>a/b     plain u16 numbers with a help identifier
// Only the Pre settings end in a preset character (a digit, A or B), as in a real layout:
// every category has two preset columns. Every setting gets bytes of its own from
// address 0 on.
struct Generated {
    QByteArray layout;
    QByteArray image;
};

Generated generate(int count) {
    kxs::compiler::KxsWriter writer;
    writer.setVersion(VERSION);
    writer.setFormat(1001);
    QByteArray bytes;
    const auto add = [&](const QString& name, int size, const QString& definition,
                         const QByteArray& value) {
        writer.addSetting(name, static_cast<quint32>(bytes.size()), size, definition);
        bytes.append(value.left(size).leftJustified(size, '\0'));
    };
    for (int i = 0; i < count; ++i) {
        if (i % 100 == 0) {
            writer.addCategory(QStringLiteral("C%1").arg(i / 100),
                               QStringLiteral("Category %1").arg(i / 100), QString());
        }
        const int g = i / 10;
        switch (i % 10) {
        case 0:
            add(QStringLiteral("G%1Base").arg(g), 1,
                QStringLiteral("num, WB%1, u8, 0`255, [], 0, \"Base\", \"\"").arg(g),
                QByteArray(1, char(100)));
            break;
        case 1:
        case 2:
            add(QStringLiteral("Dep%1%2").arg(g).arg(i % 10 == 1 ? 'a' : 'b'), 2,
                QStringLiteral("num, WD%1, u16, 0`G%1Base*4, [/10], 1, \"Dep\", \"V\"").arg(g),
                QByteArray::fromHex("012C")); // 300
            break;
        case 3:
            add(QStringLiteral("G%1Flags").arg(g), 2,
                QStringLiteral("bool, 16, {\"One\", \"Two\", \"Three\"}"),
                QByteArray::fromHex("0005"));
            break;
        case 4:
            add(QStringLiteral("G%1Boxes").arg(g), 1,
                QStringLiteral("checkbool[8], {\"A\", \"B\", \"C\"}, \"Boxes\", \"\""),
                QByteArray(1, char(2)));
            break;
        case 5:
            add(QStringLiteral("G%1Mode").arg(g), 1,
                QStringLiteral("list, WM%1, ListCount, List%2, \"Mode\", \"\"").arg(g).arg(g % 5),
                QByteArray(1, char(1)));
            break;
        case 6:
        case 7:
            add(QStringLiteral("Pre%1x%2").arg(g).arg(i % 10 - 5), 1,
                QStringLiteral("num, WP%1, u8, 0`200, [], 0, \"Preset\", \"\"").arg(g),
                QByteArray(1, char(7)));
            break;
        default:
            add(QStringLiteral("Num%1%2").arg(g).arg(i % 10 == 8 ? 'a' : 'b'), 2,
                QStringLiteral("num, WN%1_%2, u16, 0`60000, [*10/256], 2, \"Number\", \"A\"")
                    .arg(g)
                    .arg(i),
                QByteArray::fromHex("1000"));
            break;
        }
    }
    writer.addInteger(QStringLiteral("ListCount"), 3, 1);
    for (int list = 0; list < 5; ++list) {
        for (int k = 0; k < 3; ++k) {
            writer.addString(k == 0 ? QStringLiteral("List%1").arg(list)
                                    : QStringLiteral("List%1_%2").arg(list).arg(k),
                             QStringLiteral("Option %1").arg(k));
        }
    }

    QByteArray hex = sf::parser::Inhex32Entry::line(0xC0, 0, FIRMWARE.toLatin1()) +
                     sf::parser::Inhex32Entry::line(0xC1, 0, VERSION.toLatin1());
    for (int at = 0; at < bytes.size(); at += 16) {
        hex += sf::parser::Inhex32Entry::line(0x00, static_cast<quint16>(at), bytes.mid(at, 16));
    }
    hex += sf::parser::Inhex32Entry::line(0x01, 0, QByteArray());
    return {writer.toBytes(), hex};
}

util::VersionContainer version() {
    util::VersionContainer v;
    v.fwVersion = FIRMWARE;
    v.kxsVersion = VERSION;
    return v;
}

const Generated& layoutOf(int count) {
    static Generated small = generate(500);
    static Generated large = generate(5000);
    return count <= 500 ? small : large;
}

std::unique_ptr<sf::SettingManager> loaded(benchmark::State& state) {
    const Generated& g = layoutOf(static_cast<int>(state.range(0)));
    auto manager = std::make_unique<sf::SettingManager>();
    const int result = manager->loadRawSettingsData(version(), g.layout, g.image, false);
    if (result != 0) {
        state.SkipWithError("the generated setup did not load cleanly");
    }
    return manager;
}

void BM_Load(benchmark::State& state) {
    const Generated& g = layoutOf(static_cast<int>(state.range(0)));
    for (auto _ : state) {
        sf::SettingManager manager;
        const int result = manager.loadRawSettingsData(version(), g.layout, g.image, false);
        benchmark::DoNotOptimize(result);
        if (result != 0) {
            state.SkipWithError("the generated setup did not load cleanly");
            break;
        }
    }
    state.SetComplexityN(state.range(0));
}
BENCHMARK(BM_Load)->Arg(500)->Arg(5000)->Unit(benchmark::kMillisecond)->Complexity();

// One edit of a setting with two dependents, recorded for undo. The value alternates so
// that every edit changes the bytes; the history is emptied now and then (untimed).
void BM_EditWithDependents(benchmark::State& state) {
    auto manager = loaded(state);
    const QString name = QStringLiteral("G%1Base").arg(state.range(0) / 20);
    int value = 60;
    int edits = 0;
    for (auto _ : state) {
        value = value == 60 ? 90 : 60;
        const bool ok = manager->setSettingData(value, name);
        benchmark::DoNotOptimize(ok);
        if (++edits == 10000) {
            state.PauseTiming();
            manager->clearUndoList();
            edits = 0;
            state.ResumeTiming();
        }
    }
}
BENCHMARK(BM_EditWithDependents)->Arg(500)->Arg(5000)->Unit(benchmark::kMicrosecond);

// Edits of a setting with two dependents recorded before timing; the first edit clamps
// both dependents, so those groups hold three actions.
std::unique_ptr<sf::SettingManager> withHistory(benchmark::State& state, int edits) {
    auto manager = loaded(state);
    const QString name = QStringLiteral("G%1Base").arg(state.range(0) / 20);
    for (int i = 0; i < edits; ++i) {
        manager->setSettingData(i % 2 == 0 ? 50 : 70, name);
    }
    return manager;
}

void BM_Undo(benchmark::State& state) {
    auto manager = withHistory(state, 2000);
    for (auto _ : state) {
        if (!manager->canUndo()) {
            state.PauseTiming();
            while (manager->redoAction()) {
            }
            state.ResumeTiming();
        }
        benchmark::DoNotOptimize(manager->undoAction());
    }
}
BENCHMARK(BM_Undo)->Arg(500)->Arg(5000)->Unit(benchmark::kMicrosecond);

void BM_Redo(benchmark::State& state) {
    auto manager = withHistory(state, 2000);
    while (manager->undoAction()) {
    }
    for (auto _ : state) {
        if (!manager->canRedo()) {
            state.PauseTiming();
            while (manager->undoAction()) {
            }
            state.ResumeTiming();
        }
        benchmark::DoNotOptimize(manager->redoAction());
    }
}
BENCHMARK(BM_Redo)->Arg(500)->Arg(5000)->Unit(benchmark::kMicrosecond);

} // namespace

BENCHMARK_MAIN();
