#include "support/LayoutFixtures.h"

#include "kxs/KxsFormat.h"
#include "kxs/compiler/LayoutCompiler.h"

#include <QTest>
#include <QtEndian>

namespace testsupport {

using kxs::appendLE16;
using kxs::appendLE32;

namespace {

quint32 pick(qint64 given, qint64 computed) {
    return static_cast<quint32>(given >= 0 ? given : computed);
}

} // namespace

QByteArray compileLayout(const QString& source) {
    QByteArray bytes;
    QString error;
    if (!kxs::compiler::LayoutCompiler::compile(source, &bytes, &error)) {
        QTest::qFail(qPrintable(QStringLiteral("layout source does not compile: ") + error),
                     __FILE__, __LINE__);
        return QByteArray();
    }
    return bytes;
}

QByteArray rawEntry(quint8 length, quint8 type, quint32 offset, quint32 size,
                    const QByteArray& nameField) {
    QByteArray e;
    e.append(static_cast<char>(length));
    e.append(static_cast<char>(type));
    appendLE32(e, offset);
    appendLE32(e, size);
    e.append(nameField);
    return e;
}

QByteArray rawEntry(quint8 type, quint32 offset, quint32 size, const QByteArray& nameField) {
    return rawEntry(static_cast<quint8>(10 + nameField.size()), type, offset, size, nameField);
}

QByteArray RawLayout::toBytes() const {
    QByteArray out = magic.left(6);
    QByteArray v = version.left(16);
    v.append(QByteArray(16 - v.size(), '\0'));
    out.append(v);
    appendLE16(out, format);
    appendLE32(out, pick(namesOffset, 40));
    appendLE32(out, pick(namesSize, names.size()));
    appendLE32(out, pick(dataOffset, 40 + names.size()));
    appendLE32(out, pick(dataSize, data.size()));
    out.append(names);
    out.append(data);
    return out;
}

} // namespace testsupport
