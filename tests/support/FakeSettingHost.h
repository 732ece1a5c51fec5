#pragma once

// A small host for testing settings without a setting manager: a table of settings
// (built from definition texts through the factory), string lists and tool tips, and a
// record of every problem message.

#include "sf/Setting.h"
#include "sf/SettingHost.h"
#include "sf/parser/Token.h"

#include <QByteArray>
#include <QHash>
#include <QMap>
#include <QStringList>

#include <memory>
#include <vector>

namespace settingstest {

class FakeSettingHost : public sf::SettingHost {
    Q_OBJECT
public:
    FakeSettingHost();
    ~FakeSettingHost() override;

    quint32 getKXSFormat() const override { return m_format; }
    QString getTooltip(const QString& wsi) const override { return m_tooltips.value(wsi); }
    QStringList getStringList(const QString& name, const QString& countName) override;
    sf::Setting* lookupSetting(const QString& codeName) override;

    void setFormat(quint32 format) { m_format = format; }
    void addTooltip(const QString& wsi, const QString& text) { m_tooltips.insert(wsi, text); }
    // getStringList(name, countName) answers items; any other pair an empty list.
    void addStringList(const QString& name, const QString& countName, const QStringList& items);

    // Tokenises the definition (TOKEN_REGEX) and builds it through the factory with a raw
    // setting holding bytes (16 zero bytes when empty). The setting is kept and owned by
    // the host and found by its code name; null when the factory refuses (error set).
    sf::Setting* build(const QString& codeName, const QString& definition,
                       const QByteArray& bytes = QByteArray(), int* error = nullptr);
    // Takes ownership of a setting built elsewhere.
    void adopt(sf::Setting* setting);
    // finishSetup() on every kept setting, in the order they were built.
    bool finishAll();
    // update() on every dependent of the setting (what the manager does after an edit).
    void notifyDependents(sf::Setting* changed);

    const QStringList& problems() const { return m_problems; }
    void clearProblems() { m_problems.clear(); }

    // The definition as the interpreter tokenises it (empty list when it cannot).
    static sf::parser::TokenList tokenize(const QString& definition);

private:
    quint32 m_format = 1001;
    QHash<QString, QString> m_tooltips;
    QMap<QPair<QString, QString>, QStringList> m_lists;
    std::vector<std::unique_ptr<sf::Setting>> m_settings;
    QStringList m_problems;
};

// The bytes of a hexadecimal text such as "12 34 56".
QByteArray hexBytes(const char* text);

} // namespace settingstest
