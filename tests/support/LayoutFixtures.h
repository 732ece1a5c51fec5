#pragma once

// Helpers for tests that need layout files: compiled from layout source, or laid out
// byte by byte (for damaged files the writer cannot produce).

#include <QByteArray>
#include <QString>

namespace testsupport {

// Compiles layout source text. On a compile error the current test fails (QTest::qFail
// with the compiler's message) and an empty array is returned; check
// QTest::currentTestFailed() or the result's emptiness before going on.
QByteArray compileLayout(const QString& source);

// One names-table entry with an explicit length byte, which need not agree with the
// name's size (so damaged entries can be made).
QByteArray rawEntry(quint8 length, quint8 type, quint32 offset, quint32 size,
                    const QByteArray& nameField);
// A well-formed entry: length 10 + nameField.size().
QByteArray rawEntry(quint8 type, quint32 offset, quint32 size, const QByteArray& nameField);

// A layout file assembled from its parts: header, names table right after it, data
// section right after that. Any header field can be overridden (-1 keeps the computed
// value).
struct RawLayout {
    QByteArray magic = QByteArrayLiteral("KXDATA");
    QByteArray version = QByteArrayLiteral("TEST");
    quint16 format = 1000;
    QByteArray names;
    QByteArray data;
    qint64 namesOffset = -1;
    qint64 namesSize = -1;
    qint64 dataOffset = -1;
    qint64 dataSize = -1;

    QByteArray toBytes() const;
};

} // namespace testsupport
