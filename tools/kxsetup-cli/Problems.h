#pragma once

#include "Command.h"

namespace sf {
class SetupFile;
struct Comparison;
} // namespace sf

namespace cli {

// Prints an opened file's problems to the error stream as warnings ("kxsetup-cli:
// warning: FILE: ..."): the count of settings that could not be read and every message
// the settings reported. Nothing for a clean load.
void warnProblems(Context& ctx, const sf::SetupFile& file);
// Opens a setup file (a path already resolved with filePath) with the layout of its
// version, or with the given layout file, and warns of its problems; false after printing
// why it cannot be opened ("kxsetup-cli: FILE: ...").
bool openSetup(Context& ctx, sf::SetupFile& setup, const QString& path,
               const QString& layoutPath = QString());

// The differences between a and b as diff prints them (plain or JSON).
void printDifferences(Context& ctx, sf::SetupFile& a, sf::SetupFile& b, const sf::Comparison& c,
                      bool json);

} // namespace cli
