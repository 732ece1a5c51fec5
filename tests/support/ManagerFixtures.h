#pragma once

// Fixtures for the setting manager tests: layouts compiled from source, setup images
// written as Intel HEX text, files for them in a temporary folder, and a minimal table
// model that shows categories through the manager.

#include "util/VersionContainer.h"

#include <QAbstractTableModel>
#include <QByteArray>
#include <QMap>
#include <QString>
#include <QTemporaryDir>

namespace sf {
class SettingManager;
}

namespace testsupport {

// The firmware and layout versions of the standard setup below.
inline const QString FW = QStringLiteral("FW1");
inline const QString KXS = QStringLiteral("KX4-T1");

// Intel HEX text: the metadata records (firmware version, layout version, ENQ text; each
// only when not empty), the bytes of each block at its address (16 per record, with
// extended-address records where the upper 16 bits change) and the end-of-file record.
QByteArray hexImage(const QMap<quint32, QByteArray>& blocks, const QString& fwVersion,
                    const QString& kxsVersion, const QString& enq = QString());

// A version naming a layout file.
util::VersionContainer managerVersion(const QString& fwVersion, const QString& kxsVersion,
                                      const QString& kxsFilePath = QString());

// A small layout exercising every kind ("KX4-T1", no phantom bytes):
//   Early (0x00, before any heading), category Batt "Battery" with preset counter Packs:
//   Packs 0x01, Cells1 0x02 and Cells2 0x03 (both WSI CELLS, presets 0 and 1),
//   Lim1 0x04-05 (range 0`Cells1*42, /10), Low1 0x06-07 (range 0`Cells1*30, /10);
//   category Disp "Display": Flags 0x08-09 (bool, 16 bits, 3 labels), Boxes 0x0A
//   (checkbool[8], 3 boxes), Screen 0x0B (list of 3), Hid 0x0C (HID), Dis 0x0D (DIS).
QString standardLayoutSource();
// Image bytes for the standard layout: Early 7, Packs 1, Cells1 12, Cells2 10,
// Lim1 480, Low1 350, Flags 0x0005, Boxes 0x02, Screen 1, Hid 0x11, Dis 0x22, and two
// bytes 0xEE 0xEF at 0x0E that belong to no setting.
QByteArray standardImageBytes();
QByteArray standardImage(const QString& fwVersion = FW, const QString& kxsVersion = KXS);

// A temporary folder holding a layout file and a setup image.
class ManagerFiles {
public:
    ManagerFiles();
    bool isValid() const { return m_dir.isValid(); }
    QString path(const QString& name) const { return m_dir.filePath(name); }
    // Writes bytes to a file in the folder; returns its path (empty on failure).
    QString write(const QString& name, const QByteArray& bytes) const;
    static QByteArray read(const QString& path);

private:
    QTemporaryDir m_dir;
};

// Loads the standard layout and image into the manager from files in files;
// returns the load result.
int loadStandard(sf::SettingManager& manager, ManagerFiles& files,
                 const QByteArray& image = standardImage());

// A table model that shows what the manager maps onto it (rows: modelSize, columns:
// maxPresets, display and edit roles through getSettingData).
class ManagerTableModel : public QAbstractTableModel {
public:
    explicit ManagerTableModel(sf::SettingManager* manager) : m_manager(manager) {}
    int rowCount(const QModelIndex& parent = QModelIndex()) const override;
    int columnCount(const QModelIndex& parent = QModelIndex()) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    // An index of this model at any row and column, also outside rowCount/columnCount.
    QModelIndex cell(int row, int column) const { return createIndex(row, column); }

private:
    sf::SettingManager* m_manager;
};

} // namespace testsupport
