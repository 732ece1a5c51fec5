#include "support/TableFile.h"

#include "support/TestSupport.h"

#include <QFile>
#include <QRegularExpression>
#include <QtTest>

namespace testsupport {

namespace {

enum class Type { String, Int, UInt, UInt64, Bool, Bytes, Text, Double, List, Variant };

struct Column {
    Type type = Type::String;
};

QStringList cells(const QString& line) {
    // Split at " | " that is not escaped: "\|" stays inside its cell.
    QStringList out;
    QString cell;
    for (int i = 0; i < line.size(); ++i) {
        if (line.at(i) == QLatin1Char('\\') && i + 1 < line.size()) {
            cell += line.at(i);
            cell += line.at(++i);
        } else if (line.at(i) == QLatin1Char('|')) {
            out << cell.trimmed();
            cell.clear();
        } else {
            cell += line.at(i);
        }
    }
    out << cell.trimmed();
    return out;
}

Type typeOf(const QString& name) {
    static const QHash<QString, Type> types{
        {QStringLiteral("string"), Type::String}, {QStringLiteral("int"), Type::Int},
        {QStringLiteral("uint"), Type::UInt},     {QStringLiteral("bool"), Type::Bool},
        {QStringLiteral("bytes"), Type::Bytes},   {QStringLiteral("double"), Type::Double},
        {QStringLiteral("list"), Type::List},     {QStringLiteral("uint64"), Type::UInt64},
        {QStringLiteral("text"), Type::Text},     {QStringLiteral("variant"), Type::Variant}};
    if (!types.contains(name)) {
        qFatal("table: unknown column type %s", qPrintable(name));
    }
    return types.value(name);
}

void addColumn(const QString& header, Type type) {
    // QtTest keeps the column name's pointer: the names live as long as the program.
    static QList<QByteArray> names;
    names.append(header.toLatin1());
    const QByteArray& name = names.last();
    switch (type) {
    case Type::String:
        QTest::addColumn<QString>(name.constData());
        break;
    case Type::Int:
        QTest::addColumn<int>(name.constData());
        break;
    case Type::UInt:
        QTest::addColumn<uint>(name.constData());
        break;
    case Type::Bool:
        QTest::addColumn<bool>(name.constData());
        break;
    case Type::Bytes:
    case Type::Text:
        QTest::addColumn<QByteArray>(name.constData());
        break;
    case Type::UInt64:
        QTest::addColumn<quint64>(name.constData());
        break;
    case Type::Double:
        QTest::addColumn<double>(name.constData());
        break;
    case Type::List:
        QTest::addColumn<QStringList>(name.constData());
        break;
    case Type::Variant:
        QTest::addColumn<QVariant>(name.constData());
        break;
    }
}

QStringList listOf(const QString& cell) {
    QStringList items;
    for (const QString& item : cell.split(QLatin1Char(';'), Qt::SkipEmptyParts)) {
        items << unescapeCell(item.trimmed());
    }
    return items;
}

// "<none>" is an invalid variant; "int:N", "uint:N", "bool:B", "double:D" and "list:A;B"
// are typed values; anything else is a text.
QVariant variantOf(const QString& cell, bool& ok) {
    const QString kind = cell.section(QLatin1Char(':'), 0, 0);
    const QString value = cell.section(QLatin1Char(':'), 1);
    if (cell == QLatin1String("<none>")) {
        return QVariant();
    }
    if (kind == QLatin1String("int")) {
        return value.toInt(&ok, 0);
    }
    if (kind == QLatin1String("uint")) {
        return value.toUInt(&ok, 0);
    }
    if (kind == QLatin1String("list")) {
        return listOf(value);
    }
    if (kind == QLatin1String("bool")) {
        ok = value == QLatin1String("true") || value == QLatin1String("false");
        return value == QLatin1String("true");
    }
    if (kind == QLatin1String("double")) {
        return value.toDouble(&ok);
    }
    return unescapeCell(cell);
}

void addCell(QTestData& row, Type type, const QString& cell, const QString& where) {
    bool ok = true;
    switch (type) {
    case Type::String:
        row << unescapeCell(cell);
        break;
    case Type::Int:
        row << cell.toInt(&ok, 0);
        break;
    case Type::UInt:
        row << cell.toUInt(&ok, 0);
        break;
    case Type::Bool:
        ok = cell == QLatin1String("true") || cell == QLatin1String("false");
        row << (cell == QLatin1String("true"));
        break;
    case Type::UInt64:
        row << cell.toULongLong(&ok, 0);
        break;
    case Type::Bytes:
        row << QByteArray::fromHex(cell.toLatin1());
        break;
    case Type::Text:
        row << unescapeCell(cell).toLatin1();
        break;
    case Type::Variant:
        row << variantOf(cell, ok);
        break;
    case Type::Double:
        row << cell.toDouble(&ok);
        break;
    case Type::List:
        row << listOf(cell);
        break;
    }
    if (!ok) {
        qFatal("%s: bad cell \"%s\"", qPrintable(where), qPrintable(cell));
    }
}

} // namespace

QString unescapeCell(const QString& cell) {
    QString out;
    for (int i = 0; i < cell.size(); ++i) {
        const QChar c = cell.at(i);
        if (c != QLatin1Char('\\') || i + 1 >= cell.size()) {
            out += c;
            continue;
        }
        const QChar e = cell.at(++i);
        if (e == QLatin1Char('s')) {
            out += QLatin1Char(' ');
        } else if (e == QLatin1Char('n')) {
            out += QLatin1Char('\n');
        } else if (e == QLatin1Char('t')) {
            out += QLatin1Char('\t');
        } else if (e == QLatin1Char('r')) {
            out += QLatin1Char('\r');
        } else if (e == QLatin1Char('x') && i + 2 < cell.size()) {
            out += QChar(cell.mid(i + 1, 2).toUInt(nullptr, 16));
            i += 2;
        } else if (e == QLatin1Char('\\') || e == QLatin1Char('|')) {
            out += e;
        } else {
            out += c; // any other backslash stands for itself
            out += e;
        }
    }
    return out;
}

void loadTable(const QString& name) {
    const QString path = sourceDir() + QStringLiteral("/tests/data/tables/") + name;
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly | QIODevice::Text)) {
        qFatal("cannot read the table %s", qPrintable(path));
    }
    QList<Type> types;
    int lineNo = 0;
    int rows = 0;
    while (!file.atEnd()) {
        const QString line = QString::fromUtf8(file.readLine()).trimmed();
        ++lineNo;
        if (line.isEmpty() || line.startsWith(QLatin1Char('#'))) {
            continue;
        }
        const QStringList parts = cells(line);
        const QString where = QStringLiteral("%1:%2").arg(name).arg(lineNo);
        if (types.isEmpty()) {
            types << Type::String; // the row name
            for (int i = 1; i < parts.size(); ++i) {
                const QStringList nameType = parts.at(i).split(QLatin1Char(':'));
                types << typeOf(nameType.value(1, QStringLiteral("string")));
                addColumn(nameType.at(0), types.last());
            }
            continue;
        }
        if (parts.size() != types.size()) {
            qFatal("%s: %d cells, the header has %d", qPrintable(where), int(parts.size()),
                   int(types.size()));
        }
        QTestData& row = QTest::newRow(qPrintable(unescapeCell(parts.at(0))));
        for (int i = 1; i < parts.size(); ++i) {
            addCell(row, types.at(i), parts.at(i), where);
        }
        ++rows;
    }
    if (rows == 0) {
        qFatal("the table %s has no rows", qPrintable(path)); // a test without cases passes
    }
}

void loadTable() {
    const char* function = QTest::currentTestFunction();
    if (!function || !*function) {
        return; // -datatags lists the tables without naming the function
    }
    const QString program = QCoreApplication::applicationName();
    loadTable(program.mid(program.indexOf(QLatin1Char('_')) + 1)
                  .replace(QLatin1Char('_'), QLatin1Char('-')) +
              QLatin1Char('-') + QString::fromLatin1(function) + QStringLiteral(".txt"));
}

} // namespace testsupport
