#include "sf/parser/Interpreter.h"

#include "kxs/KxsFormat.h"
#include "kxs/parser/KxsParser.h"
#include "sf/Category.h"
#include "sf/RawSetting.h"

namespace sf::parser {

Interpreter::Interpreter() : m_parser(std::make_unique<kxs::parser::KxsParser>()) {}

Interpreter::~Interpreter() = default;

void Interpreter::resetCursors() {
    m_categoryCursor = m_parser->getOffset();
    m_settingCursor = m_parser->getOffset();
}

bool Interpreter::loadKxsData(const QByteArray& bytes) {
    if (!m_parser->openKxsData(bytes)) {
        return false;
    }
    resetCursors();
    return true;
}

bool Interpreter::isOpen() const {
    return m_parser->isOpen();
}

void Interpreter::close() {
    m_parser->close();
}

void Interpreter::reset() {
    m_parser->reset();
    resetCursors();
}

bool Interpreter::hasNextCategory() {
    m_parser->setOffset(m_categoryCursor);
    return m_parser->hasNext(kxs::EntryCategory);
}

bool Interpreter::hasNextSetting() {
    m_parser->setOffset(m_settingCursor);
    return m_parser->hasNext(kxs::EntrySetting);
}

sf::Category* Interpreter::getNextCategory() {
    m_parser->setOffset(m_categoryCursor);
    const kxs::NamesTableEntryV1* entry = nullptr;
    const char* data = nullptr;
    if (!m_parser->getNext(&entry, &data, kxs::EntryCategory)) {
        return nullptr;
    }
    kxs::CategoryData texts;
    if (!kxs::readCategoryData(entry, data, &texts)) {
        return nullptr;
    }
    m_categoryCursor = m_parser->getOffset();
    return new sf::Category(texts.title, kxs::entryName(entry), texts.preset, true);
}

sf::RawSetting* Interpreter::getNextSetting(TokenList* tokens) {
    if (!tokens) {
        return nullptr;
    }
    m_parser->setOffset(m_settingCursor);
    const kxs::NamesTableEntryV1* entry = nullptr;
    const char* data = nullptr;
    if (!m_parser->getNext(&entry, &data, kxs::EntrySetting)) {
        return nullptr;
    }
    kxs::SettingData setting;
    if (!kxs::readSettingData(entry, data, &setting)) {
        return nullptr;
    }
    if (!tokenize(tokens, setting.definition, TOKEN_REGEX)) {
        return nullptr;
    }

    // A trailing marker (and the separator before it) says the setting is disabled or
    // hidden. The payload must match exactly: "dis" is an ordinary reference.
    bool enabled = true;
    bool hidden = false;
    const int marker = tokens->size() - 2;
    if (marker >= 0) {
        const bool disabled = tokens->at(marker) == CUE_DISABLED;
        const bool hid = !disabled && tokens->at(marker) == CUE_HIDDEN;
        if (disabled || hid) {
            tokens->removeAt(marker);
            if (marker - 1 >= 0) {
                tokens->removeAt(marker - 1);
            }
            enabled = !disabled;
            hidden = hid;
        }
    }

    m_settingCursor = m_parser->getOffset();
    return new sf::RawSetting(kxs::entryName(entry), setting.sizeBytes,
                              static_cast<qint32>(setting.address), enabled, hidden);
}

quint32 Interpreter::getInteger(const QString& name) {
    if (name.isEmpty()) {
        return 0;
    }
    const kxs::NamesTableEntryV1* entry = nullptr;
    const char* data = nullptr;
    if (!m_parser->getEntry(&entry, &data, name, kxs::EntryInteger)) {
        return 0;
    }
    quint64 value = 0;
    if (!kxs::readIntegerData(entry, data, &value)) {
        return 0;
    }
    return static_cast<quint32>(value); // of an 8-byte constant, the low 32 bits
}

QStringList Interpreter::getStringList(const QString& name, const QString& countName) {
    const quint32 count = getInteger(countName);
    if (count < 1) {
        return {};
    }
    const kxs::NamesTableEntryV1* entry = nullptr;
    const char* data = nullptr;
    if (!m_parser->getEntry(&entry, &data, name, kxs::EntryString)) {
        return {};
    }
    QStringList list;
    list.append(kxs::readStringData(entry, data));
    while (static_cast<quint32>(list.size()) < count) {
        // Each getNext moves past one entry, so this ends with the names table.
        if (!m_parser->hasNext(kxs::EntryString) ||
            !m_parser->getNext(&entry, &data, kxs::EntryString)) {
            return {}; // never a partial list
        }
        list.append(kxs::readStringData(entry, data));
    }
    return list;
}

QString Interpreter::getKxsVersion() const {
    return m_parser->getKxsVersion();
}

quint32 Interpreter::getKxsFormat() const {
    return m_parser->getKxsFormat();
}

} // namespace sf::parser
