#pragma once

#include <QByteArray>
#include <QString>
#include <QVector>

namespace kxs {
namespace compiler {

// Builds a binary layout file (".kxs") from entries added in order: the 40-byte header,
// then the names table, then the data section. Texts and names are Latin-1; an add that
// cannot be represented fails, leaves the writer unchanged and sets errorString().
//
// Names are written with a terminating zero byte inside their field, so a looked-up name
// that merely begins with a stored one never matches it.
class KxsWriter {
public:
    // At most 16 Latin-1 bytes; 16 bytes are stored without a terminator.
    bool setVersion(const QString& version);
    // Stored as given (any 16-bit value, so unreadable files can be made on purpose).
    void setFormat(quint16 format) { m_format = format; }
    QString version() const { return m_version; }
    quint16 format() const { return m_format; }

    // Category heading: the label is the entry's name; the title and the preset name
    // are at most 255 bytes each.
    bool addCategory(const QString& label, const QString& title, const QString& presetName);
    // Setting: address, size in bytes and definition text.
    bool addSetting(const QString& name, quint32 address, qint32 sizeBytes,
                    const QString& definitionText);
    // Integer constant of 1, 2, 4 or 8 bytes; the value must fit.
    bool addInteger(const QString& name, quint64 value, int byteSize);
    bool addString(const QString& name, const QString& text);
    // Any type and data block as given. With terminateName false the name fills its
    // field without a zero byte.
    bool addRaw(quint8 type, const QString& name, const QByteArray& data,
                bool terminateName = true);

    int entryCount() const { return m_entries.size(); }
    QString errorString() const { return m_error; }

    QByteArray toBytes() const;

private:
    struct Entry {
        quint8 type = 0;
        QByteArray name; // the name field as stored
        QByteArray data;
    };
    bool fail(const QString& message);
    bool latin1(const QString& text, const QString& what, QByteArray* out);

    QString m_version;
    quint16 m_format = 1000;
    QVector<Entry> m_entries;
    QString m_error;
};

} // namespace compiler
} // namespace kxs
