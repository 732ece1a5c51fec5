#pragma once

// A simulated instrument (kx-sim) for the length of a test: started on a firmware file of
// the runtime data folder, with fault options, stopped and reaped when it goes. Its state
// file is its memory: a second Simulator on the same state file is the instrument switched
// off and on (after --cut-erase, --cut-program or --unplug-after in the middle of a flash
// it has no runnable firmware); a state file from writeStateWithoutFirmware starts one
// without runnable firmware directly.

#include <QProcess>
#include <QString>
#include <QStringList>

namespace testsupport {

class Simulator {
public:
    Simulator(const QString& firmware, const QString& state, const QStringList& faults = {});
    ~Simulator();
    Simulator(const Simulator&) = delete;
    Simulator& operator=(const Simulator&) = delete;

    // The firmware file's program and settings without its identification text: the
    // state a flash that did not finish leaves. False when a file cannot be read or written.
    static bool writeStateWithoutFirmware(const QString& firmware, const QString& state);

    // The device path it printed (a simulator that does not start stops the test program).
    const QString& port() const { return m_port; }

private:
    QProcess m_process;
    QString m_port;
};

} // namespace testsupport
