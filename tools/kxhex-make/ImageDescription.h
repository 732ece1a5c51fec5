#pragma once

#include <QByteArray>
#include <QString>
#include <QtGlobal>

#include <map>

// What kxhex-make is to write: metadata texts, output options and the image bytes as
// disjoint, non-adjacent blocks keyed by start address.
struct ImageDescription {
    QString fwVersion;
    QString kxsVersion;
    QString enqString;
    int lineLength = 16;
    bool extendedAddresses = true;
    bool fillGaps = true;
    std::map<quint64, QByteArray> blocks;

    // Total bytes the image may hold.
    static constexpr quint64 MaxImageBytes = 256ull * 1024 * 1024;

    // Puts bytes at an address; they replace what was there and join touching blocks.
    // False (and nothing changed) when the image would grow beyond MaxImageBytes.
    bool put(quint64 address, const QByteArray& bytes);
    quint64 totalBytes() const;
};

// Reads a description text (see docs/setup-image.md). On failure returns false and sets
// error to "line N: what is wrong".
bool parseImageDescription(const QByteArray& text, ImageDescription& out, QString& error);
