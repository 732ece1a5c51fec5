#include "device/Operation.h"
#include "util/Logging.h"

#include "app/Constants.h"
#include "util/KXCommunicator.h"
#include "util/Uploader.h"

#include <QEventLoop>
#include <QTimer>

namespace device {

namespace {
int g_retryWaitMs = 1000;
}

void Operation::setRetryWaitMs(int ms) {
    g_retryWaitMs = ms;
}

int Operation::retryWaitMs() {
    return g_retryWaitMs;
}

Operation::Operation(util::Uploader& uploader, const util::VersionCatalogue& catalogue,
                     Decisions& decisions, QObject* parent)
    : QObject(parent), m_uploader(uploader), m_catalogue(catalogue), m_decisions(decisions) {}

bool Operation::fail(const QString& error) {
    m_error = error;
    return false;
}

QString Operation::detectVersion() {
    emit status(ui::MESSAGE_DETECT_VERSION);
    util::KXCommunicator communicator;
    m_enq = communicator.getParsedENQVersion(m_uploader.getSerialPort(), ENQ_ATTEMPTS);
    qCDebug(util::lcDevice).noquote() << "Got" << m_enq << "for version string";
    return m_enq;
}

bool Operation::resetInstrument() {
    emit resetting(true);
    emit status(ui::MESSAGE_RESETTING);
    const bool reset = m_uploader.reset();
    emit resetting(false);
    return reset;
}

void Operation::pause(int ms) {
    QEventLoop loop;
    QTimer::singleShot(ms, &loop, &QEventLoop::quit);
    loop.exec();
}

} // namespace device
