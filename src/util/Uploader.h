#pragma once

#include "util/SuplTexts.h"

#include <QObject>
#include <QProcess>
#include <QQueue>
#include <QString>
#include <QStringList>

namespace util {

// Reads and writes the instrument's settings memory, and resets it, by running the serial
// uploader helper (./serialup.exe in the data folder) and reading what it prints. One
// helper process at a time; every operation ends with it finished or killed. Failures are
// reported through suplError with the text to show; progress through suplProgress and
// setProgress (33 connecting, 66 connected, 100 done).
class Uploader : public QObject {
    Q_OBJECT
public:
    static constexpr int DEFAULT_BAUD = 1000000;
    static constexpr int TIMEOUT_SEARCH = 5000;
    static constexpr int TIMEOUT_READWRITE = 15000;
    static constexpr int OFFSET_MAXBAUD = 1;
    static constexpr int OFFSET_DEVICE = 2;
    static constexpr int OFFSET_EEPROM_START = 14;
    static constexpr int OFFSET_EEPROM_END = 15;
    static constexpr int OFFSET_WORDSIZE = 16;

    // Ports named here (full device paths separated by ':') are listed after the ones the
    // platform enumerates: pseudo-terminals, such as a simulated instrument's, are not
    // enumerated.
    static constexpr const char* EXTRA_PORTS_VARIABLE = "KX_EXTRA_PORTS";

    explicit Uploader(QObject* parent = nullptr);
    ~Uploader() override;

    void findComPorts();
    const QStringList& getComList() const { return comList; }
    int getComIndex() const { return comIndex; }
    void setSerialPort(const QString& path);
    QString getSerialPort() const { return comList.at(comIndex); }
    void setMaxBaud(int baud) { maxBaud = baud; }
    int getMaxBaud() const { return maxBaud; }
    void setDeviceName(const QString& name) { deviceName = name; }
    QString getDeviceName() const { return deviceName; }
    QString getDeviceVersion() const { return deviceVersion; }
    int getEepromStart() const { return eepromStart; }
    int getEepromEnd() const { return eepromEnd; }
    bool isSearchNeeded() const { return searchNeeded; }

    void stop(bool kill);
    static QString num2hex(unsigned value);

    void receiveMessage(SuplMessage message);
    bool hasMessage() const { return !messages.isEmpty(); }
    SuplMessage nextMessage();
    void clearMessages();
    void requestQuit();

    bool errorCheck();
    bool waitForMessage(int timeoutMs, const QStringList& args, SuplMessage expected);
    bool waitForRW(QStringList args, const QString& doneText);
    bool searchForDevice();
    // A search for an instrument that may well not be there (an update looking for one left
    // in its update mode): its failure is the caller's to word, so nothing is reported
    // through suplError while it runs.
    bool probeForDevice();
    bool loadDeviceParameters(const QString& path);
    bool prepareRWConnection(bool searchNextTime);

    bool readSettings(const QString& file, bool resetAfter);
    bool writeSettings(const QString& file, bool resetAfter);
    bool reset();

    // The waits in ms: for a search, for a read, write or reset to complete, and for the
    // helper to exit after it. Tests shorten them; the constants above are the defaults.
    static void setWaits(int searchMs, int readWriteMs, int exitMs);

    // Takes one chunk of the helper's output as processOutput does (up to its first NUL
    // byte, replacing the last one) and queues what it meant.
    void classifyOutput(const QByteArray& chunk);
    const QString& lastOutput() const { return output; }

signals:
    void suplProgress(const QString& progress);
    void suplError(const QString& error);
    void messageReady();
    void setProgress(int progress);
    void updateProgress(int delta);

public slots:
    void processOutput();

private:
    void killProcess();
    void reportError(const QString& text);
    QStringList deviceArgs(bool resetAfter) const;

    QProcess* process;
    QStringList comList;
    QQueue<SuplMessage> messages;
    QString output;
    qint32 comIndex = 0;
    qint32 maxBaud = DEFAULT_BAUD;
    QString deviceName;
    bool quiet = false; // a probe runs
    QString deviceVersion;
    qint32 eepromStart = 0;
    qint32 eepromEnd = 0;
    quint8 wordSize = 0;
    bool searchNeeded = true;
};

} // namespace util
