#pragma once

#include "sf/parser/Inhex32Entry.h"
#include "sf/parser/PhantomBytes.h"
#include "sf/parser/PhantomProcessor.h"

#include <QByteArray>
#include <QIODevice>
#include <QList>
#include <QString>

#include <optional>
#include <utility>

namespace sf {
class RawSetting;
}

namespace sf::parser {

class HexTextWriter;

// A setup image (Intel HEX with three private metadata records) loaded into memory:
// reads settings bytes by address, turns raw settings into records, merges them into
// the image and writes it out again. Reports failures by its results only.
//
// Loading reads the whole text in chunks and closes the file again; the parser keeps
// the path and the open mode. writeFile() replaces the file atomically (a new file is
// written beside it and renamed over it), so an interrupted save leaves either the old
// or the new image whole. The parser stays open afterwards with the records it wrote.
class HexParser {
public:
    static constexpr quint32 DEFAULT_START_ADDRESS = 0x1E000;
    static constexpr quint32 DEFAULT_SETTINGS_END_ADDRESS = 0x1E1E0;
    static constexpr quint32 DEFAULT_END_ADDRESS = 0x1E200;
    static constexpr quint32 NONE_START_ADDRESS = 0x310000;
    static constexpr quint32 NONE_SETTINGS_END_ADDRESS = 0x310400;
    static constexpr quint32 NONE_END_ADDRESS = 0x310400;
    // writeFile with reformat refuses images whose data spans more bytes than this.
    static constexpr quint64 MAX_REFORMAT_SPAN = 64ull * 1024 * 1024;

    HexParser();
    HexParser(const HexParser&) = delete;
    HexParser& operator=(const HexParser&) = delete;

    // Loads a file. mode must allow reading: QIODevice::ReadOnly to read only,
    // QIODevice::ReadWrite for an image that is to be rewritten (addToFile, writeFile).
    // The file must exist; modes that would truncate or append are refused. Closes what
    // was open first; on failure the parser is left closed with no records.
    bool loadHex(const QString& path, int processor,
                 QIODevice::OpenMode mode = QIODevice::ReadOnly);
    // Loads from an open, readable device, from its current position. The image counts
    // as writable when the device is; writeFile() needs a path, writeToDevice() does not.
    bool loadHex(QIODevice* device, int processor);
    // Loads from bytes in memory; the image counts as writable.
    bool loadHexData(const QByteArray& text, int processor);

    bool isOpen() const { return m_open; }
    bool isWritable() const { return m_open && m_mode.testFlag(QIODevice::WriteOnly); }
    // Frees all records; the metadata texts stay until overwritten.
    void close();
    // Why the last load failed ("line 3: checksum mismatch"), empty after success.
    const QString& errorString() const { return m_error; }
    // The path of the loaded file; empty for images loaded from a device or bytes.
    const QString& filePath() const { return m_path; }

    int getProcessor() const { return m_processor; }
    quint32 getStartAddress() const { return m_startAddress; }
    quint32 getSettingsEndAddress() const { return m_settingsEndAddress; }
    quint32 getEndAddress() const { return m_endAddress; }

    // Metadata texts of the loaded image (Latin-1, untrimmed). A successful load sets all
    // three, to empty text when the image holds no such record.
    const QString& getFwVersion() const { return m_fwVersion; }
    const QString& getKxsVersion() const { return m_kxsVersion; }
    const QString& getEnqString() const { return m_enqString; }
    void setFwVersion(const QString& text) { m_fwVersion = text; }
    void setKxsVersion(const QString& text) { m_kxsVersion = text; }
    void setEnqString(const QString& text) { m_enqString = text; }

    // The text of the first correctly parsed record of the type in a file or device,
    // trailing zero bytes removed; empty when there is none or it cannot be read. Lines
    // that do not parse are passed over.
    static QString getFwVersion(const QString& path);
    static QString getKxsVersion(const QString& path);
    static QString getEnqString(const QString& path);
    static QString getFwVersion(QIODevice* device);
    static QString getKxsVersion(QIODevice* device);
    static QString getEnqString(QIODevice* device);
    static QString readMetadata(const QString& path, quint8 type);
    static QString readMetadata(QIODevice* device, quint8 type);

