#include "support/SampleData.h"

#include "support/TestSupport.h"

#include "sf/RawSetting.h"
#include "sf/parser/HexParser.h"
#include "sf/parser/Interpreter.h"
#include "sf/parser/PhantomBytes.h"
#include "sf/parser/PhantomProcessor.h"

#include <QDir>
#include <QFile>

#include <memory>

namespace sampledata {

const QList<Generation>& generations() {
    using namespace sf::parser;
    static const QList<Generation> all{
        {QStringLiteral("v306"), QStringLiteral("Dravolin-3.06"), QString(), PhantomEvery4, 151},
        {QStringLiteral("3.10"), QStringLiteral("KX3-3.10"), QStringLiteral("kx3"), PhantomEvery2,
         154},
        {QStringLiteral("3.12"), QStringLiteral("KX3-3.10"), QStringLiteral("kx3"), PhantomEvery2,
         154},
        {QStringLiteral("3.20"), QStringLiteral("KX3-3.20"), QStringLiteral("kx3"), PhantomEvery2,
         155},
        {QStringLiteral("4.01"), QStringLiteral("KX4-4.01"), QStringLiteral("kx4/2025"),
         PhantomNone, 154}};
    return all;
}

QString runtimeDir() {
    return testsupport::runtimeDir();
}

QString firmwarePath(const Generation& g) {
    const QString folder = g.folder.isEmpty() ? QString() : g.folder + QLatin1Char('/');
    return runtimeDir() + QStringLiteral("/data/firmware/") + folder + g.fw +
           QStringLiteral(".kxhex");
}

QString layoutPath(const QString& kxs) {
    return runtimeDir() + QStringLiteral("/data/kxs/") + kxs + QStringLiteral(".kxs");
}

QString helpPath(const QString& fw) {
    return runtimeDir() + QStringLiteral("/data/help/") + fw + QStringLiteral("_help.html");
}

QList<Span> layoutSpans(const QString& layout, int processor) {
    QList<Span> spans;
    sf::parser::Interpreter interpreter;
    if (!interpreter.loadKxsData(testsupport::readFile(layout))) {
        return spans;
    }
    const sf::parser::PhantomBytes phantoms(sf::parser::PhantomBytes::periodFor(processor));
    sf::parser::TokenList tokens;
    while (interpreter.hasNextSetting()) {
        std::unique_ptr<sf::RawSetting> raw(interpreter.getNextSetting(&tokens));
        if (!raw) {
            break;
        }
        Span s;
        s.code = raw->getCodeName();
        s.address = static_cast<quint32>(raw->getAddress());
        s.size = raw->getSizeBytes();
        s.span = phantoms.countWithPhantoms(s.address, static_cast<quint64>(s.size));
        s.enabled = raw->isEnabled();
        s.hidden = raw->isHidden();
        spans.append(s);
    }
    return spans;
}

bool imageBytes(const QString& path, QMap<quint64, quint8>* bytes) {
    sf::parser::HexParser parser;
    if (!parser.loadHex(path, sf::parser::PhantomNone, QIODevice::ReadOnly)) {
        return false;
    }
    bytes->clear();
    quint64 upper = 0;
    for (const auto& r : parser.records()) {
        if (r->isExtendedAddress()) {
            upper = r->upperAddress();
        } else if (r->isData()) {
            const quint64 start = (upper << 16) + r->getAddress();
            const QByteArray data = r->getDataBytes();
            for (int i = 0; i < data.size(); ++i) {
                bytes->insert(start + static_cast<quint64>(i), static_cast<quint8>(data.at(i)));
            }
        }
    }
    return true;
}

QHash<QString, QByteArray> settingBytes(const QString& path, const QList<Span>& spans,
                                        int processor) {
    QHash<QString, QByteArray> result;
    sf::parser::HexParser parser;
    if (!parser.loadHex(path, processor, QIODevice::ReadOnly)) {
        return result;
    }
    for (const Span& s : spans) {
        const auto data = parser.readData(s.address, static_cast<quint32>(s.size));
        if (data) {
            result.insert(s.code, *data);
        }
    }
    return result;
}

QString copyInto(const QString& source, const QString& dir, const QString& name) {
    const QString target = QDir(dir).filePath(name);
    QFile::remove(target);
    return QFile::copy(source, target) ? target : QString();
}

} // namespace sampledata
