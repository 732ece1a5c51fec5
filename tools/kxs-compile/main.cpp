// kxs-compile SOURCE -o OUT.kxs
// Compiles layout source text (docs/layout-source-format.md) into a binary layout file.
// Exit status: 0 success, 1 usage error, 2 unreadable or invalid source or unwritable
// output.

#include "kxs/compiler/LayoutCompiler.h"

#include <QCoreApplication>
#include <QFile>
#include <QSaveFile>
#include <QStringList>
#include <QTextStream>

namespace {

enum Exit { ExitOk = 0, ExitUsage = 1, ExitInput = 2 };

const char* const USAGE = "usage: kxs-compile SOURCE -o OUT.kxs\n";

void printHelp(QTextStream& out) {
    out << USAGE
        << "\nCompiles a layout source file into a binary Korvex layout file (.kxs).\n"
           "  -o FILE    the layout file to write\n"
           "  --help     show this help\n"
           "\nErrors are printed as SOURCE:LINE: message.\n"
           "Exit status: 0 success, 1 usage error, 2 invalid source or file error.\n";
}

int usage(QTextStream& err, const QString& message) {
    err << "kxs-compile: " << message << "\n" << USAGE;
    return ExitUsage;
}

} // namespace

int main(int argc, char** argv) {
    QCoreApplication app(argc, argv);
    QTextStream out(stdout);
    QTextStream err(stderr);

    QStringList args = QCoreApplication::arguments().mid(1);
    QString source;
    QString output;
    for (int i = 0; i < args.size(); ++i) {
        const QString& a = args.at(i);
        if (a == QLatin1String("--help") || a == QLatin1String("-h")) {
            printHelp(out);
            return ExitOk;
        }
        if (a == QLatin1String("-o")) {
            if (i + 1 >= args.size()) {
                return usage(err, QStringLiteral("-o needs a file name"));
            }
            if (!output.isEmpty()) {
                return usage(err, QStringLiteral("-o is given twice"));
            }
            output = args.at(++i);
        } else if (a.startsWith(QLatin1Char('-')) && a != QLatin1String("-")) {
            return usage(err, QStringLiteral("unknown option %1").arg(a));
        } else if (source.isEmpty()) {
            source = a;
        } else {
            return usage(err, QStringLiteral("only one source file can be compiled"));
        }
    }
    if (source.isEmpty()) {
        return usage(err, QStringLiteral("no source file given"));
    }
    if (output.isEmpty()) {
        return usage(err, QStringLiteral("no output file given (-o OUT.kxs)"));
    }

    QFile in(source);
    if (!in.open(QIODevice::ReadOnly)) {
        err << "kxs-compile: " << source << ": cannot read: " << in.errorString() << "\n";
        return ExitInput;
    }
    const QString text = QString::fromUtf8(in.readAll());

    QByteArray bytes;
    kxs::compiler::LayoutCompiler::Error error;
    if (!kxs::compiler::LayoutCompiler::compileDetailed(text, &bytes, &error)) {
        err << source << ":" << error.line << ": " << error.message << "\n";
        return ExitInput;
    }

    QSaveFile file(output);
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size() || !file.commit()) {
        err << "kxs-compile: " << output << ": cannot write: " << file.errorString() << "\n";
        return ExitInput;
    }
    return ExitOk;
}
