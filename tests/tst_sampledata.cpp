// The sample data set as built into the runtime data folder: every version is in the
// catalogue and loads without problems, the memory map keeps settings and program data
// apart and off phantom bytes, the help identifiers follow the preset scheme the merge
// relies on (what the merge converts between generations: cli-migrate.t), every help
// identifier has a help text, and saving round-trips.
#include "support/CliRunner.h"
#include "support/SampleData.h"

#include "sf/SettingManager.h"
#include "sf/parser/PhantomBytes.h"
#include "sf/parser/PhantomProcessor.h"

#include <QFile>
#include <QJsonArray>
#include <QSet>
#include <QTemporaryDir>
#include <QtTest>

using namespace sampledata;
using testsupport::CliResult;
using testsupport::jsonOf;
using testsupport::runCli;

Q_DECLARE_METATYPE(sampledata::Generation)

namespace {

CliResult dumpJson(const QString& file) {
    return runCli({QStringLiteral("-C"), runtimeDir(), QStringLiteral("dump"), file,
                   QStringLiteral("--json")});
}

void addGenerationRows() {
    QTest::addColumn<Generation>("generation");
    for (const Generation& g : generations()) {
        QTest::newRow(qPrintable(g.fw)) << g;
    }
}

// Settings region of a layout: layout (16-bit) start and end, and what to add to a
// layout address to get the image address in a firmware file.
struct Region {
    quint64 start;
    quint64 end;
    quint64 imageOffset;
};

Region regionOf(int processor) {
    return processor == sf::parser::PhantomNone ? Region{0x0000, 0x0400, 0x310000}
                                                : Region{0xE000, 0xE1E0, 0x10000};
}

QString presetSuffix(const QJsonObject& setting) {
    const int preset = setting.value(QStringLiteral("preset")).toInt();
    const QString code = setting.value(QStringLiteral("code")).toString();
    return preset == 0 ? QString() : QStringLiteral(".") + code.right(1);
}

} // namespace

class TestSampleData : public QObject {
    Q_OBJECT
private slots:
    void memoryMap_data() { addGenerationRows(); }

    // Settings start on real bytes, do not overlap and stay in the settings region; program
    // data never shares the low 16 address bits of a setting (the reader matches by them);
    // the defaults lie in the region at their image addresses.
    void memoryMap() {
        QFETCH(Generation, generation);
        const QList<Span> spans = layoutSpans(layoutPath(generation.kxs), generation.processor);
        QCOMPARE(spans.size(), generation.settings);
        const Region region = regionOf(generation.processor);
        const sf::parser::PhantomBytes phantoms(
            sf::parser::PhantomBytes::periodFor(generation.processor));

        QSet<quint64> used;
        for (const Span& s : spans) {
            QVERIFY2(!phantoms.isPhantom(s.address), qPrintable(s.code));
            QVERIFY2(s.address >= region.start && s.address + s.span <= region.end,
                     qPrintable(s.code));
            for (quint64 a = s.address; a < s.address + s.span; ++a) {
                QVERIFY2(!used.contains(a), qPrintable(s.code));
                used.insert(a);
            }
        }

        QMap<quint64, quint8> image;
        QVERIFY(imageBytes(firmwarePath(generation), &image));
        int program = 0;
        for (auto it = image.constBegin(); it != image.constEnd(); ++it) {
            const bool inRegion = it.key() >= region.start + region.imageOffset &&
                                  it.key() < region.end + region.imageOffset;
            if (!inRegion) {
                ++program;
                QVERIFY2(!used.contains(it.key() & 0xFFFF),
                         qPrintable(QString::number(it.key(), 16)));
            }
        }
        QVERIFY(program >= 1024);

        const QHash<QString, QByteArray> values =
            settingBytes(firmwarePath(generation), spans, generation.processor);
        for (const Span& s : spans) {
            QVERIFY2(values.contains(s.code), qPrintable(s.code));
            QByteArray atImage;
            for (quint64 a = s.address; a < s.address + s.span; ++a) {
                if (!phantoms.isPhantom(a)) {
                    atImage.append(static_cast<char>(image.value(a + region.imageOffset)));
                }
            }
            QCOMPARE(atImage, values.value(s.code));
        }
    }
    void helpIdentifiers_data() { addGenerationRows(); }

