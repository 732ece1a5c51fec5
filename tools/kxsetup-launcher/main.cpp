// kxsetup (installed): prepares the user's data folder and starts the application in it.
// The application itself lives in ../lib/kxsetup/ beside the helper program; the installed
// data in ../share/kxsetup/data/. Files named on the command line (a double click on a
// setup file) are passed on with absolute paths, since the application starts elsewhere.
#include "DataHome.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>

#include <cstdio>
#include <unistd.h>
#include <vector>

int main(int argc, char** argv) {
    QCoreApplication app(argc, argv);
    const QString prefix =
        QDir(QCoreApplication::applicationDirPath() + QStringLiteral("/..")).canonicalPath();
    const QString program = prefix + QStringLiteral("/lib/kxsetup/kxsetup");
    const QString helper = prefix + QStringLiteral("/lib/kxsetup/serialup.exe");
    const QString installed = prefix + QStringLiteral("/share/kxsetup/data");
    const QString home = launcher::dataHome(QProcessEnvironment::systemEnvironment());

    const launcher::SeedResult seeded = launcher::seedDataHome(installed, home, helper);
    if (!seeded.ok) {
        std::fprintf(stderr, "kxsetup: %s\n", qPrintable(seeded.error));
        return 1;
    }
    QList<QByteArray> args{QFile::encodeName(program)};
    for (int i = 1; i < argc; ++i) {
        const QString arg = QString::fromLocal8Bit(argv[i]);
        args << (arg.startsWith(QLatin1Char('-'))
                     ? arg.toLocal8Bit()
                     : QFile::encodeName(QFileInfo(arg).absoluteFilePath()));
    }
    if (!QDir::setCurrent(home)) {
        std::fprintf(stderr, "kxsetup: cannot enter %s\n", qPrintable(home));
        return 1;
    }
    std::vector<char*> raw;
    for (QByteArray& a : args) {
        raw.push_back(a.data());
    }
    raw.push_back(nullptr);
    ::execv(raw.front(), raw.data());
    std::fprintf(stderr, "kxsetup: cannot start %s\n", qPrintable(program));
    return 1;
}
