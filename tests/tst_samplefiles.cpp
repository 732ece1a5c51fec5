// The sample data set as built into the runtime data folder: every version is in the
// catalogue and loads without problems, the memory map keeps settings and program data apart
// and off phantom bytes, the help identifiers follow the preset scheme the merge relies on
// (what the merge converts between generations: cli-migrate.t), every help identifier has a
// help text, and saving round-trips. kxsetup-cli set on those files: every setting kind can
// be changed, and the saved image differs from an unchanged save exactly in the bytes of the
// settings named and of their re-evaluated dependents, in every generation (phantom bytes
// included); saving in place keeps the file's permissions; edits survive re-opening and
// re-saving. Refusals and -o: cli-set.t.
#include "sf/SettingManager.h"
#include "sf/parser/PhantomBytes.h"
#include "sf/parser/PhantomProcessor.h"
#include "support/CliRunner.h"
#include "support/SampleData.h"
#include "support/TableFile.h"
#include "support/TestSupport.h"

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFileInfo>
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

const Generation* generationOf(const QString& fw) {
    for (const Generation& g : generations()) {
        if (g.fw == fw) {
            return &g;
        }
    }
    return nullptr;
}

CliResult set(const QStringList& args) {
    return runCli(QStringList{QStringLiteral("-C"), runtimeDir(), QStringLiteral("set")} + args);
}

QStringList get(const QString& file, const QStringList& names) {
    const CliResult run = runCli(
        QStringList{QStringLiteral("-C"), runtimeDir(), QStringLiteral("get"), file} + names);
    return run.exitCode == 0
               ? run.out.split(QLatin1Char('\n'), Qt::SkipEmptyParts)
               : QStringList{QStringLiteral("exit %1: %2").arg(run.exitCode).arg(run.err)};
}

// The settings whose spans hold an address at which the two images differ; "?" for a
// differing address that lies in no setting.
QSet<QString> changedSpans(const QString& before, const QString& after, const QList<Span>& spans) {
    QMap<quint64, quint8> a;
    QMap<quint64, quint8> b;
    QSet<QString> changed;
    if (!imageBytes(before, &a) || !imageBytes(after, &b)) {
        return {QStringLiteral("unreadable")};
    }
    const QList<quint64> addresses = a.keys() + b.keys();
    for (quint64 address : addresses) {
        if (a.contains(address) && b.contains(address) && a.value(address) == b.value(address)) {
            continue;
        }
        QString owner = QStringLiteral("?");
        for (const Span& s : spans) {
            if (address >= s.address && address < s.address + s.span) {
                owner = s.code;
            }
        }
        changed.insert(owner);
    }
    return changed;
}

// The settings whose real bytes, as the image reader reads them, differ.
QSet<QString> changedValues(const QString& before, const QString& after, const QList<Span>& spans,
                            int processor) {
    const QHash<QString, QByteArray> a = settingBytes(before, spans, processor);
    const QHash<QString, QByteArray> b = settingBytes(after, spans, processor);
    QSet<QString> changed;
    for (const Span& s : spans) {
        if (!a.contains(s.code) || !b.contains(s.code) || a.value(s.code) != b.value(s.code)) {
            changed.insert(s.code);
        }
    }
    return changed;
}

// Sets the file's modification time back so that a rewrite would show.
bool ageFile(const QString& path) {
    QFile f(path);
    return f.open(QIODevice::ReadWrite) && f.setFileTime(QDateTime::currentDateTime().addDays(-3),
                                                         QFileDevice::FileModificationTime);
}

QDateTime modified(const QString& path) {
    return QFileInfo(path).lastModified();
}

} // namespace

class TestSampleFiles : public QObject {
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

    void changesExactlyItsBytes_data() { testsupport::loadTable(); }

