#pragma once

#include "sf/parser/Token.h"

#include <QObject>
#include <QString>
#include <QStringList>

namespace sf {

class Setting;

// How DependentResolver treats a reference it cannot resolve (an unknown code name, a
// sub-index the referenced setting does not have, a setting without a value).
enum class ReplaceBehaviour {
    Strict,      // the first unresolved reference fails the call (the list is then partly replaced)
    KeepMissing, // unresolved references stay as they are; the call reports whether all resolved
    ZeroMissing  // unresolved references become the number 0; the call succeeds
};

// What a setting needs from the object that owns it: the one interface settings are built
// against. The setting manager implements it for real files; tests use a small fake.
//
// Every setting passes what it reports through its own problem(QString) signal on to
// the host's problem signal, so the host sees all messages about malformed definitions.
class SettingHost : public QObject {
    Q_OBJECT
public:
    explicit SettingHost(QObject* parent = nullptr);
    ~SettingHost() override;

    // The layout file's format number (1000 or 1001; anything else is read as 1001).
    virtual quint32 getKXSFormat() const = 0;
    // The help text for a help identifier (WSI); empty when there is none.
    virtual QString getTooltip(const QString& wsi) const = 0;
    // The layout's string list: getInteger(countName) strings starting with the string
    // entry called name; empty when the layout does not hold all of them.
    virtual QStringList getStringList(const QString& name, const QString& countName) = 0;
    // The setting with that code name, or null.
    virtual Setting* lookupSetting(const QString& codeName) = 0;

    // Replaces, in tokens, every reference to another setting (Dependent "Name",
    // "Name[k]", NegDependent) by that setting's current value as a token of the given
    // type, and records referrer as a dependent of every setting it refers to. The default
    // implementation does all of this with a DependentResolver over lookupSetting(); a
    // host only overrides it to change how references are found.
    virtual bool replaceDependents(Setting* referrer, parser::TokenList& tokens,
                                   parser::TokenType type, ReplaceBehaviour behaviour);

signals:
    void problem(const QString& message);
};

} // namespace sf
