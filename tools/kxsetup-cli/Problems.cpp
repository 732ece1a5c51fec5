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

} // namespace cli
