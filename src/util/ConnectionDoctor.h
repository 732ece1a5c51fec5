#pragma once
// Explains in plain words why the instrument cannot be reached: no USB serial adapter, no
// permission to the device (a replug when the device rule gives access, else the group to
// join or the rule to install), the port held by another program, ModemManager probing it, or
// an instrument that does not answer the enquiry. Used by `kxsetup-cli doctor` and by the
// port dialog's "Check connection" button.
#include <QList>
#include <QString>

namespace util {

class SerialSystem;

struct DoctorFinding {
    enum Kind { Fine, Note, Problem };
    Kind kind = Note;
    QString text;
};

struct DoctorReport {
    QString port; // the port examined; empty when there was none to examine
    QList<DoctorFinding> findings;
    bool ok() const;
    // Every finding as a paragraph, with "OK", "Note" or "Problem" before it.
    QString text() const;
};

// The USB identifiers of the adapters the instrument's cables use, by name.
struct KnownAdapter {
    const char* name;
    const char* vendorId;
    const char* productId;
};
const QList<KnownAdapter>& knownAdapters();
// The known adapter with these identifiers, or null.
const KnownAdapter* findKnownAdapter(const QString& vendorId, const QString& productId);

// Examines `port`, or the only USB serial adapter when `port` is empty.
DoctorReport examineConnection(SerialSystem& system, const QString& port);

} // namespace util
