#include "sf/DependentResolver.h"

#include "sf/BitField.h"
#include "sf/Setting.h"
#include "sf/parser/CalcParser.h"

#include <QRegularExpression>

namespace sf {

using parser::Token;
using parser::TokenList;

namespace {

// Settings whose value is being read right now. A reference back to one of them (a
// setting whose scale or condition refers to itself, directly or through others) cannot
// be resolved; without this guard it would recurse without end. Everything runs on one
// thread.
QList<const Setting*>& settingsBeingRead() {
    static QList<const Setting*> list;
    return list;
}

class ReadGuard {
public:
    explicit ReadGuard(const Setting* setting) : m_setting(setting) {
        m_entered = !settingsBeingRead().contains(setting);
        if (m_entered) {
            settingsBeingRead().append(setting);
        }
    }
    ~ReadGuard() {
        if (m_entered) {
            settingsBeingRead().removeOne(m_setting);
        }
    }
    ReadGuard(const ReadGuard&) = delete;
    ReadGuard& operator=(const ReadGuard&) = delete;
    bool entered() const { return m_entered; }

private:
    const Setting* m_setting;
    bool m_entered = false;
};

} // namespace

DependentResolver::DependentResolver(Lookup lookup) : m_lookup(std::move(lookup)) {}

bool DependentResolver::splitReference(const QString& payload, QString* name, int* subIndex) {
    if (!name || !subIndex) {
        return false;
    }
    static const QRegularExpression indexed(QStringLiteral("^(.+)\\[([^\\[\\]]+)\\]$"));
    // Most references are plain names: without a '[' the expression cannot match.
    const QRegularExpressionMatch m =
        payload.contains(QLatin1Char('[')) ? indexed.match(payload) : QRegularExpressionMatch();
    if (!m.hasMatch()) {
        if (payload.isEmpty()) {
            return false;
        }
        *name = payload;
        *subIndex = -1;
        return true;
    }
    const Token indexToken(m.captured(2));
    double index = 0.0;
    if (!parser::CalcParser::tokenValue(indexToken, &index) || index < 0.0 || index > 1e9 ||
        index != static_cast<double>(static_cast<int>(index))) {
        return false;
    }
    *name = m.captured(1);
    *subIndex = static_cast<int>(index);
    return true;
}

bool DependentResolver::referenceValue(Setting* setting, int subIndex, double* value) {
    if (!setting || !value || !setting->isInitialized()) {
        return false;
    }
    const ReadGuard guard(setting);
    if (!guard.entered()) {
        return false;
    }
    if (subIndex >= 0) {
        if (subIndex >= setting->subIndexCount()) {
            return false;
        }
        const QVariant state = setting->subIndexData(subIndex, RoleEdit);
        if (!state.isValid()) {
            return false;
        }
        *value = state.toBool() ? 1.0 : 0.0;
        return true;
    }
    const QVariant edit = setting->getData(RoleEdit);
    bool ok = false;
    const double v = edit.isValid() ? edit.toDouble(&ok) : 0.0;
    if (ok) {
        *value = v;
        return true;
    }
    quint64 raw = 0;
    if (!BitField::readUnsigned(setting->getBytes(), &raw)) {
        return false;
    }
    *value = static_cast<double>(raw);
    return true;
}

bool DependentResolver::replace(Setting* referrer, TokenList& tokens, parser::TokenType type,
                                ReplaceBehaviour behaviour) const {
    bool all = true;
    // Indexed, so that a list without references is not copied (detached) for nothing.
    for (qsizetype i = 0; i < tokens.size(); ++i) {
        const Token& token = tokens.at(i);
        const parser::TokenType t = token.getType();
        if (t != parser::Dependent && t != parser::NegDependent) {
            continue;
        }
        QString name;
        int subIndex = -1;
        Setting* target = nullptr;
        double value = 0.0;
        bool resolved = splitReference(token.getPayload(), &name, &subIndex) && m_lookup &&
                        (target = m_lookup(name)) != nullptr;
        // Registered before the value is read, so a setting whose value cannot be read
        // yet is still re-evaluated once it can. A setting that is still being built is
        // not registered: it may yet fail and be destroyed (it registers when it
        // finishes its setup).
        if (resolved && referrer && target != referrer && referrer->getType() > TypeUninit) {
            target->addDependent(referrer);
        }
        resolved = resolved && referenceValue(target, subIndex, &value);
        if (!resolved) {
            all = false;
            if (behaviour == ReplaceBehaviour::Strict) {
                return false;
            }
            if (behaviour == ReplaceBehaviour::KeepMissing) {
                continue;
            }
            value = 0.0;
        }
        if (t == parser::NegDependent) {
            value = -value;
        }
        tokens[i] = Token(parser::CalcParser::exactText(value), type);
    }
    return all || behaviour == ReplaceBehaviour::ZeroMissing;
}

} // namespace sf
