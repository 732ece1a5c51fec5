#pragma once

#include <QString>
#include <QStringList>
#include <QTextStream>

#include <functional>
#include <vector>

namespace cli {

enum ExitCode { ExitOk = 0, ExitUsage = 1, ExitInput = 2 };

// What a command gets to work with: the arguments after its name, the folder the
// data paths are resolved against (-C DIR; the current directory by default) and the
// two output streams.
//
// While a command runs, the working directory is baseDir, so the application's relative
// data paths ("./data/...") resolve there. File names given on the command line must be
// passed through filePath(), which resolves them against the directory the user started
// the program in.
struct Context {
    QStringList args;
    QString baseDir;
    QString startDir;
    QTextStream& out;
    QTextStream& err;

    QString filePath(const QString& name) const;
};

struct Command {
    QString name;
    QString usage;   // e.g. "info FILE [--json]"
    QString summary; // one line for the command list
    std::function<int(Context&)> run;
};

// All commands, in the order they registered. Commands register themselves from their
// own source file with a static Registrar.
std::vector<Command>& commands();

struct Registrar {
    explicit Registrar(Command command) { commands().push_back(std::move(command)); }
};

// Removes every occurrence of the flag from args; true if it was there.
bool takeFlag(QStringList& args, const QString& flag);
// Removes "--name VALUE" (or "--name=VALUE") from args. Returns false and sets error
// when the value is missing; found tells whether the option was given.
bool takeOption(QStringList& args, const QString& name, QString& value, bool& found,
                QString& error);
// Prints "kxsetup-cli: <message>" and the usage line of the command; returns ExitUsage.
int usageError(Context& ctx, const QString& command, const QString& message);
// Prints "kxsetup-cli: <file>: <what>" and returns ExitInput.
int inputError(Context& ctx, const QString& file, const QString& what);

} // namespace cli
