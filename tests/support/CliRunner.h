#pragma once

// Runs the built kxsetup-cli with an argument list and collects what it printed.

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

// kxsetup-cli ARGS... with the working directory workDir (the test's own when empty).
CliResult runCli(const QStringList& args, const QString& workDir = QString());

// The object kxsetup-cli printed as JSON; empty when the output is no JSON object.
QJsonObject jsonOf(const CliResult& result);

} // namespace testsupport
