#include "support/FakeSettingHost.h"

#include "sf/RawSetting.h"
#include "sf/SettingFactory.h"
#include "sf/parser/Interpreter.h"

namespace settingstest {

FakeSettingHost::FakeSettingHost() {
    connect(this, &sf::SettingHost::problem, this,
            [this](const QString& message) { m_problems.append(message); });
}

FakeSettingHost::~FakeSettingHost() = default;

QStringList FakeSettingHost::getStringList(const QString& name, const QString& countName) {
    return m_lists.value(qMakePair(name, countName));
}

void FakeSettingHost::addStringList(const QString& name, const QString& countName,
                                    const QStringList& items) {
    m_lists.insert(qMakePair(name, countName), items);
}

sf::Setting* FakeSettingHost::lookupSetting(const QString& codeName) {
    for (const auto& s : m_settings) {
        if (s->getCodeName() == codeName) {
            return s.get();
        }
    }
    return nullptr;
}

sf::parser::TokenList FakeSettingHost::tokenize(const QString& definition) {
    sf::parser::TokenList tokens;
    if (!sf::parser::Interpreter::tokenize(&tokens, definition, sf::parser::TOKEN_REGEX)) {
        tokens.clear();
    }
    return tokens;
}

sf::Setting* FakeSettingHost::build(const QString& codeName, const QString& definition,
                                    const QByteArray& bytes, int* error) {
    const QByteArray data = bytes.isEmpty() ? QByteArray(16, '\0') : bytes;
    sf::RawSetting raw(codeName, data.size(), 0, true, false);
    raw.setData(data.constData());
    auto tokens = std::make_unique<sf::parser::TokenList>(tokenize(definition));
    sf::SettingFactory factory;
    sf::Setting* setting = factory.buildSetting(&raw, std::move(tokens), this);
    if (error) {
        *error = factory.lastError();
    }
    if (setting) {
        adopt(setting);
    }
    return setting;
}

void FakeSettingHost::adopt(sf::Setting* setting) {
    m_settings.emplace_back(setting);
}

bool FakeSettingHost::finishAll() {
    bool all = true;
    for (const auto& s : m_settings) {
        all = s->finishSetup() && all;
    }
    return all;
}

void FakeSettingHost::notifyDependents(sf::Setting* changed) {
    for (sf::Setting* dependent : changed->getDependents()) {
        dependent->update(changed->getType());
    }
}

QByteArray hexBytes(const char* text) {
    return QByteArray::fromHex(QByteArray(text).replace(' ', ""));
}

} // namespace settingstest
