#include "support/CliRunner.h"

#include "support/TestSupport.h"

#include <QJsonDocument>
#include <QProcess>

namespace testsupport {

ToolResult runTool(const QString& tool, const QStringList& args, const QString& workDir,
                   const QByteArray& input) {
    ToolResult result;
    QProcess process;
    if (!workDir.isEmpty()) {
        process.setWorkingDirectory(workDir);
    }
    process.start(toolPath(tool), args);
    if (process.waitForStarted(30000)) {
        process.write(input);
        process.closeWriteChannel();
    }
    if (!process.waitForFinished(60000) || process.exitStatus() != QProcess::NormalExit) {
        process.kill();
        process.waitForFinished();
        return result;
    }
    result.exitCode = process.exitCode();
    result.out = process.readAllStandardOutput();
    result.err = process.readAllStandardError();
    return result;
}

CliResult runCli(const QStringList& args, const QString& workDir) {
    const ToolResult run = runTool(QStringLiteral("kxsetup-cli"), args, workDir);
    CliResult result;
    result.exitCode = run.exitCode;
    result.out = QString::fromUtf8(run.out);
    result.err = QString::fromUtf8(run.err);
    return result;
}

QJsonObject jsonOf(const CliResult& result) {
    QJsonParseError error{};
    const QJsonDocument doc = QJsonDocument::fromJson(result.out.toUtf8(), &error);
    return error.error == QJsonParseError::NoError ? doc.object() : QJsonObject();
}

CliResult cliIn(const QString& root, const QStringList& args) {
    return runCli(QStringList{QStringLiteral("-C"), root} + args);
}

CliResult deviceIn(const QString& root, const QString& what, const QString& port,
                   const QStringList& rest) {
    return cliIn(root, QStringList{QStringLiteral("device"), what, QStringLiteral("--port"), port} +
                           rest);
}

} // namespace testsupport
