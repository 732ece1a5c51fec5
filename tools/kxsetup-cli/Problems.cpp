#include "Problems.h"

#include "sf/SetupFile.h"

namespace cli {

void warnProblems(Context& ctx, const sf::SetupFile& file) {
    if (file.problems() > 0) {
        ctx.err << "kxsetup-cli: warning: " << file.path() << ": " << file.problems()
                << " settings could not be read\n";
    }
    for (const QString& message : file.messages()) {
        ctx.err << "kxsetup-cli: warning: " << file.path() << ": " << message << "\n";
    }
    ctx.err.flush();
}

bool openSetup(Context& ctx, sf::SetupFile& setup, const QString& path, const QString& layoutPath) {
    QString error;
    if (!setup.open(path, layoutPath, &error)) {
        inputError(ctx, path, error);
        return false;
    }
    warnProblems(ctx, setup);
    return true;
}

} // namespace cli
