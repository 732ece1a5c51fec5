#pragma once

// Runs the built tools (kxsetup-cli above all) with an argument list and collects what
// they printed.

#include <QByteArray>
#include <QJsonObject>
#include <QString>
#include <QStringList>

namespace testsupport {

struct CliResult {
    int exitCode = -1; // -1 when the program did not start, crashed or timed out
    QString out;
    QString err;
};

// The same as bytes, for output that is no text (HEX images, raw bytes).
struct ToolResult {
    int exitCode = -1;
    QByteArray out;
    QByteArray err;
};

// One of our built tools (by name) with an argument list, the working directory workDir
// (the test's own when empty) and input on its standard input.
ToolResult runTool(const QString& tool, const QStringList& args, const QString& workDir = QString(),
                   const QByteArray& input = QByteArray());

// kxsetup-cli ARGS... with the working directory workDir (the test's own when empty).
CliResult runCli(const QStringList& args, const QString& workDir = QString());

// kxsetup-cli -C root ARGS...: the tool working in the runtime folder root.
CliResult cliIn(const QString& root, const QStringList& args);
// kxsetup-cli -C root device WHAT --port PORT REST...
CliResult deviceIn(const QString& root, const QString& what, const QString& port,
                   const QStringList& rest = {});

// The object kxsetup-cli printed as JSON; empty when the output is no JSON object.
QJsonObject jsonOf(const CliResult& result);

} // namespace testsupport
