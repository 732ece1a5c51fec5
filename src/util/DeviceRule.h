#pragma once
// The device rule: a udev rules file that gives the person logged in at the computer access
// to the serial adapters of the instrument's cables (TAG+="uaccess") and keeps ModemManager
// from probing them (ENV{ID_MM_DEVICE_IGNORE}="1"). The Debian package installs it, and
// scripts/udev.sh for a build from source; the connection doctor reads the installed one to
// know whether a replug gives access.
#include <QByteArray>
#include <QString>
#include <QStringList>

namespace util {

// The rules file's name, the same in every rules folder.
extern const QString DEVICE_RULE_FILE;

// The rules folders udev reads, the overriding ones first: a file in an earlier folder
// hides the file of the same name in a later one.
QStringList udevRuleFolders();

// Reads a udev rules text. Returns false, with the line and the reason in *error, when a
// line is not one udev can read (an unknown key, an operator the key does not take, a
// value without quotes, items without a comma between them, a GOTO without its LABEL).
// Otherwise *adapters gets the USB identifiers ("vvvv:pppp") of the rules that match an
// adapter by ATTRS{idVendor} and ATTRS{idProduct} and both give access and keep
// ModemManager away.
bool readDeviceRule(const QByteArray& text, QStringList* adapters, QString* error);

} // namespace util
