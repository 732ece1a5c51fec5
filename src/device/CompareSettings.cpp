#include "device/CompareSettings.h"

#include "app/Constants.h"
#include "device/ReadSettings.h"
#include "sf/SetupFile.h"

#include <QFileInfo>

namespace device {

CompareSettings::CompareSettings(util::Uploader& uploader, const util::VersionCatalogue& catalogue,
                                 Decisions& decisions, QObject* parent)
    : Operation(uploader, catalogue, decisions, parent) {}

CompareSettings::~CompareSettings() = default;

bool CompareSettings::run(sf::SetupFile& file) {
    m_error.clear();
    m_instrument.reset();
    m_differences = sf::Comparison();
    ReadSettings read(m_uploader, m_catalogue, m_decisions);
    connect(&read, &Operation::status, this, &Operation::status);
    connect(&read, &Operation::resetting, this, &Operation::resetting);
    const bool done = read.run(true);
    m_enq = read.enq();
    if (!done) {
        return fail(read.errorString());
    }
    auto instrument = std::make_unique<sf::SetupFile>();
    if (instrument->open(QFileInfo(ReadSettings::imagePath()).absoluteFilePath(), read.version()) <
        0) {
        return fail(ui::ERROR_READHEX);
    }
    m_instrument = std::move(instrument);
    m_differences = sf::compareSettings(file.manager(), m_instrument->manager());
    return true;
}

} // namespace device
