#include "Command.h"

#include <QCoreApplication>
#include <QDir>
#include <QLoggingCategory>

#include <algorithm>
#include <cstdio>

namespace cli {

std::vector<Command>& commands() {
    static std::vector<Command> all;
    return all;
}

QString Context::filePath(const QString& name) const {
    return QDir(startDir).absoluteFilePath(name);
}

bool takeFlag(QStringList& args, const QString& flag) {
    return args.removeAll(flag) > 0;
}

bool takeOption(QStringList& args, const QString& name, QString& value, bool& found,
                QString& error) {
    found = false;
    for (int i = 0; i < args.size(); ++i) {
        const QString& a = args.at(i);
        if (a == name) {
            if (i + 1 >= args.size()) {
                error = QStringLiteral("option %1 needs a value").arg(name);
                return false;
            }
            value = args.at(i + 1);
            args.removeAt(i + 1);
            args.removeAt(i);
            found = true;
            --i;
        } else if (a.startsWith(name + QLatin1Char('='))) {
            value = a.mid(name.size() + 1);
            args.removeAt(i);
            found = true;
            --i;
        }
    }
    return true;
}

static const Command* findCommand(const QString& name) {
    for (const Command& c : commands()) {
        if (c.name == name) {
            return &c;
        }
    }
    return nullptr;
}

int usageError(Context& ctx, const QString& command, const QString& message) {
    ctx.err << "kxsetup-cli: " << message << "\n";
    if (const Command* c = findCommand(command)) {
        ctx.err << "usage: kxsetup-cli [-C DIR] " << c->usage << "\n";
    }
    ctx.err.flush();
    return ExitUsage;
}

int inputError(Context& ctx, const QString& file, const QString& what) {
    ctx.err << "kxsetup-cli: " << file << ": " << what << "\n";
    ctx.err.flush();
    return ExitInput;
}

} // namespace cli

static void printHelp(QTextStream& out) {
    out << "usage: kxsetup-cli [-C DIR] COMMAND [ARGS...]\n"
           "       kxsetup-cli help [COMMAND]\n\n"
           "Works with Korvex setup files, firmware files and settings layouts.\n"
           "-C DIR  resolve the data folder (./data/...) against DIR instead of the\n"
           "        current directory\n\n"
           "Commands:\n";
    std::vector<cli::Command> sorted = cli::commands();
    std::sort(sorted.begin(), sorted.end(),
              [](const cli::Command& a, const cli::Command& b) { return a.name < b.name; });
    for (const cli::Command& c : sorted) {
        out << "  " << c.usage.leftJustified(44) << " " << c.summary << "\n";
    }
    out << "\nExit status: 0 success, 1 usage error, 2 unreadable input or refused value.\n";
}

namespace {

// The library's diagnostics go through its logging categories (util/Logging.h), whose
// debug messages are off unless QT_LOGGING_RULES (or KX_DEBUG, for all of them) turns them
// on; a debug message outside them is shown only with KX_DEBUG, so that standard error
// carries the tool's own messages. Each line names its category.
void quietDebug(QtMsgType type, const QMessageLogContext& context, const QString& message) {
    static const bool show = qEnvironmentVariableIsSet("KX_DEBUG");
    const bool ours = context.category && qstrncmp(context.category, "kx.", 3) == 0;
    if (type == QtDebugMsg && !show && !ours) {
        return;
    }
    if (ours) {
        std::fprintf(stderr, "%s: %s\n", context.category, qPrintable(message));
    } else {
        std::fprintf(stderr, "%s\n", qPrintable(message));
    }
}

} // namespace

int main(int argc, char** argv) {
    qInstallMessageHandler(quietDebug);
    if (qEnvironmentVariableIsSet("KX_DEBUG")) {
        QLoggingCategory::setFilterRules(QStringLiteral("kx.*.debug=true"));
    }
    QCoreApplication app(argc, argv);
    QTextStream out(stdout);
    QTextStream err(stderr);

    QStringList args = QCoreApplication::arguments().mid(1);
    const QString startDir = QDir::currentPath();
    QString baseDir = startDir;
    while (!args.isEmpty() && args.first().startsWith(QLatin1Char('-'))) {
        const QString opt = args.takeFirst();
        if (opt == QLatin1String("-C")) {
            if (args.isEmpty()) {
                err << "kxsetup-cli: -C needs a folder\n";
                return cli::ExitUsage;
            }
            baseDir = QDir(args.takeFirst()).absolutePath();
        } else if (opt == QLatin1String("--help") || opt == QLatin1String("-h")) {
            printHelp(out);
            return cli::ExitOk;
        } else {
            err << "kxsetup-cli: unknown option " << opt << "\n";
            printHelp(err);
            return cli::ExitUsage;
        }
    }
    if (args.isEmpty()) {
        printHelp(err);
        return cli::ExitUsage;
    }
    const QString name = args.takeFirst();
    if (name == QLatin1String("help")) {
        if (!args.isEmpty()) {
            if (const cli::Command* c = cli::findCommand(args.first())) {
                out << "usage: kxsetup-cli [-C DIR] " << c->usage << "\n" << c->summary << "\n";
                return cli::ExitOk;
            }
        }
        printHelp(out);
        return cli::ExitOk;
    }
    const cli::Command* command = cli::findCommand(name);
    if (!command) {
        err << "kxsetup-cli: unknown command \"" << name << "\"\n";
        printHelp(err);
        return cli::ExitUsage;
    }
    if (args.contains(QLatin1String("--help")) || args.contains(QLatin1String("-h"))) {
        out << "usage: kxsetup-cli [-C DIR] " << command->usage << "\n" << command->summary << "\n";
        return cli::ExitOk;
    }
    if (!QDir(baseDir).exists()) {
        err << "kxsetup-cli: " << baseDir << ": no such folder\n";
        return cli::ExitInput;
    }
    // The data paths are relative to the working directory, as in the application.
    QDir::setCurrent(baseDir);
    cli::Context ctx{args, baseDir, startDir, out, err};
    const int rc = command->run(ctx);
    out.flush();
    err.flush();
    return rc;
}
