#pragma once
// Flashes firmware into the instrument through our helper program: a search first (the
// instrument reports its bootloader's identification), then write and verify. The
// helper's raw output becomes log lines in plain words with a status colour, and a
// progress line that is updated in place.
#include <QColor>
#include <QFile>
#include <QObject>
#include <QProcess>
#include <QString>
#include <QStringList>
#include <QTimer>

namespace firmware {

class bootloader : public QObject {
    Q_OBJECT
public:
    static const QColor GREEN;
    static const QColor RED;
    static const QColor WHITE;
    // The download site named in two of the messages.
    static const QString SITE;

    explicit bootloader(QObject* parent = nullptr);
    ~bootloader() override;

    void search();
    void flash();
    void update_firmware();
    // update_firmware() after a short delay (the instrument restarts into its
    // bootloader after a search).
    void update_firmware_with_delay();
    void changeserial(const QString& port) { serialPort = port; }
    const QString& getSerialPort() const { return serialPort; }
    void filepathupdate(const QString& path) { firmwarePath = path; }
    const QString& getFirmwarePath() const { return firmwarePath; }
    void setIdentification(const QString& id) { identification = id; }
    const QString& getIdentification() const { return identification; }
    // Whether the helper is still running.
    bool isRunning() const;
    // Stops the helper, if it runs.
    void stop();

    // What the window shows for one chunk of the helper's output (also used by the
    // command line): emits the signals below.
    void interpret(const QString& output);
    // How long update_firmware_with_delay() waits, in ms (1000). Tests shorten it.
    static void setDelayMs(int ms);

signals:
    void textreadysig(const QString& text);
    void textupdatesig(const QString& text);
    void changecolour(const QColor& colour);
    void version_received(const QString& identification);
    void fw_update_done();
    void supl_closed();
    void devicelist(const QStringList& ports);
    // The helper started writing (from now on the program flash is being erased).
    void writing_started();
    // A failure the helper reported: its own line, and what the log shows for it.
    void helper_failed(const QString& helperLine, const QString& shown);

public slots:
    void textready();
    void errorslot(QProcess::ProcessError error);
    void supl_finished(int exitCode);
    void run_update_firmware();

private:
    void start(const QStringList& args);
    void log(const QString& text);
    QProcess* process;
    const QString program = QStringLiteral("./serialup.exe");
    QString serialPort;
    const QString baud = QStringLiteral("1000000");
    QString identification;
    QString firmwarePath;
    QTimer delay;
    QFile logFile;
    bool verifying = false;
};

} // namespace firmware