    // The first preset of a setting carries the plain help identifier, every further preset
    // the same followed by a point and its preset character; only presets end in a digit or
    // in A or B. The manager finds a help text for every help identifier: settings, bits and
    // category headings.
    void helpIdentifiers() {
        QFETCH(Generation, generation);
        const QJsonObject dump = jsonOf(dumpJson(firmwarePath(generation)));
        const QJsonArray settings = dump.value(QStringLiteral("settings")).toArray();
        QVERIFY(!settings.isEmpty());
        QHash<QString, QString> firstWsi; // base code name -> WSI of preset 0
        QSet<QString> wsis;
        for (const QJsonValue& value : settings) {
            const QJsonObject s = value.toObject();
            if (s.value(QStringLiteral("preset")).toInt() == 0 &&
                s.contains(QStringLiteral("wsi"))) {
                firstWsi.insert(s.value(QStringLiteral("base")).toString(),
                                s.value(QStringLiteral("wsi")).toString());
            }
        }
        for (const QJsonValue& value : settings) {
            const QJsonObject s = value.toObject();
            const QString code = s.value(QStringLiteral("code")).toString();
            const QString base = s.value(QStringLiteral("base")).toString();
            if (s.value(QStringLiteral("preset")).toInt() == 0 && base != code) {
                QVERIFY2(code.endsWith(QLatin1Char('A')) || code.endsWith(QLatin1Char('1')),
                         qPrintable(code));
            }
            if (!s.contains(QStringLiteral("wsi"))) {
                QVERIFY2(s.value(QStringLiteral("type")).toString().contains(QLatin1String("bool")),
                         qPrintable(code));
                continue;
            }
            const QString wsi = s.value(QStringLiteral("wsi")).toString();
            QVERIFY2(!wsis.contains(wsi), qPrintable(wsi));
            wsis.insert(wsi);
            QVERIFY2(firstWsi.contains(base), qPrintable(code));
            QCOMPARE(wsi, firstWsi.value(base) + presetSuffix(s));
        }

        QFile file(helpPath(generation.fw));
        QVERIFY(file.open(QIODevice::ReadOnly));
        sf::SettingManager manager;
        const int count = manager.parseTooltips(QString::fromUtf8(file.readAll()));
        for (const QJsonValue& value : dump.value(QStringLiteral("categories")).toArray()) {
            wsis.insert(value.toObject().value(QStringLiteral("label")).toString() +
                        sf::SettingManager::CATEGORY_WSI_SUFFIX);
        }
        wsis << QStringLiteral("Cruise@30008") << QStringLiteral("Walk@30008");
        for (const QString& wsi : wsis) {
            QVERIFY2(!manager.getTooltip(wsi).isEmpty(), qPrintable(wsi));
        }
        QCOMPARE(count, wsis.size());
    }
    void saveRoundTrips_data() { addGenerationRows(); }

    // A firmware file saved without changes holds the same setting bytes and only the settings
    // (saving again byte for byte the same is checked with the set command's tests).
    void saveRoundTrips() {
        QFETCH(Generation, generation);
        QTemporaryDir tmp;
        QVERIFY(tmp.isValid());
        const QString saved = tmp.filePath(QStringLiteral("saved.hex"));
        const CliResult run = runCli({QStringLiteral("-C"), runtimeDir(), QStringLiteral("set"),
                                      firmwarePath(generation), QStringLiteral("-o"), saved,
                                      QStringLiteral("SpdUnits=km/h")});
        QCOMPARE(run.exitCode, 0);
        QVERIFY2(run.out.isEmpty(), qPrintable(run.out));

        const QList<Span> spans = layoutSpans(layoutPath(generation.kxs), generation.processor);
        QCOMPARE(settingBytes(saved, spans, generation.processor),
                 settingBytes(firmwarePath(generation), spans, generation.processor));
        QMap<quint64, quint8> image;
        QVERIFY(imageBytes(saved, &image));
        quint64 low = ~quint64(0);
        quint64 high = 0;
        for (const Span& s : spans) {
            low = std::min<quint64>(low, s.address);
            high = std::max<quint64>(high, s.address + s.span);
        }
        QCOMPARE(image.firstKey(), low);
        QCOMPARE(image.lastKey() + 1, high);
    }
};

QTEST_GUILESS_MAIN(TestSampleData)
#include "tst_sampledata.moc"
