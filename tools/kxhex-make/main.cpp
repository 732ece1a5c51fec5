// kxhex-make: writes an Intel HEX setup or firmware image from a text description.
// usage: kxhex-make DESCRIPTION -o OUT     (OUT "-" writes to standard output)
#include "ImageDescription.h"

#include "sf/parser/HexParser.h"

#include <QCoreApplication>
#include <QFile>
#include <QSaveFile>
#include <QStringList>
#include <QTextStream>

namespace {

enum Exit { ExitOk = 0, ExitUsage = 1, ExitInput = 2 };

const char HELP[] =
    "usage: kxhex-make DESCRIPTION -o OUT\n"
    "Writes an Intel HEX image (setup or firmware file) described by DESCRIPTION to OUT\n"
    "(\"-\" for standard output). One directive per line; # starts a comment line:\n"
    "  fw TEXT | kxs TEXT | enq TEXT   metadata texts (records C0, C1, C2); TEXT is the\n"
    "                                  rest of the line or \"quoted\" with \\\" \\\\ \\n \\r \\t "
    "\\xHH\n"
    "  line-length N                   data bytes per line, 1..255 (default 16)\n"
    "  extended on|off                 allow addresses above 0xFFFF (default on)\n"
    "  gaps zero|keep                  zero: one block, gaps filled with zeros (default);\n"
    "                                  keep: separate blocks stay separate\n"
    "  fill START END VALUE            bytes START..END-1 set to VALUE\n"
    "  bytes ADDRESS HEX...            explicit bytes, e.g. bytes 0x1E000 01 02 FF\n"
    "  text ADDRESS TEXT               the Latin-1 bytes of TEXT\n"
    "  random START END SEED           pseudo-random program data, repeatable per SEED\n"
    "Numbers are decimal or 0x-prefixed hexadecimal; later directives overwrite earlier\n"
    "bytes. Exit status: 0 success, 1 usage error, 2 bad description or unwritable output.\n";

// The image as records of at most lineLength bytes, none crossing a 64 KiB boundary,
// with extended-address records as the upper address changes.
sf::parser::RecordList buildRecords(const ImageDescription& image) {
    using sf::parser::Inhex32Entry;
    sf::parser::RecordList records;
    quint16 upper = 0;
    for (const auto& block : image.blocks) {
        const quint64 start = block.first;
        const quint64 end = start + static_cast<quint64>(block.second.size());
        const quint8* bytes = reinterpret_cast<const quint8*>(block.second.constData());
        for (quint64 at = start; at < end;) {
            const quint16 lineUpper = static_cast<quint16>(at >> 16);
            if (lineUpper != upper) {
                records.push_back(Inhex32Entry::extendedAddress(lineUpper));
                upper = lineUpper;
            }
            const quint64 length = std::min<quint64>(
                {static_cast<quint64>(image.lineLength), end - at, 0x10000 - (at & 0xFFFF)});
            records.push_back(std::make_unique<Inhex32Entry>(
                Inhex32Entry::TypeData, static_cast<quint16>(at & 0xFFFF), bytes + (at - start),
                static_cast<int>(length)));
            at += length;
        }
    }
    return records;
}

int write(const ImageDescription& image, const QString& outPath, QTextStream& err) {
    sf::parser::HexParser parser;
    parser.loadHexData(QByteArray(), sf::parser::PhantomNone);
    parser.replaceFileContents(buildRecords(image));
    parser.setFwVersion(image.fwVersion);
    parser.setKxsVersion(image.kxsVersion);
    parser.setEnqString(image.enqString);
    const bool reformat = image.fillGaps && !image.blocks.empty();
    if (reformat && image.blocks.size() > 1) {
        const quint64 low = image.blocks.begin()->first;
        const quint64 high = image.blocks.rbegin()->first +
                             static_cast<quint64>(image.blocks.rbegin()->second.size());
        if (high - low > sf::parser::HexParser::MAX_REFORMAT_SPAN) {
            err << "kxhex-make: image spans more than " << sf::parser::HexParser::MAX_REFORMAT_SPAN
                << " bytes; use \"gaps keep\" for sparse images\n";
            return ExitInput;
        }
    }
    if (outPath == QLatin1String("-")) {
        QFile out;
        if (!out.open(stdout, QIODevice::WriteOnly) ||
            !parser.writeToDevice(&out, reformat, image.lineLength)) {
            err << "kxhex-make: cannot write to standard output\n";
            return ExitInput;
        }
        return ExitOk;
    }
    QSaveFile out(outPath);
    if (!out.open(QIODevice::WriteOnly) ||
        !parser.writeToDevice(&out, reformat, image.lineLength) || !out.commit()) {
        err << "kxhex-make: " << outPath << ": cannot write: " << out.errorString() << "\n";
        return ExitInput;
    }
    return ExitOk;
}

} // namespace

int main(int argc, char** argv) {
    QCoreApplication app(argc, argv);
    QTextStream out(stdout);
    QTextStream err(stderr);
    QStringList args = QCoreApplication::arguments().mid(1);
    if (args.contains(QLatin1String("--help")) || args.contains(QLatin1String("-h"))) {
        out << HELP;
        return ExitOk;
    }
    QString description;
    QString outPath;
    for (int i = 0; i < args.size(); ++i) {
        const QString& a = args.at(i);
        if (a == QLatin1String("-o")) {
            if (i + 1 >= args.size() || !outPath.isEmpty()) {
                err << "kxhex-make: -o needs one output file\n" << HELP;
                return ExitUsage;
            }
            outPath = args.at(++i);
        } else if (a.startsWith(QLatin1Char('-')) && a != QLatin1String("-")) {
            err << "kxhex-make: unknown option " << a << "\n" << HELP;
            return ExitUsage;
        } else if (description.isEmpty()) {
            description = a;
        } else {
            err << "kxhex-make: more than one description given\n" << HELP;
            return ExitUsage;
        }
    }
    if (description.isEmpty() || outPath.isEmpty()) {
        err << HELP;
        return ExitUsage;
    }

    QFile in;
    const bool fromStdin = description == QLatin1String("-");
    const bool opened = fromStdin ? in.open(stdin, QIODevice::ReadOnly)
                                  : (in.setFileName(description), in.open(QIODevice::ReadOnly));
    if (!opened) {
        err << "kxhex-make: " << description << ": cannot read: " << in.errorString() << "\n";
        return ExitInput;
    }
    ImageDescription image;
    QString error;
    if (!parseImageDescription(in.readAll(), image, error)) {
        err << "kxhex-make: " << description << ": " << error << "\n";
        return ExitInput;
    }
    return write(image, outPath, err);
}
