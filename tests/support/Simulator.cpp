#include "support/Simulator.h"

#include "support/TestSupport.h"

namespace testsupport {

Simulator::Simulator(const QString& firmware, const QString& state, const QStringList& faults) {
    m_process.setProcessChannelMode(QProcess::SeparateChannels);
    m_process.start(
        toolPath(QStringLiteral("kx-sim")),
        QStringList{QStringLiteral("--firmware"), firmware, QStringLiteral("--state"), state} +
            faults);
    while (m_process.waitForReadyRead(5000)) {
        if (m_process.canReadLine()) {
            m_port = QString::fromLocal8Bit(m_process.readLine()).trimmed();
            break;
        }
    }
    if (m_port.isEmpty()) {
        qFatal("kx-sim did not start: %s", m_process.readAllStandardError().constData());
    }
}

bool Simulator::writeStateWithoutFirmware(const QString& firmware, const QString& state) {
    QByteArray kept;
    for (const QByteArray& line : readFile(firmware).split('\n')) {
        if (line.mid(7, 2).toUpper() != "C2") { // record type C2: the identification text
            kept += line + '\n';
        }
    }
    return kept.contains(":00000001FF") && writeFile(state, kept.trimmed() + '\n');
}

Simulator::~Simulator() {
    if (m_process.state() != QProcess::NotRunning) {
        m_process.terminate();
        if (!m_process.waitForFinished(3000)) {
            m_process.kill();
            m_process.waitForFinished(3000);
        }
    }
}

} // namespace testsupport
