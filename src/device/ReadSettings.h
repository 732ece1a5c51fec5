#pragma once
// Reading the instrument's settings: the version query, the helper's read of the settings
// memory into the scratch image, and the version to open it with (the catalogue's for
// what the instrument answered, or the person's choice). A read that fails after the
// helper reached the instrument resets it, so that it answers the enquiry again.
#include "device/Operation.h"

namespace device {

class ReadSettings : public Operation {
    Q_OBJECT
public:
    using Operation::Operation;

    // With chooseUnknown false a version the catalogue does not know fails instead of
    // asking. False with errorString() (empty when cancelled) on failure.
    bool run(bool chooseUnknown = true);
    const util::VersionContainer& version() const { return m_version; }
    // Where the settings were read to: the scratch image of the data folder.
    static QString imagePath();
    // Saves what was read as a setup file recording its version (replacing target in one
    // step); false with *error when it cannot.
    bool saveTo(const QString& target, QString* error) const;

private:
    util::VersionContainer m_version;
};

} // namespace device
