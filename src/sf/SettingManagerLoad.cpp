// Setting manager: loading a setup image against a layout, and the help texts.

#include "sf/SettingManager.h"

#include "app/Constants.h"
#include "sf/Category.h"
#include "sf/ImageReader.h"
#include "sf/LayoutScan.h"
#include "sf/RawSetting.h"
#include "sf/Setting.h"
#include "sf/SettingFactory.h"
#include "sf/parser/HexParser.h"
#include "sf/parser/Interpreter.h"
#include "util/VersionContainer.h"

#include <QFile>
#include <QRegularExpression>

#include <vector>

namespace sf {

namespace {

// Metadata texts are kept untrimmed by the image reader; trailing zero bytes are padding.
QString withoutTrailingZeros(QString text) {
    while (text.endsWith(QChar(0))) {
        text.chop(1);
    }
    return text;
}

} // namespace

// What one load carries from reading the entries to building the settings.
struct SettingManager::LoadState {
    LayoutScan scan;
    // Token lists and category headings of m_rawSettings, index for index.
    std::vector<std::unique_ptr<parser::TokenList>> tokens;
    QVector<QString> headings;
};

int SettingManager::loadRawSettings(const util::VersionContainer& version, const QString& fileName,
                                    bool ignoreVersion) {
    clear();
    QFile file(version.kxsFilePath);
    if (version.kxsFilePath.isEmpty() || !file.open(QIODevice::ReadOnly)) {
        return LoadLayoutFailed;
    }
    const QByteArray layout = file.readAll();
    file.close();
    return loadCore(
        version, layout,
        [&fileName](parser::HexParser& image, int processor) {
            return image.loadHex(fileName, processor, QIODevice::ReadOnly);
        },
        ignoreVersion);
}

int SettingManager::loadRawSettingsData(const util::VersionContainer& version,
                                        const QByteArray& layout, const QByteArray& imageText,
                                        bool ignoreVersion) {
    clear();
    return loadCore(
        version, layout,
        [&imageText](parser::HexParser& image, int processor) {
            return image.loadHexData(imageText, processor);
        },
        ignoreVersion);
}

int SettingManager::loadCore(const util::VersionContainer& version, const QByteArray& layout,
                             const ImageOpener& openImage, bool ignoreVersion) {
    LoadState state;
    m_interpreter = std::make_unique<parser::Interpreter>();
    if (!m_interpreter->loadKxsData(layout) || !state.scan.scan(layout)) {
        m_interpreter.reset();
        return LoadLayoutFailed;
    }
    const QString layoutVersion = m_interpreter->getKxsVersion();
    m_processorType = processorTypeFor(layoutVersion, m_processorType);

    parser::HexParser image;
    int result = 0;
    if (!openImage(image, m_processorType)) {
        result = LoadImageFailed;
    } else if (layoutVersion.isEmpty()) {
        result = LoadNoVersion;
    } else if (!ignoreVersion &&
               (withoutTrailingZeros(image.getFwVersion()) != version.fwVersion ||
                withoutTrailingZeros(image.getKxsVersion()) != version.kxsVersion)) {
        result = LoadVersionMismatch;
    }
    if (result < 0) {
        m_interpreter.reset();
        return result;
    }

    setVersion(version);
    // The format the definitions are written in is the layout's own.
    m_kxsFormat = m_interpreter->getKxsFormat();
    readTooltips();

    while (m_interpreter->hasNextCategory()) {
        Category* category = m_interpreter->getNextCategory();
        if (!category) {
            break;
        }
        category->setHiddenVisible(m_hiddenVisible);
        addCategory(category);
    }

    const int entries = state.scan.settingEntries();
    m_rawSettings.reserve(entries);
    m_rawByName.reserve(entries);
    m_settings.reserve(entries);
    m_byName.reserve(entries);
    state.tokens.reserve(static_cast<size_t>(entries));
    state.headings.reserve(entries);

    int problems = readSettingEntries(image, state);
    problems += buildSettings(state);

    image.close();
    m_interpreter->close();
    m_interpreter.reset();
    m_stringLists.clear();
    return problems;
}

int SettingManager::readSettingEntries(parser::HexParser& image, LoadState& state) {
    const ImageReader reader(image);
    int problems = 0;
    for (int entry = 0; m_interpreter->hasNextSetting(); ++entry) {
        auto tokens = std::make_unique<parser::TokenList>();
        RawSetting* raw = m_interpreter->getNextSetting(tokens.get());
        if (!raw) {
            // An entry the interpreter cannot read stops the walk (it would not move on).
            ++problems;
            emit problem(QStringLiteral("Unreadable setting entry in layout ") + m_kxsVersion);
            break;
        }
        if (!addRawSetting(raw)) {
            continue; // a repeated code name: the first entry stays (raw is deleted)
        }
        const qint32 size = raw->getSizeBytes();
        if (size > 0) {
            const std::optional<QByteArray> bytes =
                reader.read(static_cast<quint32>(raw->getAddress()), static_cast<quint32>(size));
            if (bytes && bytes->size() == size) {
                raw->setData(bytes->constData());
            } else {
                ++problems; // the image does not hold the setting's bytes
            }
        }
        state.tokens.push_back(std::move(tokens));
        state.headings.append(state.scan.headingOf(entry));
    }
    return problems;
}

int SettingManager::buildSettings(LoadState& state) {
    int problems = 0;
    for (int i = 0; i < m_rawSettings.size(); ++i) {
        RawSetting* raw = m_rawSettings[i];
        Setting* setting =
            m_factory->buildSetting(raw, std::move(state.tokens[static_cast<size_t>(i)]), this);
        if (!setting) {
            raw->setEnabled(false);
            if (m_factory->lastError() == SettingFactory::ErrorNotBuilt) {
                ++problems;
            }
            continue;
        }
        setting->setEnabled(raw->isEnabled());
        setting->setEnabledByDefault(raw->isEnabled());
        setting->setHidden(raw->isHidden());
        setting->setCategory(state.headings.at(i));
        addSetting(setting);
    }
    // References can be resolved only once every setting exists.
    for (Setting* setting : std::as_const(m_settings)) {
        setting->finishSetup();
    }
    for (Category* category : std::as_const(m_categories)) {
        if (!category->getPresetName().isEmpty()) {
            if (Setting* counter = getSetting(category->getPresetName())) {
                setPresetsByName(counter);
            }
        }
    }
    m_presetValues.clear();
    updatePresets();
    return problems;
}

// ---- Help texts -------------------------------------------------------------------------

QString SettingManager::getTooltipFilename(const QString& fwVersion) {
    return ui::PATH_HELP + fwVersion + QStringLiteral("_help.html");
}

int SettingManager::readTooltips() {
    m_tooltips.clear();
    if (m_fwVersion.isEmpty()) {
        return 0;
    }
    QFile file(getTooltipFilename(m_fwVersion));
    if (!file.open(QIODevice::ReadOnly)) {
        return 0; // no help for this version
    }
    return parseTooltips(QString::fromUtf8(file.readAll()));
}

int SettingManager::parseTooltips(const QString& html) {
    static const QRegularExpression div(
        QStringLiteral("<div\\s+id=['\"]([\\s\\S]+?)['\"][\\s\\S]*?>([\\s\\S]+?)<\\/div>"));
    int count = 0;
    QRegularExpressionMatchIterator it = div.globalMatch(html);
    while (it.hasNext()) {
        const QRegularExpressionMatch match = it.next();
        m_tooltips.insert(match.captured(1).trimmed(), match.captured(2).trimmed());
        ++count;
    }
    return count;
}

QString SettingManager::getTooltip(const QString& wsi) const {
    return m_tooltips.value(wsi);
}

} // namespace sf
