// Loading, reading, merging and writing setup images: a ~20 MB firmware-sized HEX file
// (made at start into a temporary folder) and a settings-sized one.
#include "sf/RawSetting.h"
#include "sf/parser/HexParser.h"

#include <QBuffer>
#include <QFile>
#include <QTemporaryDir>

#include <benchmark/benchmark.h>

#include <cstdio>
#include <memory>
#include <random>

using sf::parser::HexParser;
using sf::parser::Inhex32Entry;
using sf::parser::RecordList;

namespace {

QString g_largeFile;
qint64 g_largeSize = 0;

// 16-byte data records of pseudo-random bytes over [0, bytes), with extended-address
// records every 64 KiB: 0x720000 bytes make a file of about 21 MB.
RecordList imageRecords(quint32 bytes, quint32 seed) {
    RecordList records;
    std::mt19937 rng(seed);
    quint16 upper = 0;
    for (quint32 at = 0; at < bytes; at += 16) {
        if ((at >> 16) != upper) {
            upper = static_cast<quint16>(at >> 16);
            records.push_back(Inhex32Entry::extendedAddress(upper));
        }
        quint8 data[16];
        for (quint8& b : data) {
            b = static_cast<quint8>(rng());
        }
        records.push_back(
            std::make_unique<Inhex32Entry>(Inhex32Entry::TypeData, at & 0xFFFF, data, 16));
    }
    return records;
}

bool makeLargeFile(const QString& path) {
    HexParser parser;
    parser.loadHexData(QByteArray(), sf::parser::PhantomNone);
    parser.replaceFileContents(imageRecords(0x720000, 1));
    parser.setFwVersion(QStringLiteral("KX4.01"));
    parser.setKxsVersion(QStringLiteral("KX4p01"));
    QFile file(path);
    return file.open(QIODevice::WriteOnly) && parser.writeToDevice(&file, false, 16);
}

// A settings file: 0x200 bytes at 0x1E000 in 16-byte lines.
QByteArray settingsImage() {
    HexParser parser;
    parser.loadHexData(QByteArray(), sf::parser::PhantomEvery4);
    RecordList records = imageRecords(0x200, 2);
    for (auto& r : records) {
        r->setAddress(static_cast<quint16>(0xE000 + r->getAddress()));
    }
    records.insert(records.begin(), Inhex32Entry::extendedAddress(1));
    parser.replaceFileContents(records);
    QByteArray text;
    QBuffer buffer(&text);
    buffer.open(QIODevice::WriteOnly);
    parser.writeToDevice(&buffer, false, 16);
    return text;
}

void BM_LoadLargeFile(benchmark::State& state) {
    for (auto _ : state) {
        HexParser parser;
        if (!parser.loadHex(g_largeFile, sf::parser::PhantomNone, QIODevice::ReadOnly)) {
            state.SkipWithError("load failed");
            break;
        }
        benchmark::DoNotOptimize(parser.records().size());
    }
    state.SetBytesProcessed(state.iterations() * g_largeSize);
}
BENCHMARK(BM_LoadLargeFile)->Unit(benchmark::kMillisecond);

void BM_MetadataReaders(benchmark::State& state) {
    for (auto _ : state) {
        benchmark::DoNotOptimize(HexParser::getFwVersion(g_largeFile));
        benchmark::DoNotOptimize(HexParser::getKxsVersion(g_largeFile));
        benchmark::DoNotOptimize(HexParser::getEnqString(g_largeFile)); // absent: full scan
    }
}
BENCHMARK(BM_MetadataReaders)->Unit(benchmark::kMillisecond);

// Reads spread over the first 64 KiB of the large image (4096 records).
void BM_ReadDataLargeImage(benchmark::State& state) {
    HexParser parser;
    parser.loadHex(g_largeFile, sf::parser::PhantomNone, QIODevice::ReadOnly);
    std::mt19937 rng(3);
    for (auto _ : state) {
        const quint32 address = rng() % 0xFF00;
        benchmark::DoNotOptimize(parser.readData(address, 32));
    }
}
BENCHMARK(BM_ReadDataLargeImage);

// What loading a setup file costs the settings manager: every 4-byte setting of a
// 0x200-byte settings image, with phantom bytes every fourth address.
void BM_ReadAllSettings(benchmark::State& state) {
    HexParser parser;
    parser.loadHexData(settingsImage(), sf::parser::PhantomEvery4);
    for (auto _ : state) {
        for (quint32 address = 0xE000; address + 6 <= 0xE200; address += 4) {
            benchmark::DoNotOptimize(parser.readData(address, 3));
        }
    }
}
BENCHMARK(BM_ReadAllSettings);

// Writing back: records for 128 settings merged into the settings image.
void BM_MergeSettings(benchmark::State& state) {
    HexParser source;
    source.loadHexData(settingsImage(), sf::parser::PhantomEvery4);
    std::vector<std::unique_ptr<sf::RawSetting>> settings;
    QList<sf::RawSetting*> list;
    for (int i = 0; i < 128; ++i) {
        settings.push_back(std::make_unique<sf::RawSetting>(QStringLiteral("s%1").arg(i), 3,
                                                            0x1E000 + 4 * i, true, false));
        settings.back()->setData("abc");
        list.append(settings.back().get());
    }
    RecordList records;
    source.getRawSettingsAsHexData(list, records, true, 0x1E000, 0x1E200);
    for (auto _ : state) {
        HexParser parser;
        parser.loadHexData(settingsImage(), sf::parser::PhantomEvery4);
        parser.addToFile(records);
        benchmark::DoNotOptimize(parser.records().size());
    }
}
BENCHMARK(BM_MergeSettings)->Unit(benchmark::kMicrosecond);

// Large merge: a second 20 MB image's records merged over the first.
void BM_MergeLargeImages(benchmark::State& state) {
    const RecordList added = imageRecords(0x720000, 4);
    for (auto _ : state) {
        state.PauseTiming();
        HexParser parser;
        parser.loadHex(g_largeFile, sf::parser::PhantomNone, QIODevice::ReadWrite);
        state.ResumeTiming();
        parser.addToFile(added);
        benchmark::DoNotOptimize(parser.records().size());
    }
}
BENCHMARK(BM_MergeLargeImages)->Unit(benchmark::kMillisecond)->Iterations(3);

void BM_WriteLargeFile(benchmark::State& state) {
    HexParser parser;
    parser.loadHex(g_largeFile, sf::parser::PhantomNone, QIODevice::ReadOnly);
    const bool reformat = state.range(0) != 0;
    for (auto _ : state) {
        QFile sink(QStringLiteral("/dev/null"));
        sink.open(QIODevice::WriteOnly);
        if (!parser.writeToDevice(&sink, reformat, 16)) {
            state.SkipWithError("write failed");
            break;
        }
    }
    state.SetBytesProcessed(state.iterations() * g_largeSize);
}
BENCHMARK(BM_WriteLargeFile)->Arg(0)->Arg(1)->Unit(benchmark::kMillisecond);

} // namespace

int main(int argc, char** argv) {
    benchmark::Initialize(&argc, argv);
    QTemporaryDir dir;
    g_largeFile = dir.filePath(QStringLiteral("large.hex"));
    if (!dir.isValid() || !makeLargeFile(g_largeFile)) {
        std::fprintf(stderr, "cannot make the benchmark file\n");
        return 1;
    }
    g_largeSize = QFile(g_largeFile).size();
    std::fprintf(stderr, "benchmark file: %lld bytes\n", static_cast<long long>(g_largeSize));
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
