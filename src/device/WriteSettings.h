#pragma once
// Writing a setup file's settings into the instrument: the confirmation, the version
// query (retry, ignore or cancel when it does not answer), a read of what the instrument
// holds, the checks that the file's layout is the instrument's, and the helper's write
// and verify of the settings the file holds. Every failure after the instrument answered
// resets it, so that it leaves its service mode.
#include "device/Operation.h"

namespace sf {
class SetupFile;
}

namespace device {

class WriteSettings : public Operation {
    Q_OBJECT
public:
    using Operation::Operation;

    // False with errorString() (empty when the person said no) on failure.
    bool run(sf::SetupFile& file);

private:
    bool failAfterAnswer(const QString& error, bool reached);
    bool checkVersions(const sf::SetupFile& file);
};

} // namespace device
