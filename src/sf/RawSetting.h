#pragma once

#include <QByteArray>
#include <QString>

namespace sf {

// The bytes of one layout entry: where they live in the setup image, how many there
// are, and whether the entry is enabled or hidden. A plain value; copies duplicate the
// bytes.
class RawSetting {
public:
    RawSetting(const QString& codeName, qint32 size, qint32 address, bool enabled, bool hidden);

    // The setting's bytes: exactly getSizeBytes() of them (zero until setData).
    const char* getData() const { return m_data.constData(); }
    const QByteArray& bytes() const { return m_data; }
    qint32 getSizeBytes() const { return m_size; }
    qint32 getAddress() const { return m_address; }
    void setAddress(qint32 address) { m_address = address; }
    const QString& getCodeName() const { return m_codeName; }

    // Copies exactly getSizeBytes() bytes; does nothing for a null pointer or a size
    // that is not positive.
    void setData(const char* bytes);

    bool isEnabled() const { return m_enabled; }
    void setEnabled(bool enabled) { m_enabled = enabled; }
    bool isHidden() const { return m_hidden; }
    void setHidden(bool hidden) { m_hidden = hidden; }

private:
    QString m_codeName;
    qint32 m_size;
    qint32 m_address;
    QByteArray m_data;
    bool m_enabled;
    bool m_hidden;
};

} // namespace sf