    void changesExactlyItsBytes() {
        QFETCH(QString, fw);
        QFETCH(QStringList, assignments);
        QFETCH(QStringList, changed);
        QFETCH(QStringList, query);
        QFETCH(QStringList, answer);
        const Generation* g = generationOf(fw);
        QVERIFY(g);
        QTemporaryDir tmp;
        const QString base = tmp.filePath(QStringLiteral("base.hex"));
        const QString edited = tmp.filePath(QStringLiteral("edited.hex"));
        QCOMPARE(set({firmwarePath(*g), QStringLiteral("SpdUnits=0"), QStringLiteral("-o"), base})
                     .exitCode,
                 0);
        const CliResult run =
            set(QStringList{firmwarePath(*g), QStringLiteral("-o"), edited} + assignments);
        QCOMPARE(run.exitCode, 0);
        QVERIFY2(run.err.isEmpty(), qPrintable(run.err));

        const QList<Span> spans = layoutSpans(layoutPath(g->kxs), g->processor);
        const QSet<QString> expected(changed.begin(), changed.end());
        QCOMPARE(changedSpans(base, edited, spans), expected);
        QCOMPARE(changedValues(base, edited, spans, g->processor), expected);
        // set reports each changed setting once.
        QSet<QString> reported;
        for (const QString& line : run.out.split(QLatin1Char('\n'), Qt::SkipEmptyParts)) {
            reported.insert(line.section(QLatin1Char(':'), 0, 0));
        }
        QCOMPARE(reported, expected);
        QCOMPARE(get(edited, query), answer);
    }

    void inPlaceReplacesFile() {
        const Generation* g = generationOf(QStringLiteral("4.01"));
        QTemporaryDir tmp;
        const QString file = copyInto(firmwarePath(*g), tmp.path(), QStringLiteral("setup.hex"));
        QVERIFY(!file.isEmpty() && ageFile(file));
        QVERIFY(
            QFile(file).setPermissions(QFile::ReadOwner | QFile::WriteOwner | QFile::ReadGroup));
        const QDateTime time = modified(file);
        QCOMPARE(set({file, QStringLiteral("Backlight=40")}).exitCode, 0);
        QVERIFY(modified(file) > time);
        QCOMPARE(QFile(file).permissions() &
                     (QFile::ReadOwner | QFile::WriteOwner | QFile::ReadGroup | QFile::ReadOther),
                 QFile::ReadOwner | QFile::WriteOwner | QFile::ReadGroup);
        QCOMPARE(get(file, {QStringLiteral("Backlight")}), QStringList{QStringLiteral("40")});
        QCOMPARE(QDir(tmp.path()).entryList(QDir::Files | QDir::Hidden),
                 QStringList{QStringLiteral("setup.hex")});
    }

    void editsSurviveReopening_data() {
        QTest::addColumn<QString>("fw");
        for (const Generation& g : generations()) {
            QTest::newRow(qPrintable(g.fw)) << g.fw;
        }
    }

    // Edit, save, re-open and edit again in place, then save unchanged: the second save is
    // byte-identical and both edits are there.
    void editsSurviveReopening() {
        QFETCH(QString, fw);
        const Generation* g = generationOf(fw);
        QTemporaryDir tmp;
        const QString first = tmp.filePath(QStringLiteral("first.hex"));
        const QString second = tmp.filePath(QStringLiteral("second.hex"));
        QCOMPARE(set({firmwarePath(*g), QStringLiteral("BattCapB=33.33"),
                      QStringLiteral("Screens[3]=0"), QStringLiteral("-o"), first})
                     .exitCode,
                 0);
        QCOMPARE(
            set({first, QStringLiteral("CellChem@30001.B=SLA"), QStringLiteral("TempOffset=-20")})
                .exitCode,
            0);
        QCOMPARE(
            set({first, QStringLiteral("CellChemB=SLA"), QStringLiteral("-o"), second}).exitCode,
            0);
        QCOMPARE(testsupport::readFile(second), testsupport::readFile(first));
        QCOMPARE(get(second, {QStringLiteral("BattCapB"), QStringLiteral("Screens[3]"),
                              QStringLiteral("CellChemB"), QStringLiteral("TempOffset")}),
                 (QStringList{QStringLiteral("33.33"), QStringLiteral("0"), QStringLiteral("6"),
                              QStringLiteral("-20")}));
    }
};

QTEST_GUILESS_MAIN(TestSampleFiles)
#include "tst_samplefiles.moc"
