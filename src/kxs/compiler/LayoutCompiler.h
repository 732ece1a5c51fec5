#pragma once

#include <QByteArray>
#include <QString>

namespace kxs {
namespace compiler {

// Compiles layout source text (docs/layout-source-format.md) into a binary layout file.
// Entries are written in source order.
class LayoutCompiler {
public:
    struct Error {
        int line = 0; // 1-based; 0 when the problem belongs to no line
        QString message;
    };

    // On failure out is left alone and error reads "line N: what is wrong".
    static bool compile(const QString& source, QByteArray* out, QString* error);
    // The same with the line number and the message apart.
    static bool compileDetailed(const QString& source, QByteArray* out, Error* error);
};

} // namespace compiler
} // namespace kxs
