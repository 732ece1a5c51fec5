#pragma once

#include <QObject>
#include <QString>

namespace sf {

// One category heading of the layout and one table of the user interface.
// (The grid of settings is added by the settings model.)
class Category : public QObject {
    Q_OBJECT
public:
    Category(const QString& name, const QString& label, const QString& presetName, bool enabled);
    ~Category() override;

    const QString& getName() const { return m_name; }
    const QString& getLabel() const { return m_label; }
    const QString& getPresetName() const { return m_presetName; }
    bool isEnabled() const { return m_enabled; }
    void setEnabled(bool enabled) { m_enabled = enabled; }

private:
    QString m_name;
    QString m_label;
    QString m_presetName;
    bool m_enabled;
};

} // namespace sf
