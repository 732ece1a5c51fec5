// Replays saved inputs through a fuzz target without libFuzzer, so that a normal build
// (any compiler) runs the regression inputs as a test. Each argument is a file or a
// folder of files (in name order); a target that stops on an input (abort, crash) fails
// the test, and an argument with no inputs fails it too.
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QStringList>

#include <cstdint>
#include <cstdio>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size);

int main(int argc, char** argv) {
    int replayed = 0;
    for (int i = 1; i < argc; ++i) {
        const QString arg = QString::fromLocal8Bit(argv[i]);
        QStringList files{arg};
        if (QFileInfo(arg).isDir()) {
            files.clear();
            const QDir dir(arg);
            for (const QString& name : dir.entryList(QDir::Files, QDir::Name)) {
                files << dir.filePath(name);
            }
        }
        if (files.isEmpty()) {
            std::fprintf(stderr, "%s: no inputs\n", argv[i]);
            return 1;
        }
        for (const QString& path : files) {
            QFile file(path);
            if (!file.open(QIODevice::ReadOnly)) {
                std::fprintf(stderr, "%s: cannot read\n", qPrintable(path));
                return 1;
            }
            const QByteArray bytes = file.readAll();
            std::printf("%s\n", qPrintable(path));
            std::fflush(stdout);
            LLVMFuzzerTestOneInput(reinterpret_cast<const uint8_t*>(bytes.constData()),
                                   static_cast<size_t>(bytes.size()));
            ++replayed;
        }
    }
    std::printf("%d inputs replayed\n", replayed);
    return replayed > 0 ? 0 : 1;
}
