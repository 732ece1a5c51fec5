#pragma once

// Transcript tests: a text file lists commands and what they print; running it produces
// the same file with the actual output, which must equal the expected one (see
// docs/testing.md for the format).

#include <QByteArray>
#include <QString>

namespace testsupport {

struct TranscriptPaths {
    QString data;   // replaces $DATA: the folder that holds the runtime data/ folder
    QString source; // replaces $SRC: the source tree
    QString temp;   // replaces $TMP: an empty folder of this transcript, also the working folder
};

// Runs every command of the transcript text and returns the text with the expected
// output replaced by what the commands printed.
QByteArray runTranscript(const QByteArray& transcript, const TranscriptPaths& paths);

} // namespace testsupport
