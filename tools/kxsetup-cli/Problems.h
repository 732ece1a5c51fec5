#pragma once

#include "Command.h"

namespace sf {
class SetupFile;
}

namespace cli {

// Prints an opened file's problems to the error stream as warnings ("kxsetup-cli:
// warning: FILE: ..."): the count of settings that could not be read and every message
// the settings reported. Nothing for a clean load.
void warnProblems(Context& ctx, const sf::SetupFile& file);

} // namespace cli
