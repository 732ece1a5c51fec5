#include "sf/SettingAssignment.h"

#include "sf/SettingText.h"
#include "sf/SetupFile.h"

#include "sf/NumSetting.h"
#include "sf/Setting.h"
#include "sf/SettingManager.h"

#include <QStringList>

#include <cmath>

namespace sf {

namespace {

bool parseUnsigned(const QString& text, quint64* out) {
    bool ok = false;
    if (text.startsWith(QLatin1String("0x"), Qt::CaseInsensitive)) {
        *out = text.mid(2).toULongLong(&ok, 16);
    } else {
        *out = text.toULongLong(&ok, 10);
    }
    return ok;
}

bool parseBit(const QString& text, bool* out) {
    const QString t = text.toLower();
    if (t == QLatin1String("1") || t == QLatin1String("on") || t == QLatin1String("true") ||
        t == QLatin1String("yes")) {
        *out = true;
        return true;
    }
    if (t == QLatin1String("0") || t == QLatin1String("off") || t == QLatin1String("false") ||
        t == QLatin1String("no")) {
        *out = false;
        return true;
    }
    return false;
}

// Largest whole value of a bit field of that many bits (up to 64).
quint64 largestValue(int bits) {
    return bits >= 64 ? ~quint64(0) : (quint64(1) << bits) - 1;
}

QString rangeText(SettingManager& manager, Setting* setting, double minimum, double maximum) {
    QString units;
    if (auto* num = qobject_cast<NumSetting*>(setting)) {
        units = num->getUnits();
    }
    Q_UNUSED(manager);
    QString text = QStringLiteral("%1 to %2").arg(numberText(minimum), numberText(maximum));
    return units.isEmpty() ? text : text + QLatin1Char(' ') + units;
}

// Within [minimum, maximum], allowing for the last bits of a double computed by scaling.
bool inRange(double value, double minimum, double maximum) {
    const double slack = 1e-9 * std::max({1.0, std::fabs(minimum), std::fabs(maximum)});
    return value >= minimum - slack && value <= maximum + slack;
}

struct Target {
    SettingManager& manager;
    const SettingRef& ref;
    QString code;  // the setting's code name
    QString label; // how messages name it: the code name, or NAME[k] for a bit
    QString value;
    QString* error;

