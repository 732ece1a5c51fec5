// Fuzzes the classification of the helper's output: arbitrary chunks through the driver's
// classification and error check, and arbitrary device files through its parameter
// reader. Every queued message is one of the defined values, an error check that hits
// queues an error message and shows a text, and nothing crashes or hangs.

#include "util/Uploader.h"

#include <QCoreApplication>
#include <QFile>
#include <QTemporaryDir>

#include <cstddef>
#include <cstdint>
#include <cstdlib>

namespace {

void check(bool condition) {
    if (!condition) {
        std::abort();
    }
}

bool defined(util::SuplMessage m) {
    return (m >= util::WRITING_START && m <= util::ERROR_DEBUG_SERIAL_FILE) ||
           m == util::PROGRESS || m == util::QUIT;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    static int argc = 1;
    static char name[] = "fuzz_supl_output";
    static char* argv[] = {name, nullptr};
    static QCoreApplication app(argc, argv);
    static QTemporaryDir dir;
    const QByteArray bytes(reinterpret_cast<const char*>(data), int(size));

    util::Uploader uploader;
    int errors = 0;
    QObject::connect(&uploader, &util::Uploader::suplError, [&errors] { ++errors; });
    uploader.classifyOutput(bytes);
    check(!uploader.lastOutput().contains(QChar(0)));
    while (uploader.hasMessage()) {
        check(defined(uploader.nextMessage()));
    }
    const bool hit = uploader.errorCheck();
    check(hit == (errors > 0));
    check(hit == uploader.hasMessage());
    while (uploader.hasMessage()) {
        const util::SuplMessage m = uploader.nextMessage();
        check(m >= util::ERROR_SEARCH_TIMEOUT && m <= util::ERROR_DEBUG_SERIAL_FILE);
    }

    // The same bytes as a device file, looked up by a version taken from them.
    const QString path = dir.filePath(QStringLiteral("device.txt"));
    QFile file(path);
    if (file.open(QIODevice::WriteOnly | QIODevice::Truncate)) {
        file.write(bytes);
        file.close();
        uploader.classifyOutput(QByteArray("x: ") + bytes.left(8));
        uploader.loadDeviceParameters(path);
    }
    return 0;
}
