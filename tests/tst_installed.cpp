// The installed program. The launcher's per-user data folder: seeded on the first start,
// refreshed when the installed data changes without overwriting what the user changed, added
// or removed, and the helper program linked in (one scenario walks through three
// installations). The setup file type as the package installs it, ahead of the system's: a
// setup file (Intel HEX whose first record is one of our metadata records) is recognised by
// its content, as a .hex file or without an extension; other HEX files are plain Intel HEX;
// firmware files go by their extension, and the desktop file offers the application for
// setup files.
#include "DataHome.h"
#include "support/TableFile.h"
#include "support/TestSupport.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QMimeDatabase>
#include <QSettings>
#include <QTemporaryDir>
#include <QtTest>

using launcher::seedDataHome;

class TestInstalled : public QObject {
    Q_OBJECT
    QTemporaryDir m_mimeData;

private slots:
    void dataHomeFollowsXdg_data() { testsupport::loadTable(); }
    void dataHomeFollowsXdg() {
        QFETCH(QString, xdg);
        QFETCH(QString, expected);
        QProcessEnvironment env;
        env.insert(QStringLiteral("HOME"), QStringLiteral("/home/rider"));
        if (!xdg.isEmpty()) {
            env.insert(QStringLiteral("XDG_DATA_HOME"), xdg);
        }
        QCOMPARE(launcher::dataHome(env), expected);
    }

    void installationsComeAndGo() {
        QTemporaryDir tmp;
        const QString installed = tmp.filePath(QStringLiteral("share/data"));
        const QString home = tmp.filePath(QStringLiteral("home/kxsetup"));
        const QString helper = tmp.filePath(QStringLiteral("lib/serialup.exe"));
        QVERIFY(testsupport::writeFile(helper, "#!helper"));
        const auto installedFile = [&](const char* name, const QByteArray& bytes) {
            return testsupport::writeFile(installed + QLatin1Char('/') + QLatin1String(name),
                                          bytes);
        };
        const auto at = [&](const char* name) { return QDir(home).filePath(QLatin1String(name)); };
        QVERIFY(installedFile("device.txt", "devices 1"));
        QVERIFY(installedFile("firmware/kx3/3.10.kxhex", "fw 3.10"));
        QVERIFY(installedFile("help/3.10_help.html", "help 1"));
        QVERIFY(installedFile("kxs/KX3-3.10.kxs", "layout 3.10"));

        // First start: everything copied, the folders the application writes to made, the
        // helper linked.
        launcher::SeedResult r = seedDataHome(installed, home, helper);
        QVERIFY2(r.ok, qPrintable(r.error));
        QCOMPARE(r.copied.size(), 4);
        QCOMPARE(testsupport::readFile(at("data/firmware/kx3/3.10.kxhex")), QByteArray("fw 3.10"));
        QVERIFY(QFileInfo(at("setups/backups")).isDir());
        QVERIFY(QFileInfo(at("data/serialup.exe")).isSymLink());
        QCOMPARE(testsupport::readFile(at("data/serialup.exe")), QByteArray("#!helper"));

        // The user works: edits the help, downloads firmware, saves a setup, removes a
        // firmware version. The same installation starts again: nothing changes.
        QVERIFY(testsupport::writeFile(at("data/help/3.10_help.html"), "my notes"));
        QVERIFY(testsupport::writeFile(at("data/firmware/kx3/3.20.kxhex"), "downloaded 3.20"));
        QVERIFY(testsupport::writeFile(at("setups/bike.hex"), "my setup"));
        QVERIFY(QFile::remove(at("data/kxs/KX3-3.10.kxs")));
        r = seedDataHome(installed, home, helper);
        QVERIFY(r.ok);
        QCOMPARE(r.copied, QStringList());
        QVERIFY(!QFileInfo::exists(at("data/kxs/KX3-3.10.kxs")));

        // A new installation changes every file it had and brings new ones, one of them at
        // the path of the user's download.
        QVERIFY(installedFile("device.txt", "devices 2"));
        QVERIFY(installedFile("firmware/kx3/3.10.kxhex", "fw 3.10 fixed"));
        QVERIFY(installedFile("help/3.10_help.html", "help 2"));
        QVERIFY(installedFile("kxs/KX3-3.10.kxs", "layout 3.10 fixed"));
        QVERIFY(installedFile("firmware/kx3/3.20.kxhex", "packaged 3.20"));
        QVERIFY(installedFile("kxs/KX3-3.20.kxs", "layout 3.20"));
        r = seedDataHome(installed, home, helper);
        QVERIFY2(r.ok, qPrintable(r.error));
        r.copied.sort();
        QCOMPARE(r.copied, QStringList({"data/device.txt", "data/firmware/kx3/3.10.kxhex",
                                        "data/kxs/KX3-3.20.kxs"}));
        QCOMPARE(testsupport::readFile(at("data/device.txt")), QByteArray("devices 2"));
        QCOMPARE(testsupport::readFile(at("data/help/3.10_help.html")), QByteArray("my notes"));
        QCOMPARE(testsupport::readFile(at("data/firmware/kx3/3.20.kxhex")),
                 QByteArray("downloaded 3.20"));
        QCOMPARE(testsupport::readFile(at("setups/bike.hex")), QByteArray("my setup"));
        QVERIFY(!QFileInfo::exists(at("data/kxs/KX3-3.10.kxs"))); // removed stays removed

        // The helper moved: the link follows; a helper the user put there is left alone.
        const QString moved = tmp.filePath(QStringLiteral("lib2/serialup.exe"));
        QVERIFY(testsupport::writeFile(moved, "#!helper 2"));
        QVERIFY(seedDataHome(installed, home, moved).ok);
        QCOMPARE(testsupport::readFile(at("data/serialup.exe")), QByteArray("#!helper 2"));
        QVERIFY(QFile::remove(at("data/serialup.exe")) &&
                testsupport::writeFile(at("data/serialup.exe"), "mine"));
        QVERIFY(seedDataHome(installed, home, helper).ok);
        QCOMPARE(testsupport::readFile(at("data/serialup.exe")), QByteArray("mine"));
    }

