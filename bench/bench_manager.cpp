// The setting manager on generated layouts of 500 and 5,000 settings: opening a setup
// (layout and image in memory), an edit of a setting with two dependents (including its
// undo record), an undo and a redo. Opening must grow linearly with the layout.
//
//   cmake -S . -B build/bench -DKX_BUILD_BENCH=ON -DCMAKE_BUILD_TYPE=Release
//   cmake --build build/bench --target bench_manager
//   build/bench/bin/bench_manager

#include "sf/SettingManager.h"
#include "support/GeneratedLayout.h"
#include "util/VersionContainer.h"

#include <benchmark/benchmark.h>

#include <QByteArray>
#include <QString>

#include <memory>

using namespace benchdata;

namespace {

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
