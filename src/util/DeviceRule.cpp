#include "util/DeviceRule.h"

#include <QList>

#include <algorithm>

namespace util {

const QString DEVICE_RULE_FILE = QStringLiteral("60-kxsetup.rules");

QStringList udevRuleFolders() {
    return {QStringLiteral("/etc/udev/rules.d"), QStringLiteral("/run/udev/rules.d"),
            QStringLiteral("/usr/local/lib/udev/rules.d"), QStringLiteral("/usr/lib/udev/rules.d"),
            QStringLiteral("/lib/udev/rules.d")};
}

namespace {

struct Item {
    QString key;
    QString attribute;
    QString op;
    QString value;
};

enum Use { Match = 1, Assign = 2, Either = 3 };
enum Attribute { None, Optional, Required };
struct Key {
    const char* name;
    Use use;
    Attribute attribute;
};

// The keys of udev's rules and the operators they take (udev(7)).
const Key KEYS[] = {
    {"ACTION", Match, None},      {"DEVPATH", Match, None},   {"KERNEL", Match, None},
    {"KERNELS", Match, None},     {"SUBSYSTEM", Match, None}, {"SUBSYSTEMS", Match, None},
    {"DRIVER", Match, None},      {"DRIVERS", Match, None},   {"DEVTYPE", Match, None},
    {"ATTRS", Match, Required},   {"TAGS", Match, None},      {"TEST", Match, Optional},
    {"PROGRAM", Match, None},     {"RESULT", Match, None},    {"CONST", Match, Required},
    {"NAME", Either, None},       {"SYMLINK", Either, None},  {"ENV", Either, Required},
    {"TAG", Either, None},        {"ATTR", Either, Required}, {"SYSCTL", Either, Required},
    {"IMPORT", Either, Required}, {"OWNER", Assign, None},    {"GROUP", Assign, None},
    {"MODE", Assign, None},       {"RUN", Assign, Optional},  {"LABEL", Assign, None},
    {"GOTO", Assign, None},       {"OPTIONS", Assign, None},  {"SECLABEL", Assign, Required}};

const Key* findKey(const QString& name) {
    for (const Key& key : KEYS) {
        if (name == QLatin1String(key.name)) {
            return &key;
        }
    }
    return nullptr;
}

// Why the item cannot stand in a rule; empty when it can.
QString refusal(const Item& item) {
    const Key* key = findKey(item.key);
    if (!key) {
        return QStringLiteral("unknown key %1").arg(item.key);
    }
    if (key->attribute == None && !item.attribute.isNull()) {
        return QStringLiteral("%1 takes no {attribute}").arg(item.key);
    }
    if (key->attribute == Required && item.attribute.isEmpty()) {
        return QStringLiteral("%1 needs an {attribute}").arg(item.key);
    }
    const bool match = item.op == QLatin1String("==") || item.op == QLatin1String("!=");
    if (!(key->use & (match ? Match : Assign))) {
        return QStringLiteral("%1 does not take %2").arg(item.key, item.op);
    }
    return QString();
}

// The items of one rule: KEY[{attribute}] OPERATOR "value", separated by commas.
bool parseRule(const QString& line, QList<Item>* items, QString* error) {
    static const char* const OPERATORS[] = {"==", "!=", "+=", "-=", ":=", "="};
    int i = 0;
    const auto skipBlanks = [&] {
        while (i < line.size() && line.at(i).isSpace()) {
            ++i;
        }
    };
    for (;;) {
        skipBlanks();
        Item item;
        const int start = i;
        while (i < line.size() &&
               (line.at(i).isLetterOrNumber() || line.at(i) == QLatin1Char('_'))) {
            ++i;
        }
        item.key = line.mid(start, i - start);
        if (item.key.isEmpty()) {
            *error = QStringLiteral("a key is expected at \"%1\"").arg(line.mid(start));
            return false;
        }
        if (i < line.size() && line.at(i) == QLatin1Char('{')) {
            const int close = line.indexOf(QLatin1Char('}'), i);
            if (close < 0) {
                *error = QStringLiteral("%1{ has no closing }").arg(item.key);
                return false;
            }
            item.attribute = line.mid(i + 1, close - i - 1);
            i = close + 1;
        }
        skipBlanks();
        for (const char* op : OPERATORS) {
            if (line.mid(i, int(qstrlen(op))) == QLatin1String(op)) {
                item.op = QLatin1String(op);
                i += item.op.size();
                break;
            }
        }
        skipBlanks();
        if (item.op.isEmpty() || i >= line.size() || line.at(i) != QLatin1Char('"')) {
            *error = item.op.isEmpty()
                         ? QStringLiteral("%1 has no operator").arg(item.key)
                         : QStringLiteral("the value of %1 is not in double quotes").arg(item.key);
            return false;
        }
        bool closed = false;
        for (++i; i < line.size() && !closed; ++i) {
            if (line.at(i) == QLatin1Char('\\') && i + 1 < line.size()) {
                item.value += line.at(++i);
            } else if (line.at(i) == QLatin1Char('"')) {
                closed = true;
            } else {
                item.value += line.at(i);
            }
        }
        if (!closed) {
            *error = QStringLiteral("the value of %1 has no closing quote").arg(item.key);
            return false;
        }
        *error = refusal(item);
        if (!error->isEmpty()) {
            return false;
        }
        items->append(item);
        skipBlanks();
        if (i >= line.size()) {
            return true;
        }
        if (line.at(i) != QLatin1Char(',')) {
            *error = QStringLiteral("a comma is missing after %1").arg(item.key);
            return false;
        }
        ++i;
    }
}

QString valueOf(const QList<Item>& items, const char* key, const char* attribute, const char* op) {
    for (const Item& item : items) {
        if (item.key == QLatin1String(key) && item.attribute == QLatin1String(attribute) &&
            item.op == QLatin1String(op)) {
            return item.value;
        }
    }
    return QString();
}

} // namespace

bool readDeviceRule(const QByteArray& text, QStringList* adapters, QString* error) {
    const QStringList lines = QString::fromUtf8(text).split(QLatin1Char('\n'));
    QStringList found;
    QList<QPair<int, QString>> gotos;
    for (int n = 0; n < lines.size(); ++n) {
        const int first = n;
        QString line = lines.at(n).trimmed();
        while (line.endsWith(QLatin1Char('\\')) && n + 1 < lines.size()) {
            line.chop(1);
            line += lines.at(++n).trimmed();
        }
        if (line.isEmpty() || line.startsWith(QLatin1Char('#'))) {
            continue;
        }
        QList<Item> items;
        QString why;
        if (!parseRule(line, &items, &why)) {
            *error = QStringLiteral("line %1: %2").arg(first + 1).arg(why);
            return false;
        }
        // Each GOTO jumps forward, to a LABEL after it.
        for (const Item& item : items) {
            if (item.key == QLatin1String("GOTO")) {
                gotos.append({first + 1, item.value});
            } else if (item.key == QLatin1String("LABEL")) {
                gotos.erase(std::remove_if(gotos.begin(), gotos.end(),
                                           [&](const QPair<int, QString>& g) {
                                               return g.second == item.value;
                                           }),
                            gotos.end());
            }
        }
        const QString vendor = valueOf(items, "ATTRS", "idVendor", "==");
        const QString product = valueOf(items, "ATTRS", "idProduct", "==");
        if (!vendor.isEmpty() && !product.isEmpty() &&
            valueOf(items, "TAG", "", "+=") == QLatin1String("uaccess") &&
            valueOf(items, "ENV", "ID_MM_DEVICE_IGNORE", "=") == QLatin1String("1")) {
            found << vendor + QLatin1Char(':') + product;
        }
    }
    if (!gotos.isEmpty()) {
        *error = QStringLiteral("line %1: GOTO \"%2\" has no LABEL after it")
                     .arg(gotos.first().first)
                     .arg(gotos.first().second);
        return false;
    }
    *adapters = found;
    error->clear();
    return true;
}

} // namespace util