    void refusals() {
        QTemporaryDir tmp;
        const QString home = tmp.filePath(QStringLiteral("home"));
        launcher::SeedResult r =
            seedDataHome(tmp.filePath(QStringLiteral("nothing")), home, QStringLiteral("/x"));
        QVERIFY(!r.ok);
        QVERIFY(r.error.contains(QStringLiteral("is missing")));
        QVERIFY(!QFileInfo::exists(home)); // nothing made

        QVERIFY(testsupport::writeFile(tmp.filePath(QStringLiteral("data/device.txt")), "d"));
        QVERIFY(
            testsupport::writeFile(tmp.filePath(QStringLiteral("file")), "a file, not a folder"));
        r = seedDataHome(tmp.filePath(QStringLiteral("data")), tmp.filePath(QStringLiteral("file")),
                         QStringLiteral("/x"));
        QVERIFY(!r.ok);
        QVERIFY(r.error.startsWith(QStringLiteral("Cannot create the data folder")));
    }

    // The type definitions as installed, ahead of the system's.
    void initTestCase() {
        QVERIFY(QDir().mkpath(m_mimeData.filePath(QStringLiteral("mime/packages"))));
        QVERIFY(
            QFile::copy(testsupport::sourceDir() + QStringLiteral("/packaging/kxsetup-mime.xml"),
                        m_mimeData.filePath(QStringLiteral("mime/packages/kxsetup.xml"))));
        qputenv("XDG_DATA_DIRS",
                QFile::encodeName(m_mimeData.path()) + ":/usr/local/share:/usr/share");
    }

    void byContent_data() { testsupport::loadTable(); }
    void byContent() {
        QFETCH(QString, name);
        QFETCH(QByteArray, text);
        QFETCH(QString, type);
        QTemporaryDir tmp;
        const QString path = tmp.filePath(name);
        QVERIFY(testsupport::writeFile(path, text));
        const QMimeType found = QMimeDatabase().mimeTypeForFile(path);
        QCOMPARE(found.name(), type);
        if (type == QLatin1String("application/x-kxsetup-hex")) {
            QVERIFY(found.inherits(QStringLiteral("text/plain")));
        }
    }

    void desktopFileOpensSetupFiles() {
        QSettings desktop(testsupport::sourceDir() + QStringLiteral("/packaging/kxsetup.desktop"),
                          QSettings::IniFormat);
        desktop.beginGroup(QStringLiteral("Desktop Entry"));
        QCOMPARE(desktop.value(QStringLiteral("Exec")).toString(), QStringLiteral("kxsetup %F"));
        QVERIFY(desktop.value(QStringLiteral("MimeType"))
                    .toString()
                    .split(QLatin1Char(';'))
                    .contains(QStringLiteral("application/x-kxsetup-hex")));
    }
};

QTEST_GUILESS_MAIN(TestInstalled)
#include "tst_installed.moc"
