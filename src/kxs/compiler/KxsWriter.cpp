#include "kxs/compiler/KxsWriter.h"

#include "kxs/KxsFormat.h"

#include <QtEndian>

namespace kxs {
namespace compiler {

namespace {

bool isLatin1(const QString& text) {
    for (const QChar c : text) {
        if (c.unicode() > 0xFF) {
            return false;
        }
    }
    return true;
}

} // namespace

bool KxsWriter::fail(const QString& message) {
    m_error = message;
    return false;
}

bool KxsWriter::latin1(const QString& text, const QString& what, QByteArray* out) {
    if (!isLatin1(text)) {
        return fail(QStringLiteral("%1 has a character outside Latin-1").arg(what));
    }
    *out = text.toLatin1();
    return true;
}

bool KxsWriter::setVersion(const QString& version) {
    QByteArray bytes;
    if (!latin1(version, QStringLiteral("version"), &bytes)) {
        return false;
    }
    if (bytes.size() > KXS_VERSION_SIZE) {
        return fail(QStringLiteral("version \"%1\" is longer than %2 bytes")
                        .arg(version)
                        .arg(KXS_VERSION_SIZE));
    }
    m_version = version;
    return true;
}

bool KxsWriter::addRaw(quint8 type, const QString& name, const QByteArray& data,
                       bool terminateName) {
    QByteArray field;
    if (!latin1(name, QStringLiteral("name \"%1\"").arg(name), &field)) {
        return false;
    }
    if (terminateName) {
        field.append('\0');
    }
    if (KXS_ENTRY_FIXED_SIZE + field.size() > KXS_ENTRY_MAX_LENGTH) {
        return fail(
            QStringLiteral("name \"%1\" is longer than %2 bytes")
                .arg(name)
                .arg(KXS_ENTRY_MAX_LENGTH - KXS_ENTRY_FIXED_SIZE - (terminateName ? 1 : 0)));
    }
    Entry entry;
    entry.type = type;
    entry.name = field;
    entry.data = data;
    m_entries.append(entry);
    return true;
}

bool KxsWriter::addCategory(const QString& label, const QString& title, const QString& presetName) {
    QByteArray a;
    QByteArray b;
    if (!latin1(title, QStringLiteral("category title"), &a) ||
        !latin1(presetName, QStringLiteral("preset name"), &b)) {
        return false;
    }
    if (a.size() > 255 || b.size() > 255) {
        return fail(QStringLiteral("category title and preset name are at most 255 bytes each"));
    }
    QByteArray data;
    data.append(static_cast<char>(a.size()));
    data.append(static_cast<char>(b.size()));
    data.append(a);
    data.append(b);
    return addRaw(EntryCategory, label, data);
}

bool KxsWriter::addSetting(const QString& name, quint32 address, qint32 sizeBytes,
                           const QString& definitionText) {
    QByteArray text;
    if (!latin1(definitionText, QStringLiteral("definition of \"%1\"").arg(name), &text)) {
        return false;
    }
    QByteArray data;
    appendLE32(data, address);
    appendLE32(data, static_cast<quint32>(sizeBytes));
    data.append(text);
    return addRaw(EntrySetting, name, data);
}

bool KxsWriter::addInteger(const QString& name, quint64 value, int byteSize) {
    QByteArray data;
    switch (byteSize) {
    case 1:
    case 2:
    case 4:
        if (value > (quint64(1) << (8 * byteSize)) - 1) {
            return fail(
                QStringLiteral("value %1 does not fit in %2 byte(s)").arg(value).arg(byteSize));
        }
        break;
    case 8:
        break;
    default:
        return fail(
            QStringLiteral("integer size must be 1, 2, 4 or 8 bytes, not %1").arg(byteSize));
    }
    switch (byteSize) {
    case 1:
        data.append(static_cast<char>(value));
        break;
    case 2:
        appendLE16(data, static_cast<quint16>(value));
        break;
    case 4:
        appendLE32(data, static_cast<quint32>(value));
        break;
    default:
        appendLE64(data, value);
        break;
    }
    return addRaw(EntryInteger, name, data);
}

bool KxsWriter::addString(const QString& name, const QString& text) {
    QByteArray bytes;
    if (!latin1(text, QStringLiteral("text of \"%1\"").arg(name), &bytes)) {
        return false;
    }
    return addRaw(EntryString, name, bytes);
}

QByteArray KxsWriter::toBytes() const {
    QByteArray names;
    QByteArray data;
    for (const Entry& e : m_entries) {
        names.append(static_cast<char>(KXS_ENTRY_FIXED_SIZE + e.name.size()));
        names.append(static_cast<char>(e.type));
        appendLE32(names, static_cast<quint32>(data.size()));
        appendLE32(names, static_cast<quint32>(e.data.size()));
        names.append(e.name);
        data.append(e.data);
    }
    QByteArray out;
    out.reserve(KXS_HEADER_SIZE + names.size() + data.size());
    out.append(KXS_MAGIC_FILE_ID, KXS_MAGIC_SIZE);
    QByteArray version = m_version.toLatin1();
    version.append(QByteArray(KXS_VERSION_SIZE - version.size(), '\0'));
    out.append(version);
    appendLE16(out, m_format);
    const quint32 namesOffset = KXS_HEADER_SIZE;
    const quint32 dataOffset = namesOffset + static_cast<quint32>(names.size());
    appendLE32(out, namesOffset);
    appendLE32(out, static_cast<quint32>(names.size()));
    appendLE32(out, dataOffset);
    appendLE32(out, static_cast<quint32>(data.size()));
    out.append(names);
    out.append(data);
    return out;
}

} // namespace compiler
} // namespace kxs
