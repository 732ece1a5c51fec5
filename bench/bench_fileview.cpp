// The file view: a sample setup opened into its view and painted for the first time; a
// generated setup of 5,000 settings the same way (with the peak memory of the process);
// scrolling that view page by page, each page painted (the slowest page is reported).
//
//   cmake -S . -B build/bench -DKX_BUILD_BENCH=ON -DCMAKE_BUILD_TYPE=Release
//   cmake --build build/bench --target bench_fileview kx-sample-data
//   QT_QPA_PLATFORM=offscreen build/bench/bin/bench_fileview

#include "support/GeneratedLayout.h"

#include "sf/SetupFile.h"
#include "ui/KXFileModel.h"
#include "ui/KXFileView.h"

#include <benchmark/benchmark.h>

#include <QApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QScrollArea>
#include <QScrollBar>
#include <QTemporaryDir>

#include <fstream>
#include <memory>
#include <string>

namespace {

// Peak resident memory of the process so far, in MB (VmHWM).
double peakMegabytes() {
    std::ifstream status("/proc/self/status");
    std::string key;
    while (status >> key) {
        if (key == "VmHWM:") {
            double kb = 0;
            status >> kb;
            return kb / 1024.0;
        }
    }
    return 0;
}

struct Opened {
    std::unique_ptr<ui::KXFileModel> file = std::make_unique<ui::KXFileModel>();
    std::unique_ptr<ui::KXFileView> view;
};

// Opens a file into a shown view and paints it once.
Opened openAndPaint(const QString& path, const util::VersionContainer& version) {
    Opened o;
    o.file->open(path, version);
    o.view = std::make_unique<ui::KXFileView>(o.file.get());
    o.view->resize(1280, 800);
    o.view->show();
    QApplication::processEvents();
    benchmark::DoNotOptimize(o.view->grab());
    return o;
}

void BM_OpenSampleView(benchmark::State& state) {
    QDir::setCurrent(QStringLiteral(KX_BENCH_RUNTIME_DIR));
    util::VersionContainer version;
    QString error;
    if (!sf::SetupFile::catalogueVersion(QStringLiteral("3.20"), &version, &error)) {
        state.SkipWithError("no sample data: build kx-sample-data first");
        return;
    }
    for (auto _ : state) {
        Opened o = openAndPaint(version.mapFilePath, version);
        state.PauseTiming(); // closing is not opening
        o = Opened();
        state.ResumeTiming();
    }
}
BENCHMARK(BM_OpenSampleView)->Unit(benchmark::kMillisecond);

struct GeneratedFiles {
    QTemporaryDir dir;
    QString image;
    util::VersionContainer version;
    explicit GeneratedFiles(int count) {
        const benchdata::Generated g = benchdata::generate(count);
        QFile layout(dir.filePath(QStringLiteral("layout.kxs")));
        QFile setup(dir.filePath(QStringLiteral("setup.hex")));
        if (layout.open(QIODevice::WriteOnly) && setup.open(QIODevice::WriteOnly)) {
            layout.write(g.layout);
            setup.write(g.image);
        }
        image = setup.fileName();
        version = benchdata::version();
        version.kxsFilePath = layout.fileName();
    }
};

void BM_OpenGeneratedView(benchmark::State& state) {
    GeneratedFiles files(int(state.range(0)));
    double rest = 0;
    for (auto _ : state) {
        Opened o = openAndPaint(files.image, files.version);
        state.PauseTiming();
        // The tables below the first screen, made right after the first paint.
        QElapsedTimer making;
        making.start();
        o.view->tables();
        rest = std::max(rest, making.nsecsElapsed() / 1e6);
        o = Opened();
        state.ResumeTiming();
    }
    state.counters["peak_MB"] = peakMegabytes();
    state.counters["rest_ms"] = rest;
}
BENCHMARK(BM_OpenGeneratedView)->Arg(5000)->Unit(benchmark::kMillisecond)->Iterations(3);

// One iteration scrolls the whole page from the top, a page at a time, painting each.
void BM_ScrollGeneratedView(benchmark::State& state) {
    GeneratedFiles files(int(state.range(0)));
    Opened o = openAndPaint(files.image, files.version);
    o.view->tables(); // every table made, as right after the first paint
    QApplication::processEvents();
    QScrollArea* area = o.view->findChild<QScrollArea*>();
    QScrollBar* bar = area->verticalScrollBar();
    double slowest = 0;
    int pages = 0;
    for (auto _ : state) {
        bar->setValue(0);
        for (int at = 0; at <= bar->maximum(); at += bar->pageStep()) {
            QElapsedTimer frame;
            frame.start();
            bar->setValue(at);
            QApplication::processEvents();
            benchmark::DoNotOptimize(area->viewport()->grab());
            slowest = std::max(slowest, frame.nsecsElapsed() / 1e6);
            ++pages;
        }
    }
    state.counters["pages"] = pages;
    state.counters["slowest_page_ms"] = slowest;
}
BENCHMARK(BM_ScrollGeneratedView)->Arg(5000)->Unit(benchmark::kMillisecond)->Iterations(1);

} // namespace

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
