// Setting manager: copying values back into raw settings and writing setup images.

#include "sf/SettingManager.h"

#include "sf/RawSetting.h"
#include "sf/Setting.h"
#include "sf/parser/HexParser.h"

#include <QBuffer>

namespace sf {

namespace {

// Bytes per record line when an image is written.
constexpr int LINE_LENGTH = 16;

} // namespace

int SettingManager::copyDataToRawSettings(bool onlyEnabled) {
    int count = 0;
    for (RawSetting* raw : std::as_const(m_rawSettings)) {
        const Setting* setting = getSetting(raw->getCodeName());
        const bool sameSize = setting && setting->getSizeBytes() == raw->getSizeBytes() &&
                              setting->getRawData() != nullptr;
        if (raw->isHidden()) {
            // Hidden entries are always written; they take the value only from a setting
            // that fits.
            raw->setEnabled(true);
            if (sameSize) {
                raw->setData(setting->getRawData());
            }
            ++count;
            continue;
        }
        if (setting) {
            raw->setEnabled(setting->isEnabled());
        }
        if (setting && (raw->isEnabled() || !onlyEnabled) && sameSize) {
            raw->setData(setting->getRawData());
            ++count;
        } else if (!onlyEnabled) {
            ++count;
        }
    }
    return count;
}

bool SettingManager::mergeInto(parser::HexParser& image, bool onlyEnabled, bool replace,
                               quint32 from, quint32 to) {
    if (copyDataToRawSettings(onlyEnabled) < 1) {
        return false;
    }
    parser::RecordList records;
    const QList<RawSetting*> raws(m_rawSettings.begin(), m_rawSettings.end());
    image.getRawSettingsAsHexData(raws, records, onlyEnabled, from, to);
    const bool merged = replace ? image.replaceFileContents(records) : image.addToFile(records);
    if (!merged) {
        return false;
    }
    image.setFwVersion(m_fwVersion);
    image.setKxsVersion(m_kxsVersion);
    image.setEnqString(m_enqString);
    return true;
}

bool SettingManager::writeAppendRawSettings(const QString& fileName, bool reformat,
                                            bool onlyEnabled, bool replace, quint32 from,
                                            quint32 to) {
    if (fileName.isEmpty()) {
        return false;
    }
    parser::HexParser image;
    if (!image.loadHex(fileName, m_processorType, QIODevice::ReadWrite)) {
        return false;
    }
    const bool ok =
        mergeInto(image, onlyEnabled, replace, from, to) && image.writeFile(reformat, LINE_LENGTH);
    image.close();
    return ok;
}

bool SettingManager::appendRawSettings(const QString& fileName, bool reformat, bool onlyEnabled,
                                       quint32 from, quint32 to) {
    return writeAppendRawSettings(fileName, reformat, onlyEnabled, false, from, to);
}

bool SettingManager::writeAppendRawSettingsData(QByteArray* imageText, bool reformat,
                                                bool onlyEnabled, bool replace, quint32 from,
                                                quint32 to) {
    if (!imageText) {
        return false;
    }
    parser::HexParser image;
    if (!image.loadHexData(*imageText, m_processorType) ||
        !mergeInto(image, onlyEnabled, replace, from, to)) {
        return false;
    }
    QByteArray text;
    QBuffer buffer(&text);
    if (!buffer.open(QIODevice::WriteOnly) ||
        !image.writeToDevice(&buffer, reformat, LINE_LENGTH)) {
        return false;
    }
    buffer.close();
    *imageText = text;
    return true;
}

int SettingManager::appendRawSettingsFromHexFile(const QString& source, const QString& destination,
                                                 bool onlyEnabled) {
    parser::HexParser from;
    if (source.isEmpty() || !from.loadHex(source, m_processorType, QIODevice::ReadOnly)) {
        return -1;
    }
    // Copies of this layout's raw settings holding the source's bytes.
    std::vector<std::unique_ptr<RawSetting>> copies;
    for (const RawSetting* raw : std::as_const(m_rawSettings)) {
        if ((onlyEnabled && !raw->isEnabled()) || raw->getSizeBytes() <= 0) {
            continue;
        }
        const std::optional<QByteArray> bytes = from.readData(
            static_cast<quint32>(raw->getAddress()), static_cast<quint32>(raw->getSizeBytes()));
        if (!bytes || bytes->size() != raw->getSizeBytes()) {
            continue;
        }
        auto copy = std::make_unique<RawSetting>(*raw);
        copy->setData(bytes->constData());
        copy->setEnabled(true);
        copies.push_back(std::move(copy));
    }
    from.close();

    parser::HexParser to;
    if (destination.isEmpty() || !to.loadHex(destination, m_processorType, QIODevice::ReadWrite)) {
        return -1;
    }
    QList<RawSetting*> list;
    for (const auto& copy : copies) {
        list.append(copy.get());
    }
    parser::RecordList records;
    to.getRawSettingsAsHexData(list, records, false, 0, 0xFFFFFFFFu);
    const bool ok = to.addToFile(records) && to.writeFile(false, LINE_LENGTH);
    to.close();
    return ok ? static_cast<int>(copies.size()) : -1;
}

} // namespace sf
