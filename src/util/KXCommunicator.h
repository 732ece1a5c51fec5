#pragma once

#include <QObject>
#include <QString>

namespace util {

// The enquiry byte the instrument answers with its identification (ENQ) text, framed by
// an acknowledge (0x06) and an end-of-transmission byte (0x04).
constexpr char ENQUIRE = 0x05;

// Asks an instrument on a serial port for its identification text, at 9600 baud, without
// the helper program. Each call opens the port, sends the enquiry up to `attempts`
// times (waiting up to 1 s for an answer after each) and closes the port before it
// returns. No answer, a port that does not open, an empty frame: a null string.
class KXCommunicator : public QObject {
    Q_OBJECT
public:
    explicit KXCommunicator(QObject* parent = nullptr);
    ~KXCommunicator() override;

    // Waits in a nested event loop, so the windows keep painting.
    QString getParsedENQVersion(const QString& portName, int attempts);
    // The same with the serial port's own blocking waits and no event loop; bytes are
    // kept as received (a NUL byte does not cut the chunk).
    QString getParsedENQVersionBlocking(const QString& portName, int attempts);

    // Finds the answer frame in the bytes received so far: the last 0x06 before the first
    // 0x04 that follows a 0x06. On success *start is the first text byte and *count the
    // number of text bytes (at least 1). An empty frame writes both and returns false; a
    // length below 1 writes neither.
    static bool findResponse(const char* buffer, int length, int* start, int* count);

    // How long one attempt waits for its answer, in ms (1000). Tests shorten it.
    static int answerWaitMs();
    static void setAnswerWaitMs(int ms);
};

} // namespace util
