#pragma once

// A simulated instrument (kx-sim) for the length of a test: started on a firmware file of
// the runtime data folder, with fault options, stopped and reaped when it goes.

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

    // The device path it printed (a simulator that does not start stops the test program).
    const QString& port() const { return m_port; }

private:
    QProcess m_process;
    QString m_port;
};

} // namespace testsupport