    // All three texts as the readers above give them, from one pass over the file.
    struct Metadata {
        QString fwVersion;
        QString kxsVersion;
        QString enqString;
    };
    static Metadata readAllMetadata(const QString& path);

    // The loaded records in file order (no end-of-file or metadata records).
    const RecordList& records() const { return m_records; }

    // count real bytes starting at full address `address`. Records are looked up by
    // their 16-bit address alone (the upper address counts as 0): starting with the
    // first record, the list is searched cyclically for the record holding the current
    // address, and after each record used the search goes on with the one after it
    // (an end-of-file record ends a pass). Nothing when some address of the span is not
    // covered or the parser is closed.
    std::optional<QByteArray> readData(quint32 address, quint32 count) const;

    int getPhantomBytePeriod() const { return m_phantom.period(); }
    const PhantomBytes& phantomBytes() const { return m_phantom; }
    quint64 countBytesWithPhantoms(quint64 address, quint64 realCount) const;
    quint64 countBytesWithoutPhantoms(quint64 address, quint64 span) const;
    QByteArray insertPhantomBytes(const QByteArray& data, quint64 address, quint64 realCount) const;
    QByteArray removePhantomBytes(const QByteArray& data, quint64 address, quint64 span) const;
    bool allBytesArePhantom(const Inhex32Entry* record, quint16 upperAddress) const;

    // Appends records for the raw settings whose address lies in [from, to) (skipping
    // null and, with onlyEnabled, disabled ones): an extended-address record whenever the
    // upper address changes (starting from the last one already in out), then the
    // setting's bytes with phantom bytes inserted at its low 16 bits. Bytes that would
    // not fit one record (more than 255, or crossing a 64 KiB boundary) continue in
    // further records. Settings without bytes give no records. Always true.
    bool getRawSettingsAsHexData(const QList<sf::RawSetting*>& settings, RecordList& out,
                                 bool onlyEnabled, quint32 from, quint32 to) const;
    // Appends copies of all loaded records.
    void copyFileData(RecordList& out) const;
    // Merges copies of the records into the loaded ones (see RecordMerger). Needs an
    // image open for reading and writing; an empty list succeeds at once.
    bool addToFile(const RecordList& newRecords);
    void combineEntries(const RecordList& newRecords, RecordList& existing) const;
    // Replaces all loaded records with copies of the given ones. Needs an open image.
    bool replaceFileContents(const RecordList& newRecords);

    // Rewrites the loaded file (opened for reading and writing) from the metadata and
    // the records, atomically. reformat rewrites the data as one block from the lowest
    // to the highest address, gaps filled with zeros, lineLength (1..255) bytes per line.
    bool writeFile(bool reformat, int lineLength);
    // Writes the same text to an open, writable device.
    bool writeToDevice(QIODevice* device, bool reformat, int lineLength) const;
    // Writes the data records whose full start address lies in [from, to) to an open,
    // writable device, with extended-address records as the upper address changes; a
    // record crossing `to` is cut there and ends the copy.
    bool copyToFile(QIODevice* file, quint32 from, quint32 to, bool withMetadata,
                    bool withEof) const;
    // Lowest start and highest end (exclusive) of the data records' full addresses;
    // nothing when there is no data byte.
    std::optional<std::pair<quint64, quint64>> dataExtent() const;

private:
    bool parse(QIODevice* device, int processor);
    void writeMetadata(HexTextWriter& writer) const;
    bool writeReformatted(HexTextWriter& writer, int lineLength) const;

    RecordList m_records;
    QString m_path;
    QIODevice::OpenMode m_mode = QIODevice::NotOpen;
    bool m_open = false;
    QString m_error;
    int m_processor = PhantomNone;
    PhantomBytes m_phantom{1};
    QString m_fwVersion;
    QString m_kxsVersion;
    QString m_enqString;
    quint32 m_startAddress = DEFAULT_START_ADDRESS;
    quint32 m_settingsEndAddress = DEFAULT_SETTINGS_END_ADDRESS;
    quint32 m_endAddress = DEFAULT_END_ADDRESS;
};

} // namespace sf::parser
