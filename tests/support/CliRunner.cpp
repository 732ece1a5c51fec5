#include "support/CliRunner.h"

#include "support/TestSupport.h"

#include <QJsonDocument>
#include <QProcess>

namespace testsupport {

CliResult runCli(const QStringList& args, const QString& workDir) {
    CliResult result;
    QProcess process;
    if (!workDir.isEmpty()) {
        process.setWorkingDirectory(workDir);
    }
    process.start(toolPath(QStringLiteral("kxsetup-cli")), args);
    if (!process.waitForFinished(60000) || process.exitStatus() != QProcess::NormalExit) {
        process.kill();
        process.waitForFinished();
        return result;
    }
    result.exitCode = process.exitCode();
    result.out = QString::fromUtf8(process.readAllStandardOutput());
    result.err = QString::fromUtf8(process.readAllStandardError());
    return result;
}

QJsonObject jsonOf(const CliResult& result) {
    QJsonParseError error{};
    const QJsonDocument doc = QJsonDocument::fromJson(result.out.toUtf8(), &error);
    return error.error == QJsonParseError::NoError ? doc.object() : QJsonObject();
}

} // namespace testsupport
