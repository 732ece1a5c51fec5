// The setup file type the package installs: a setup file (Intel HEX whose first record is
// one of our metadata records) is recognised by its content, as a .hex file or without an
// extension; other HEX files are plain Intel HEX; firmware files go by their extension, and the
// desktop file offers the application for setup files.
#include "support/TableFile.h"
#include "support/TestSupport.h"

#include <QDir>
#include <QFile>
#include <QMimeDatabase>
#include <QSettings>
#include <QTemporaryDir>
#include <QtTest>

class TestMimeType : public QObject {
    Q_OBJECT
private slots:
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

int main(int argc, char** argv) {
    // The type definitions as installed, ahead of the system's.
    QTemporaryDir data;
    QDir().mkpath(data.filePath(QStringLiteral("mime/packages")));
    QFile::copy(testsupport::sourceDir() + QStringLiteral("/packaging/kxsetup-mime.xml"),
                data.filePath(QStringLiteral("mime/packages/kxsetup.xml")));
    qputenv("XDG_DATA_DIRS", QFile::encodeName(data.path()) + ":/usr/local/share:/usr/share");
    QCoreApplication app(argc, argv);
    TestMimeType test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_mimetype.moc"
