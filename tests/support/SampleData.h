#pragma once

// The sample data set in the build tree's runtime data folder (see docs/sample-data.md)
// and helpers that look at its files below the command line: the settings spans of a
// layout and the bytes of a HEX image.

#include <QByteArray>
#include <QHash>
#include <QList>
#include <QMap>
#include <QString>

namespace sampledata {

// One firmware version of the set.
struct Generation {
    QString fw;
    QString kxs;
    QString folder; // below data/firmware, empty for the folder itself
    int processor;  // phantom byte kind of the layout
    int settings;   // setting entries of the layout
};

const QList<Generation>& generations();

// Absolute paths in the runtime data folder.
QString runtimeDir();
QString firmwarePath(const Generation& g);
QString layoutPath(const QString& kxs);
QString helpPath(const QString& fw);

// A setting entry of a layout and the image addresses it occupies.
struct Span {
    QString code;
    quint32 address = 0;
    int size = 0;     // real bytes
    quint64 span = 0; // addresses, phantom bytes included
    bool enabled = true;
    bool hidden = false;
};

// The setting entries of a layout file in order; empty when it cannot be read.
QList<Span> layoutSpans(const QString& layout, int processor);

// Every data byte of a HEX image by full address; false when the file is no image.
bool imageBytes(const QString& path, QMap<quint64, quint8>* bytes);

// The real bytes of every span as the image reader reads them (by 16-bit address);
// a span the image does not hold is missing from the result.
QHash<QString, QByteArray> settingBytes(const QString& path, const QList<Span>& spans,
                                        int processor);

// Copies a file into dir under name; the new path, or empty on failure.
QString copyInto(const QString& source, const QString& dir, const QString& name);

} // namespace sampledata
