#pragma once
// Comparing a setup file with what the instrument holds: the instrument's settings are
// read as for any read, opened with their version and compared setting by setting.
#include "device/Operation.h"
#include "sf/SetupComparison.h"

#include <memory>

namespace sf {
class SetupFile;
}

namespace device {

class CompareSettings : public Operation {
    Q_OBJECT
public:
    CompareSettings(util::Uploader& uploader, const util::VersionCatalogue& catalogue,
                    Decisions& decisions, QObject* parent = nullptr);
    ~CompareSettings() override;

    // False with errorString() (empty when cancelled) when the instrument could not be read.
    bool run(sf::SetupFile& file);
    const sf::Comparison& differences() const { return m_differences; }
    // The instrument's settings as read (null before a successful run).
    sf::SetupFile* instrument() const { return m_instrument.get(); }

private:
    std::unique_ptr<sf::SetupFile> m_instrument;
    sf::Comparison m_differences;
};

} // namespace device
