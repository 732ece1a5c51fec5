#include "firmware/FlashImage.h"

#include "sf/parser/HexParser.h"
#include "sf/parser/RecordWalk.h"

#include <QMap>
#include <QSaveFile>

namespace firmware {

namespace {

using Bytes = QMap<quint64, quint8>;

bool readBytes(const QString& path, Bytes* bytes, QString* error) {
    sf::parser::HexParser image;
    if (!image.loadHex(path, sf::parser::PhantomNone, QIODevice::ReadOnly)) {
        *error = QStringLiteral("%1: %2").arg(path, image.errorString());
        return false;
    }
    sf::parser::forEachDataRecord(image.records(),
                                  [bytes](const sf::parser::Inhex32Entry& r, quint64 start) {
                                      const quint8* data = r.getData();
                                      for (int i = 0; i < r.getLength(); ++i) {
                                          bytes->insert(start + i, data[i]);
                                      }
                                  });
    return true;
}

QByteArray metadataLine(quint8 type, const QString& text) {
    return text.isEmpty() ? QByteArray() : sf::parser::Inhex32Entry::line(type, 0, text.toLatin1());
}

// Data records of up to 16 bytes over runs of addresses, with an extended address record
// whenever the upper address changes.
QByteArray dataLines(const Bytes& bytes) {
    using sf::parser::Inhex32Entry;
    QByteArray text;
    qint64 upper = -1;
    QByteArray run;
    quint64 runStart = 0;
    const auto flush = [&] {
        if (!run.isEmpty()) {
            text += Inhex32Entry::line(Inhex32Entry::TypeData, quint16(runStart & 0xFFFF), run);
            run.clear();
        }
    };
    for (auto it = bytes.constBegin(); it != bytes.constEnd(); ++it) {
        const quint64 address = it.key();
        const bool continues = !run.isEmpty() && address == runStart + quint64(run.size()) &&
                               run.size() < 16 && qint64(address >> 16) == upper;
        if (!continues) {
            flush();
            if (qint64(address >> 16) != upper) {
                upper = qint64(address >> 16);
                text += Inhex32Entry::line(
                    Inhex32Entry::TypeExtendedLinear, 0,
                    QByteArray::fromHex(QByteArray::number(upper, 16).rightJustified(4, '0')));
            }
            runStart = address;
        }
        run.append(char(it.value()));
    }
    flush();
    return text;
}

} // namespace

bool buildFlashImage(const QString& firmware, const QString& settingsImage, const QString& out,
                     QString* error) {
    Bytes image, settings;
    if (!readBytes(firmware, &image, error) || !readBytes(settingsImage, &settings, error)) {
        return false;
    }
    if (image.isEmpty()) {
        *error = QStringLiteral("%1 holds no data").arg(firmware);
        return false;
    }
    const quint64 first = image.firstKey();
    const quint64 end = image.lastKey() + 1;
    for (auto it = settings.constBegin(); it != settings.constEnd(); ++it) {
        quint64 address = (first & ~quint64(0xFFFF)) | (it.key() & 0xFFFF);
        if (address < first) {
            address += 0x10000;
        }
        if (address >= end) {
            *error = QStringLiteral("the setting byte at 0x%1 has no place in %2")
                         .arg(it.key(), 4, 16, QLatin1Char('0'))
                         .arg(firmware);
            return false;
        }
        image[address] = it.value();
    }
    const sf::parser::HexParser::Metadata meta = sf::parser::HexParser::readAllMetadata(firmware);
    QByteArray text =
        metadataLine(sf::parser::Inhex32Entry::TypeFwVersion, meta.fwVersion) +
        metadataLine(sf::parser::Inhex32Entry::TypeKxsVersion, meta.kxsVersion) +
        metadataLine(sf::parser::Inhex32Entry::TypeEnqString, meta.enqString) + dataLines(image) +
        sf::parser::Inhex32Entry::line(sf::parser::Inhex32Entry::TypeEndOfFile, 0, QByteArray());
    QSaveFile file(out);
    if (!file.open(QIODevice::WriteOnly) || file.write(text) != text.size() || !file.commit()) {
        *error = QStringLiteral("cannot write %1").arg(out);
        return false;
    }
    return true;
}

} // namespace firmware
