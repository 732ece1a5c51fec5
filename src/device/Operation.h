#pragma once
// What every device workflow shares: the helper driver and the catalogue it works with,
// the decisions it asks, the version query, the reset that brings the instrument back to
// its display mode, and the one failure text a front end shows.
#include "util/VersionContainer.h"

#include <QObject>
#include <QString>

namespace util {
class Uploader;
class VersionCatalogue;
} // namespace util

namespace device {

class Decisions;

class Operation : public QObject {
    Q_OBJECT
public:
    static constexpr int ENQ_ATTEMPTS = 3;

    // The uploader's chosen port is the instrument's; none of the three is owned.
    Operation(util::Uploader& uploader, const util::VersionCatalogue& catalogue,
              Decisions& decisions, QObject* parent = nullptr);

    // Why the last run failed, as a person reads it; empty when it was cancelled.
    const QString& errorString() const { return m_error; }
    // What the instrument answered to the version query (null: nothing).
    const QString& enq() const { return m_enq; }

    // How long a retry waits after a reset, in ms (1000). Tests shorten it.
    static void setRetryWaitMs(int ms);

signals:
    // What is going on now, for the progress dialog or the terminal.
    void status(const QString& text);
    // A reset of the instrument starts (true) and ends (false).
    void resetting(bool started);

protected:
    bool fail(const QString& error);
    // Asks the instrument for its version (three enquiries); remembers the answer.
    QString detectVersion();
    // Brings an instrument left in its service mode or bootloader back to its display mode.
    bool resetInstrument();
    void pause(int ms);
    static int retryWaitMs();

    util::Uploader& m_uploader;
    const util::VersionCatalogue& m_catalogue;
    Decisions& m_decisions;
    QString m_error;
    QString m_enq;
};

} // namespace device
