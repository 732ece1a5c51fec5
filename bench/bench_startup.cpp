// From process start to the main window's first paint, with the sample data, against a
// bare Qt Widgets window started the same way in the same run; and the peak memory of
// the application's process. Both run offscreen, report when their first paint ended
// (ui::FirstPaint) and quit.
#include "ui/FirstPaint.h"

#include <benchmark/benchmark.h>

#include <QCoreApplication>
#include <QProcess>

#include <sys/resource.h>

namespace {

// Starts the program and returns the ms from its start to the end of its first paint, as
// it reports it (negative: it did not paint).
double timeToFirstPaint(const QString& program, const QString& folder) {
    QProcess process;
    QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
    env.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("offscreen"));
    env.insert(QStringLiteral("KX_QUIT_AFTER_FIRST_PAINT"), QStringLiteral("1"));
    process.setProcessEnvironment(env);
    process.setWorkingDirectory(folder);
    process.setProcessChannelMode(QProcess::SeparateChannels);
    const qint64 started = ui::FirstPaint::now();
    process.start(program, QStringList());
    QByteArray said;
    while (process.waitForReadyRead(10000)) {
        said += process.readAllStandardOutput();
        if (said.startsWith("painted ") && said.endsWith('\n')) {
            const qint64 painted = said.mid(8).trimmed().toLongLong();
            process.waitForFinished(10000);
            return (painted - started) / 1e6;
        }
    }
    process.kill();
    process.waitForFinished();
    return -1;
}

void run(benchmark::State& state, const QString& program) {
    const QString folder = QStringLiteral(KX_BENCH_RUNTIME_DIR);
    for (auto _ : state) {
        const double ms = timeToFirstPaint(folder + QStringLiteral("/bin/") + program, folder);
        if (ms < 0) {
            state.SkipWithError("the program did not paint");
            return;
        }
        state.SetIterationTime(ms / 1000.0);
    }
    rusage usage{};
    getrusage(RUSAGE_CHILDREN, &usage);
    state.counters["peak_MB_any_child"] = usage.ru_maxrss / 1024.0;
}

void BM_BareWindowFirstPaint(benchmark::State& state) {
    run(state, QStringLiteral("bare_window"));
}
void BM_KxSetupFirstPaint(benchmark::State& state) {
    run(state, QStringLiteral("kxsetup"));
}

BENCHMARK(BM_BareWindowFirstPaint)->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(10);
BENCHMARK(BM_KxSetupFirstPaint)->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(10);

} // namespace

int main(int argc, char** argv) {
    QCoreApplication app(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