    AssignResult refuse(const QString& what) const {
        *error = QStringLiteral("%1: %2").arg(label, what);
        return AssignResult::Refused;
    }
    AssignResult set(const QVariant& v) const {
        if (!manager.setSettingData(v, code, ref.subIndex)) {
            return refuse(QStringLiteral("\"%1\" was not accepted").arg(value));
        }
        return AssignResult::Changed;
    }
};

AssignResult assignBit(const Target& t) {
    bool state = false;
    if (!parseBit(t.value, &state)) {
        return t.refuse(QStringLiteral("\"%1\" is no bit value (0 or 1)").arg(t.value));
    }
    if (t.manager.getSettingData(t.code, RoleEdit, t.ref.subIndex).toBool() == state) {
        return AssignResult::Unchanged;
    }
    return t.set(QVariant(state));
}

AssignResult assignNumber(const Target& t) {
    bool ok = false;
    const double v = t.value.toDouble(&ok);
    if (!ok || !std::isfinite(v)) {
        return t.refuse(QStringLiteral("\"%1\" is no number").arg(t.value));
    }
    const QVariant minimum = t.manager.getSettingData(t.code, RoleMinimum);
    const QVariant maximum = t.manager.getSettingData(t.code, RoleMaximum);
    if (minimum.isValid() && maximum.isValid() &&
        !inRange(v, minimum.toDouble(), maximum.toDouble())) {
        return t.refuse(QStringLiteral("%1 is out of range (%2)")
                            .arg(t.value, rangeText(t.manager, t.ref.setting, minimum.toDouble(),
                                                    maximum.toDouble())));
    }
    // A value the setting's bytes cannot hold is refused rather than wrapped or clamped.
    auto* num = qobject_cast<NumSetting*>(t.ref.setting);
    double raw = 0.0;
    if (num && num->untranslate(v, &raw)) {
        const int bits = num->getSizeBits();
        const double span = std::ldexp(1.0, bits - (num->isSigned() ? 1 : 0));
        const double low = num->isSigned() ? -span : 0.0;
        if (std::round(raw) < low || std::round(raw) > span - 1.0) {
            return t.refuse(
                QStringLiteral("%1 does not fit in the setting's %2 bits").arg(t.value).arg(bits));
        }
    }
    return t.set(QVariant(v));
}

AssignResult assignList(const Target& t) {
    const QStringList options = listOptions(t.manager, t.ref.setting);
    int index = options.indexOf(t.value);
    if (index < 0) {
        // A unique option that differs only in case, then an index.
        for (int i = 0; i < options.size(); ++i) {
            if (options.at(i).compare(t.value, Qt::CaseInsensitive) == 0) {
                index = index < 0 ? i : -2;
            }
        }
    }
    if (index < 0) {
        bool ok = false;
        const int number = t.value.toInt(&ok);
        index = ok && number >= 0 && number < options.size() ? number : -1;
    }
    if (index < 0) {
        return t.refuse(QStringLiteral("\"%1\" is not an option (%2) nor an index 0 to %3")
                            .arg(t.value, options.join(QStringLiteral(", ")))
                            .arg(options.size() - 1));
    }
    if (t.manager.getSettingData(t.code, RoleEdit).toInt() == index) {
        return AssignResult::Unchanged;
    }
    return t.set(QVariant(index));
}

AssignResult assignWhole(const Target& t) {
    quint64 v = 0;
    const int bits = t.ref.setting->getSizeBits();
    if (!parseUnsigned(t.value, &v)) {
        return t.refuse(QStringLiteral("\"%1\" is no unsigned number").arg(t.value));
    }
    if (v > largestValue(bits)) {
        return t.refuse(QStringLiteral("%1 does not fit in %2 bits (0 to %3)")
                            .arg(t.value)
                            .arg(bits)
                            .arg(largestValue(bits)));
    }
    if (t.manager.getSettingData(t.code, RoleRaw).toULongLong() == v) {
        return AssignResult::Unchanged;
    }
    if (t.ref.setting->getType() == TypeBool) {
        return t.set(QVariant(static_cast<qulonglong>(v)));
    }
    // A check box group takes its bytes, most significant first.
    QByteArray bytes(t.ref.setting->getSizeBytes(), '\0');
    for (int i = bytes.size() - 1; i >= 0 && v; --i, v >>= 8) {
        bytes[i] = static_cast<char>(v & 0xFF);
    }
    return t.set(QVariant(bytes));
}

} // namespace

bool parseAssignment(const QString& text, Assignment* out) {
    const int eq = text.indexOf(QLatin1Char('='));
    if (eq <= 0) {
        return false;
    }
    out->name = text.left(eq).trimmed();
    out->value = text.mid(eq + 1).trimmed();
    return !out->name.isEmpty();
}

bool parseAssignments(const QByteArray& text, const QString& name, QList<Assignment>* out,
                      QString* error) {
    const QStringList lines = QString::fromUtf8(text).split(QLatin1Char('\n'));
    for (int i = 0; i < lines.size(); ++i) {
        const QString line = lines.at(i).trimmed();
        if (line.isEmpty() || line.startsWith(QLatin1Char('#'))) {
            continue;
        }
        Assignment a;
        if (!parseAssignment(line, &a)) {
            *error = QStringLiteral("%1:%2: expected NAME=VALUE").arg(name).arg(i + 1);
            return false;
        }
        a.origin = QStringLiteral("%1:%2").arg(name).arg(i + 1);
        out->append(a);
    }
    return true;
}

AssignResult assign(SetupFile& file, const Assignment& assignment, QString* error) {
    SettingRef ref;
    QString why;
    const QString prefix =
        assignment.origin.isEmpty() ? QString() : assignment.origin + QStringLiteral(": ");
    if (!file.resolve(assignment.name, &ref, &why)) {
        *error = prefix + why;
        return AssignResult::Refused;
    }
    const AssignResult result = assignText(file.manager(), ref, assignment.value, error);
    if (result == AssignResult::Refused) {
        *error = prefix + *error;
    }
    return result;
}

AssignResult assignText(SettingManager& manager, const SettingRef& ref, const QString& text,
                        QString* error) {
    if (!ref.setting) {
        *error = QStringLiteral("no setting");
        return AssignResult::Refused;
    }
    const QString code = ref.setting->getCodeName();
    const QString label =
        ref.subIndex >= 0 ? QStringLiteral("%1[%2]").arg(code).arg(ref.subIndex) : code;
    const Target t{manager, ref, code, label, text.trimmed(), error};
    if (!ref.setting->isEnabled() || !manager.isCategoryEnabled(ref.setting->getCategory())) {
        return t.refuse(QStringLiteral("the setting is disabled and cannot be edited"));
    }
    const QByteArray before = ref.setting->getBytes();
    AssignResult result = AssignResult::Refused;
    if (ref.subIndex >= 0) {
        result = assignBit(t);
    } else {
        switch (ref.setting->getType()) {
        case TypeNum:
            result = assignNumber(t);
            break;
        case TypeList:
            result = assignList(t);
            break;
        case TypeBool:
        case TypeCheckBool:
            result = assignWhole(t);
            break;
        default:
            result = t.refuse(QStringLiteral("the setting could not be built"));
            break;
        }
    }
    if (result == AssignResult::Changed && ref.setting->getBytes() == before) {
        result = AssignResult::Unchanged;
    }
    return result;
}

QString outOfRangeReason(SettingManager& manager, Setting* setting) {
    if (!setting || setting->getType() != TypeNum) {
        return QString();
    }
    const QString code = setting->getCodeName();
    const QVariant value = manager.getSettingData(code, RoleEdit);
    const QVariant minimum = manager.getSettingData(code, RoleMinimum);
    const QVariant maximum = manager.getSettingData(code, RoleMaximum);
    if (!value.isValid() || !minimum.isValid() || !maximum.isValid() ||
        inRange(value.toDouble(), minimum.toDouble(), maximum.toDouble())) {
        return QString();
    }
    return QStringLiteral("%1: %2 is out of range (%3)")
        .arg(code, numberText(value.toDouble()),
             rangeText(manager, setting, minimum.toDouble(), maximum.toDouble()));
}

} // namespace sf
