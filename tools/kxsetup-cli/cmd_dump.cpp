// kxsetup-cli dump FILE [--layout L.kxs] [--json]: every setting of a setup or firmware
// file in layout order, grouped by category in the plain form.
#include "Command.h"
#include "Problems.h"

#include "sf/SettingText.h"
#include "sf/SetupFile.h"

#include "sf/Category.h"
#include "sf/NumSetting.h"
#include "sf/RawSetting.h"
#include "sf/Setting.h"
#include "sf/SettingManager.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

namespace {

// Integers beyond 2^53 do not survive a JSON number; they are written as decimal text.
QJsonValue jsonInteger(const QVariant& value) {
    const qulonglong v = value.toULongLong();
    if (v <= (qulonglong(1) << 53)) {
        return QJsonValue(static_cast<double>(v));
    }
    return QJsonValue(QString::number(v));
}

QJsonArray jsonBits(sf::SettingManager& manager, sf::Setting* s) {
    QJsonArray bits;
    const QStringList labels = sf::bitLabelTexts(s);
    for (int k = 0; k < labels.size(); ++k) {
        QJsonObject bit;
        bit.insert(QStringLiteral("label"), labels.at(k));
        bit.insert(QStringLiteral("value"),
                   manager.getSettingData(s->getCodeName(), sf::RoleEdit, k).toBool());
        bits.append(bit);
    }
    return bits;
}

QJsonObject jsonSetting(sf::SettingManager& manager, const sf::RawSetting* raw) {
    QJsonObject o;
    o.insert(QStringLiteral("code"), raw->getCodeName());
    sf::Setting* s = manager.getSetting(raw->getCodeName());
    if (!s) {
        o.insert(QStringLiteral("type"), QStringLiteral("none"));
        o.insert(QStringLiteral("enabled"), raw->isEnabled());
        o.insert(QStringLiteral("hidden"), raw->isHidden());
        return o;
    }
    const QString code = s->getCodeName();
    const sf::SettingType type = s->getType();
    o.insert(QStringLiteral("base"), s->getBaseCodeName());
    o.insert(QStringLiteral("category"), s->getCategory());
    o.insert(QStringLiteral("preset"), s->getPreset());
    o.insert(QStringLiteral("type"), sf::kindName(s));
    const QString wsi = s->helpIdentifier();
    if (!wsi.isEmpty()) {
        o.insert(QStringLiteral("wsi"), wsi);
    }
    o.insert(QStringLiteral("name"), manager.getSettingData(code, sf::RoleName).toString());
    o.insert(QStringLiteral("enabled"), s->isEnabled());
    o.insert(QStringLiteral("hidden"), s->isHidden());
    o.insert(QStringLiteral("raw"), jsonInteger(manager.getSettingData(code, sf::RoleRaw)));
    const QVariant edit = manager.getSettingData(code, sf::RoleEdit);
    if (type == sf::TypeNum && edit.isValid()) {
        o.insert(QStringLiteral("value"), edit.toDouble());
    } else if (type == sf::TypeList) {
        o.insert(QStringLiteral("value"), edit.toInt());
    } else if (type == sf::TypeBool && edit.isValid()) {
        o.insert(QStringLiteral("value"), jsonInteger(edit));
    }
    // A list's display role holds its options; its display text is the chosen one.
    o.insert(QStringLiteral("display"),
             type == sf::TypeList ? sf::shownText(manager, {s, -1})
                                  : manager.getSettingData(code, sf::RoleDisplay).toString());
    const QVariant minimum = manager.getSettingData(code, sf::RoleMinimum);
    const QVariant maximum = manager.getSettingData(code, sf::RoleMaximum);
    if (minimum.isValid() && maximum.isValid()) {
        o.insert(QStringLiteral("min"), minimum.toDouble());
        o.insert(QStringLiteral("max"), maximum.toDouble());
    }
    if (auto* num = qobject_cast<sf::NumSetting*>(s)) {
        o.insert(QStringLiteral("units"), num->getUnits());
    }
    if (type == sf::TypeList) {
        o.insert(QStringLiteral("options"),
                 QJsonArray::fromStringList(sf::listOptions(manager, s)));
    }
    if (type == sf::TypeBool || type == sf::TypeCheckBool) {
        o.insert(QStringLiteral("bits"), jsonBits(manager, s));
    }
    return o;
}

void printJson(cli::Context& ctx, sf::SetupFile& setup) {
    sf::SettingManager& manager = setup.manager();
    QJsonObject root;
    root.insert(QStringLiteral("fw"), manager.getFwVersion());
    root.insert(QStringLiteral("kxs"), manager.getKxsVersion());
    root.insert(QStringLiteral("enq"), manager.getEnqString());
    root.insert(QStringLiteral("problems"), setup.problems());
    QJsonArray categories;
    for (sf::Category* c : manager.getCategories()) {
        QJsonObject o;
        o.insert(QStringLiteral("label"), c->getLabel());
        o.insert(QStringLiteral("title"), c->getName());
        o.insert(QStringLiteral("presetName"), c->getPresetName());
        o.insert(QStringLiteral("presets"), c->numberOfPresets());
        o.insert(QStringLiteral("rows"), c->getSize());
        if (const sf::Setting* counter = c->getPresetCount()) {
            int enabled = 0;
            for (int p = 0; p < c->numberOfPresets(); ++p) {
                enabled += c->isPresetEnabled(p) ? 1 : 0;
            }
            o.insert(QStringLiteral("counter"), counter->getCodeName());
            o.insert(QStringLiteral("enabledPresets"), enabled);
        }
        categories.append(o);
    }
    root.insert(QStringLiteral("categories"), categories);
    QJsonArray settings;
    for (const sf::RawSetting* raw : manager.getRawSettings()) {
        settings.append(jsonSetting(manager, raw));
    }
    root.insert(QStringLiteral("settings"), settings);
    ctx.out << QJsonDocument(root).toJson(QJsonDocument::Indented);
}

void printSetting(cli::Context& ctx, sf::SettingManager& manager, sf::Setting* s) {
    QString flags;
    if (!s->isEnabled()) {
        flags += QStringLiteral("  (disabled)");
    }
    if (s->isHidden()) {
        flags += QStringLiteral("  (hidden)");
    }
    const QString name = manager.getSettingData(s->getCodeName(), sf::RoleName).toString();
    ctx.out << "  " << s->getCodeName().leftJustified(16) << " " << name.leftJustified(26) << " "
            << sf::shownText(manager, {s, -1}).trimmed() << flags << "\n";
    const QStringList labels = sf::bitLabelTexts(s);
    for (int k = 0; k < labels.size(); ++k) {
        ctx.out << "      " << QStringLiteral("[%1] %2").arg(k).arg(labels.at(k)).leftJustified(38)
                << " " << sf::shownText(manager, {s, k}) << "\n";
    }
}

void printPlain(cli::Context& ctx, sf::SetupFile& setup) {
    sf::SettingManager& manager = setup.manager();
    ctx.out << setup.path() << "\n"
            << "Firmware " << manager.getFwVersion() << ", layout " << manager.getKxsVersion()
            << ", ENQ \"" << manager.getEnqString() << "\"; " << manager.getRawSettings().size()
            << " settings, " << setup.problems() << " problems\n";
    for (const sf::Category* c : manager.getCategories()) {
        ctx.out << "\n" << c->getName() << " [" << c->getLabel() << "]";
        if (c->numberOfPresets() > 1) {
            ctx.out << ", " << c->numberOfPresets() << " presets";
            if (!c->getPresetName().isEmpty()) {
                ctx.out << " (" << c->getPresetName() << ")";
            }
        }
        ctx.out << "\n";
        for (const sf::RawSetting* raw : manager.getRawSettings()) {
            sf::Setting* s = manager.getSetting(raw->getCodeName());
            if (s && s->getCategory() == c->getLabel()) {
                printSetting(ctx, manager, s);
            }
        }
    }
    for (const sf::RawSetting* raw : manager.getRawSettings()) {
        if (!manager.getSetting(raw->getCodeName())) {
            ctx.out << "  " << raw->getCodeName() << ": could not be read\n";
        }
    }
}

int runDump(cli::Context& ctx) {
    const QString cmd = QStringLiteral("dump");
    QString layout, error;
    bool hasLayout = false;
    const bool json = cli::takeFlag(ctx.args, QStringLiteral("--json"));
    if (!cli::takeOption(ctx.args, QStringLiteral("--layout"), layout, hasLayout, error)) {
        return cli::usageError(ctx, cmd, error);
    }
    if (ctx.args.size() != 1) {
        return cli::usageError(ctx, cmd, QStringLiteral("give exactly one file"));
    }
    const QString file = ctx.filePath(ctx.args.first());
    sf::SetupFile setup;
    if (!cli::openSetup(ctx, setup, file, hasLayout ? ctx.filePath(layout) : QString())) {
        return cli::ExitInput;
    }
    if (json) {
        printJson(ctx, setup);
    } else {
        printPlain(ctx, setup);
    }
    return cli::ExitOk;
}

cli::Registrar reg({QStringLiteral("dump"), QStringLiteral("dump FILE [--layout L.kxs] [--json]"),
                    QStringLiteral("Print every setting of a setup or firmware file"), runDump});

} // namespace
