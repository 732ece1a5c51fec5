#include "sf/SettingFactory.h"

#include "sf/BoolSetting.h"
#include "sf/CheckBoolSetting.h"
#include "sf/ListSetting.h"
#include "sf/NumSetting.h"
#include "sf/RawSetting.h"

#include <QHash>
#include <QRegularExpression>

#include <array>

#include <cstring>

namespace sf {

using parser::TokenList;

const char* const SettingFactory::TYPE_LABELS[SETTING_TYPE_COUNT] = {"",     "uninit",    "num",
                                                                     "bool", "checkbool", "list"};

int SettingFactory::typeFromKeyword(const QString& keyword) {
    // Layouts use a handful of keywords thousands of times: remember the answers instead
    // of compiling the keyword as a pattern for every setting. The table is bounded so
    // that arbitrary keywords cannot make it grow without limit.
    // Layouts repeat the same few keywords: the last few answers are compared first,
    // which is cheaper than hashing the keyword.
    struct Recent {
        QString keyword;
        int type = -1;
    };
    static std::array<Recent, 4> recent;
    static std::size_t oldest = 0;
    for (const Recent& r : recent) {
        if (!r.keyword.isNull() && r.keyword == keyword) {
            return r.type;
        }
    }
    static QHash<QString, int> known;
    const auto it = known.constFind(keyword);
    int type = -1;
    if (it != known.constEnd()) {
        type = it.value();
    } else {
        if (known.size() >= 64) {
            known.clear();
        }
        type = matchKeyword(keyword);
        known.insert(keyword, type);
    }
    recent[oldest] = {keyword, type};
    oldest = (oldest + 1) % recent.size();
    return type;
}

int SettingFactory::matchKeyword(const QString& keyword) {
    const QRegularExpression pattern(QRegularExpression::anchoredPattern(keyword),
                                     QRegularExpression::CaseInsensitiveOption);
    if (!pattern.isValid()) {
        return -1;
    }
    for (int type = 0; type < SETTING_TYPE_COUNT; ++type) {
        if (pattern.match(QLatin1String(TYPE_LABELS[type])).hasMatch()) {
            return type;
        }
    }
    return -1;
}

Setting* SettingFactory::buildSetting(const RawSetting* raw, std::unique_ptr<TokenList> tokens,
                                      SettingHost* host) {
    // The tokens are destroyed with this function's unique_ptr on every early return.
    if (!raw) {
        m_lastError = ErrorNoRawSetting;
        return nullptr;
    }
    if (!tokens || tokens->isEmpty()) {
        m_lastError = ErrorUnknownType;
        return nullptr;
    }
    const int type = typeFromKeyword(tokens->first().getPayload());
    if (type < 0) {
        m_lastError = ErrorUnknownType;
        return nullptr;
    }
    std::unique_ptr<Setting> setting;
    switch (type) {
    case TypeNum:
        setting = std::make_unique<NumSetting>(raw->getCodeName(), std::move(tokens), host);
        break;
    case TypeBool:
        setting = std::make_unique<BoolSetting>(raw->getCodeName(), std::move(tokens), host);
        break;
    case TypeCheckBool:
        setting = std::make_unique<CheckBoolSetting>(raw->getCodeName(), std::move(tokens), host);
        break;
    case TypeList:
        setting = std::make_unique<ListSetting>(raw->getCodeName(), std::move(tokens), host);
        break;
    default: // "" and "uninit" name no kind that can be built
        m_lastError = ErrorNotBuilt;
        return nullptr;
    }
    if (setting->getType() != type) {
        m_lastError = ErrorNotBuilt;
        return nullptr;
    }
    // As many of the raw bytes as both sizes allow; the rest stays zero (as the setting
    // allocated it).
    const int common = qMin(setting->getSizeBytes(), raw->getSizeBytes());
    char* data = setting->getRawData();
    if (data && common > 0 && raw->getData()) {
        std::memcpy(data, raw->getData(), static_cast<size_t>(common));
    }
    m_lastError = NoError;
    return setting.release();
}

} // namespace sf
