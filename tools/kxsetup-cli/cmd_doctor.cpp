// kxsetup-cli doctor [--port PATH]: why the instrument cannot be reached, in plain words.
#include "Command.h"

#include "util/ConnectionDoctor.h"
#include "util/SerialSystem.h"

namespace {

// Breaks lines at blanks to fit a terminal of 80 columns; commands (indented) stay whole.
QString wrapped(const QString& text) {
    QStringList out;
    for (const QString& line : text.split(QLatin1Char('\n'))) {
        if (line.startsWith(QLatin1String("    "))) {
            out << line;
            continue;
        }
        QString current;
        for (const QString& word : line.split(QLatin1Char(' '))) {
            if (!current.isEmpty() && current.size() + 1 + word.size() > 78) {
                out << current;
                current.clear();
            }
            current += (current.isEmpty() ? QString() : QStringLiteral(" ")) + word;
        }
        out << current;
    }
    return out.join(QLatin1Char('\n'));
}

int runDoctor(cli::Context& ctx) {
    QString port;
    QString error;
    bool given = false;
    if (!cli::takeOption(ctx.args, QStringLiteral("--port"), port, given, error)) {
        return cli::usageError(ctx, QStringLiteral("doctor"), error);
    }
    if (!ctx.args.isEmpty()) {
        return cli::usageError(ctx, QStringLiteral("doctor"),
                               QStringLiteral("unexpected argument %1").arg(ctx.args.first()));
    }
    util::LinuxSerialSystem system;
    const util::DoctorReport report =
        util::examineConnection(system, given ? ctx.filePath(port) : QString());
    ctx.out << wrapped(report.text()) << "\n";
    return report.ok() ? cli::ExitOk : cli::ExitInput;
}

const cli::Registrar doctor({QStringLiteral("doctor"), QStringLiteral("doctor [--port PATH]"),
                             QStringLiteral("Explain why the instrument cannot be reached"),
                             runDoctor});

} // namespace
