#include "util/ConnectionDoctor.h"

#include "app/Constants.h"
#include "util/SerialSystem.h"

#include <QStringList>

namespace util {

namespace {

QString adapterName(const SerialSystem::Adapter& adapter) {
    if (const KnownAdapter* known = findKnownAdapter(adapter.vendorId, adapter.productId)) {
        return QLatin1String(known->name);
    }
    return adapter.product.isEmpty() ? QStringLiteral("an adapter the program does not know")
                                     : adapter.product;
}

QString knownList() {
    QStringList names;
    for (const KnownAdapter& known : knownAdapters()) {
        names << QStringLiteral("%1 (%2:%3)")
                     .arg(QLatin1String(known.name), QLatin1String(known.vendorId),
                          QLatin1String(known.productId));
    }
    return names.join(QStringLiteral(", "));
}

// The adapter at `port`, if it is one.
SerialSystem::Adapter adapterAt(SerialSystem& system, const QString& port) {
    for (const SerialSystem::Adapter& a : system.adapters()) {
        if (a.device == port) {
            return a;
        }
    }
    return {};
}

// Whether the installed device rule gives access to the adapter at `port`.
bool ruleCovers(SerialSystem& system, const QString& port) {
    const SerialSystem::Adapter a = adapterAt(system, port);
    return !a.vendorId.isEmpty() &&
           system.ruleAdapters().contains(a.vendorId + QLatin1Char(':') + a.productId);
}

void add(DoctorReport* report, DoctorFinding::Kind kind, const QString& text) {
    report->findings << DoctorFinding{kind, text};
}

// Lists the adapters and picks the port to examine; false when there is none.
bool choosePort(SerialSystem& system, const QString& asked, DoctorReport* report) {
    const QList<SerialSystem::Adapter> adapters = system.adapters();
    for (const SerialSystem::Adapter& a : adapters) {
        add(report, DoctorFinding::Fine,
            QStringLiteral("USB serial adapter found at %1: %2 (USB identifier %3:%4%5).")
                .arg(a.device, adapterName(a), a.vendorId, a.productId,
                     a.driver.isEmpty() ? QString() : QStringLiteral(", driver ") + a.driver));
    }
    if (!asked.isEmpty()) {
        report->port = asked;
        return true;
    }
    if (adapters.isEmpty()) {
        add(report, DoctorFinding::Problem,
            QStringLiteral(
                "No USB serial adapter was found. Plug the instrument's cable into a USB "
                "socket (try another socket or cable if it is plugged in already). The "
                "cables known to work use these adapters: %1.")
                .arg(knownList()));
        return false;
    }
    report->port = adapters.first().device;
    if (adapters.size() > 1) {
        add(report, DoctorFinding::Note,
            QStringLiteral(
                "There are several adapters; %1 is examined. To examine another, name its port.")
                .arg(report->port));
    }
    return true;
}

bool checkAccess(SerialSystem& system, DoctorReport* report) {
    const SerialSystem::Access access = system.access(report->port);
    if (!access.exists) {
        add(report, DoctorFinding::Problem,
            QStringLiteral("The port %1 does not exist. Check that the cable is plugged in and "
                           "choose the port again.")
                .arg(report->port));
        return false;
    }
    if (access.readable && access.writable) {
        return true;
    }
    const QString user = system.userName();
    const SerialSystem::Adapter adapter = adapterAt(system, report->port);
    if (ruleCovers(system, report->port)) {
        add(report, DoctorFinding::Problem,
            QStringLiteral("You (%1) may not use %2 yet. The program's device rule gives the "
                           "person logged in at this computer access to this adapter when it "
                           "appears: unplug the cable and plug it in again. (Logged in from "
                           "another computer, the rule does not apply: join the group \"%3\" "
                           "with the command\n    sudo usermod -aG %3 %1\nthen log out and log "
                           "in again.)")
                .arg(user, report->port, access.group));
        return false;
    }
    if (system.userGroups().contains(access.group) &&
        !system.sessionGroups().contains(access.group)) {
        add(report, DoctorFinding::Problem,
            QStringLiteral("You (%1) are a member of the group \"%2\" that may use %3, but this "
                           "session started before you joined it. Log out and log in again (or "
                           "restart the computer).")
                .arg(user, access.group, report->port));
        return false;
    }
    QString text =
        QStringLiteral("You (%1) may not use %2: it belongs to the user \"%3\" and the group "
                       "\"%4\" (%5), and you are not a member of that group. Add yourself with "
                       "the command\n    sudo usermod -aG %4 %1\nthen log out and log in again.")
            .arg(user, report->port, access.owner, access.group, access.mode);
    if (findKnownAdapter(adapter.vendorId, adapter.productId)) {
        text += QStringLiteral(
            "\nOr, without joining the group, let the program's device rule give the person at "
            "this computer access to the cables' adapters (and keep ModemManager away from "
            "them): in the program's source folder run\n    sudo scripts/udev.sh\nthen unplug "
            "the cable and plug it in again.");
    }
    add(report, DoctorFinding::Problem, text);
    return false;
}

} // namespace

bool DoctorReport::ok() const {
    for (const DoctorFinding& f : findings) {
        if (f.kind == DoctorFinding::Problem) {
            return false;
        }
    }
    return true;
}

QString DoctorReport::text() const {
    QStringList paragraphs;
    for (const DoctorFinding& f : findings) {
        const char* label = f.kind == DoctorFinding::Fine   ? "OK"
                            : f.kind == DoctorFinding::Note ? "Note"
                                                            : "Problem";
        paragraphs << QLatin1String(label) + QStringLiteral(": ") + f.text;
    }
    return paragraphs.join(QStringLiteral("\n\n"));
}

const QList<KnownAdapter>& knownAdapters() {
    static const QList<KnownAdapter> adapters{
        {"CH340", "1a86", "7523"},       {"CH341", "1a86", "5523"},
        {"CP210x", "10c4", "ea60"},      {"FTDI FT232R", "0403", "6001"},
        {"FTDI FT231X", "0403", "6015"}, {"PL2303", "067b", "2303"}};
    return adapters;
}

const KnownAdapter* findKnownAdapter(const QString& vendorId, const QString& productId) {
    for (const KnownAdapter& known : knownAdapters()) {
        if (vendorId == QLatin1String(known.vendorId) &&
            productId == QLatin1String(known.productId)) {
            return &known;
        }
    }
    return nullptr;
}

DoctorReport examineConnection(SerialSystem& system, const QString& port) {
    DoctorReport report;
    if (!choosePort(system, port, &report) || !checkAccess(system, &report)) {
        return report;
    }
    const QList<SerialSystem::Holder> holders = system.holders(report.port);
    for (const SerialSystem::Holder& h : holders) {
        add(&report, DoctorFinding::Problem,
            QStringLiteral("%1 is in use by the program \"%2\" (process %3). Close that program, "
                           "or end it with the command\n    kill %3\nand try again.")
                .arg(report.port, h.program)
                .arg(h.pid));
    }
    if (system.modemManagerRunning() && ruleCovers(system, report.port)) {
        add(&report, DoctorFinding::Fine,
            QStringLiteral("ModemManager is running; the program's device rule keeps it away "
                           "from this adapter."));
    } else if (system.modemManagerRunning()) {
        add(&report, DoctorFinding::Note,
            QStringLiteral("ModemManager is running. It probes serial ports that appear and can "
                           "keep the port busy, or confuse the instrument, for the first seconds "
                           "after the cable is plugged in. If the instrument does not answer, stop "
                           "it with the command\n    sudo systemctl stop ModemManager"));
    }
    if (!holders.isEmpty()) {
        return report;
    }
    const QString answer = system.enquire(report.port);
    if (answer.isEmpty()) {
        add(&report, DoctorFinding::Problem,
            QStringLiteral("The instrument on %1 did not answer.\n\n").arg(report.port) +
                ui::MESSAGE_VERSION_NONE.trimmed());
    } else {
        add(&report, DoctorFinding::Fine,
            QStringLiteral("The instrument on %1 answered \"%2\": the connection works.")
                .arg(report.port, answer));
    }
    return report;
}

} // namespace util
