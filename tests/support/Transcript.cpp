#include "support/Transcript.h"

#include "support/CliRunner.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QStringList>

#include <algorithm>
#include <utility>

namespace testsupport {
namespace {

const QByteArray kCommand("  $ ");
const QByteArray kInput("  < ");
const QByteArray kIndent("  ");
const QByteArray kEsc(" (esc)");
const QByteArray kCrlf(" (crlf)");
const QByteArray kNoEol(" (no-eol)");

// Tabs and printable ASCII stay as they are, other bytes too when the line is UTF-8.
bool plain(char c, bool utf8) {
    const auto u = static_cast<unsigned char>(c);
    return c == '\t' || (u >= 0x20 && u < 0x7F) || (u >= 0x80 && utf8);
}

bool isUtf8(const QByteArray& line) {
    return QString::fromUtf8(line).toUtf8() == line;
}

// A line as the transcript shows it: control bytes as \xNN, marked " (esc)".
QByteArray encode(QByteArray line) {
    QByteArray suffix;
    if (line.endsWith('\r')) {
        line.chop(1);
        suffix = kCrlf;
    }
    const bool utf8 = isUtf8(line);
    if (std::all_of(line.cbegin(), line.cend(), [utf8](char c) { return plain(c, utf8); })) {
        return line + suffix;
    }
    QByteArray out;
    for (char c : line) {
        if (c == '\\') {
            out += "\\\\";
        } else if (plain(c, utf8)) {
            out += c;
        } else {
            out += "\\x" +
                   QByteArray::number(static_cast<unsigned char>(c), 16).rightJustified(2, '0');
        }
    }
    return out + kEsc + suffix;
}

// The bytes of an input line, the reverse of encode(), with its line end.
QByteArray decode(QByteArray line) {
    QByteArray end("\n");
    if (line.endsWith(kNoEol)) {
        line.chop(kNoEol.size());
        end.clear();
    }
    if (line.endsWith(kCrlf)) {
        line.chop(kCrlf.size());
        end = "\r\n";
    }
    if (!line.endsWith(kEsc)) {
        return line + end;
    }
    line.chop(kEsc.size());
    QByteArray out;
    for (int i = 0; i < line.size(); ++i) {
        if (line[i] == '\\' && i + 1 < line.size() && line[i + 1] == 'x' && i + 3 < line.size()) {
            out += static_cast<char>(line.mid(i + 2, 2).toInt(nullptr, 16));
            i += 3;
        } else if (line[i] == '\\' && i + 1 < line.size()) {
            out += line[++i];
        } else {
            out += line[i];
        }
    }
    return out + end;
}

// Words separated by spaces; "double quotes" group, with \" and \\ inside them.
QStringList splitArgs(const QString& text) {
    QStringList args;
    QString word;
    bool inWord = false;
    bool quoted = false;
    for (int i = 0; i < text.size(); ++i) {
        const QChar c = text[i];
        if (quoted && c == QLatin1Char('\\') && i + 1 < text.size()) {
            word += text[++i];
        } else if (c == QLatin1Char('"')) {
            quoted = !quoted;
            inWord = true;
        } else if (c == QLatin1Char(' ') && !quoted) {
            if (inWord) {
                args << word;
            }
            word.clear();
            inWord = false;
        } else {
            word += c;
            inWord = true;
        }
    }
    if (inWord) {
        args << word;
    }
    return args;
}

// Lines of output as the transcript shows them, prefix before each.
QByteArray render(const QByteArray& bytes, const QByteArray& prefix) {
    if (bytes.isEmpty()) {
        return QByteArray();
    }
    QList<QByteArray> lines = bytes.split('\n');
    const bool eol = lines.last().isEmpty();
    if (eol) {
        lines.removeLast();
    }
    QByteArray out;
    for (int i = 0; i < lines.size(); ++i) {
        out += kIndent + prefix + encode(lines[i]);
        out += (i + 1 == lines.size() && !eol) ? kNoEol + '\n' : QByteArray("\n");
    }
    return out;
}

QByteArray readFile(const QString& path, bool* ok) {
    QFile f(path);
    *ok = f.open(QIODevice::ReadOnly);
    return *ok ? f.readAll() : QByteArray();
}

// The built-in commands: write FILE (input into FILE, folders made as needed), cat FILE,
// ls [DIR], cmp A B.
ToolResult builtin(const QStringList& args, const QByteArray& input, const QString& dir) {
    ToolResult r;
    r.exitCode = 0;
    const auto path = [&](int i) { return QDir(dir).filePath(args.value(i)); };
    const QString& name = args.first();
    bool ok = true;
    if (name == QLatin1String("write")) {
        QFile f(path(1));
        ok = QDir().mkpath(QFileInfo(f).absolutePath()) && f.open(QIODevice::WriteOnly) &&
             f.write(input) == input.size();
    } else if (name == QLatin1String("cat")) {
        r.out = readFile(path(1), &ok);
    } else if (name == QLatin1String("ls")) {
        r.out =
            QDir(path(1)).entryList(QDir::AllEntries | QDir::NoDotAndDotDot).join('\n').toUtf8();
        r.out += r.out.isEmpty() ? "" : "\n";
    } else if (name == QLatin1String("cmp")) {
        bool okB = true;
        const bool same = readFile(path(1), &ok) == readFile(path(2), &okB);
        ok = ok && okB;
        r.out = same ? "same\n" : "differ\n";
    }
    if (!ok) {
        r.err = "cannot access " + args.join(' ').toUtf8() + '\n';
        r.exitCode = 1;
    }
    return r;
}

struct Command {
    QByteArray line;
    QByteArray input;
};

QByteArray runCommand(const Command& command, const TranscriptPaths& paths,
                      const QList<std::pair<QString, QString>>& vars) {
    QString text = QString::fromUtf8(command.line.mid(kCommand.size()));
    for (const auto& v : vars) {
        text.replace(v.second, v.first);
    }
    const QStringList args = splitArgs(text);
    static const QStringList builtins{"write", "cat", "ls", "cmp"};
    const ToolResult r = args.isEmpty() ? ToolResult()
                         : builtins.contains(args.first())
                             ? builtin(args, command.input, paths.temp)
                             : runTool(args.first(), args.mid(1), paths.temp, command.input);
    QByteArray shown = render(r.out, QByteArray()) + render(r.err, "! ");
    for (const auto& v : vars) {
        shown.replace(v.first.toUtf8(), v.second.toUtf8());
    }
    if (r.exitCode != 0) {
        shown += kIndent + '[' + QByteArray::number(r.exitCode) + "]\n";
    }
    return shown;
}

} // namespace

QByteArray runTranscript(const QByteArray& transcript, const TranscriptPaths& paths) {
    // Longest path first, so that a folder inside another gets its own name.
    QList<std::pair<QString, QString>> vars{{QDir::cleanPath(paths.data), QStringLiteral("$DATA")},
                                            {QDir::cleanPath(paths.source), QStringLiteral("$SRC")},
                                            {QDir::cleanPath(paths.temp), QStringLiteral("$TMP")}};
    std::sort(vars.begin(), vars.end(),
              [](const auto& a, const auto& b) { return a.first.size() > b.first.size(); });

    QByteArray out;
    QList<QByteArray> lines = transcript.split('\n');
    if (lines.last().isEmpty()) {
        lines.removeLast();
    }
    for (int i = 0; i < lines.size(); ++i) {
        const QByteArray& line = lines[i];
        if (!line.startsWith(kCommand)) {
            if (!line.startsWith(kIndent)) {
                out += line + '\n'; // a comment
            }
            continue;
        }
        Command command{line, QByteArray()};
        out += line + '\n';
        while (i + 1 < lines.size() && lines[i + 1].startsWith(kInput)) {
            const QByteArray input = lines[++i];
            command.input += decode(input.mid(kInput.size()));
            out += input + '\n';
        }
        out += runCommand(command, paths, vars);
    }
    return out;
}

} // namespace testsupport
