#include "support/AppTexts.h"

#include "app/Constants.h"

#include <QHash>
#include <QRegularExpression>

namespace testsupport {

QList<QMessageBox::StandardButton> buttons(const QStringList& names) {
    static const QHash<QString, QMessageBox::StandardButton> byName{
        {"Yes", QMessageBox::Yes},       {"No", QMessageBox::No},     {"Ok", QMessageBox::Ok},
        {"Cancel", QMessageBox::Cancel}, {"Save", QMessageBox::Save}, {"Retry", QMessageBox::Retry},
        {"Ignore", QMessageBox::Ignore}};
    QList<QMessageBox::StandardButton> out;
    for (const QString& name : names) {
        if (!byName.contains(name)) {
            qFatal("no button named %s", qPrintable(name));
        }
        out << byName.value(name);
    }
    return out;
}

QString shownText(const QString& cell) {
    using namespace ui;
    static const QHash<QString, QString> byName{
        {"ERROR_BADIDEA", ERROR_BADIDEA},
        {"ERROR_NOTFOUND_KXS", ERROR_NOTFOUND_KXS},
        {"ERROR_NOTFOUND_SUPL", ERROR_NOTFOUND_SUPL},
        {"ERROR_SAVEHEX", ERROR_SAVEHEX},
        {"ERROR_WRITE_KXS_VERSION_MISMATCH", ERROR_WRITE_KXS_VERSION_MISMATCH},
        {"ERROR_WRITE_PERMS", ERROR_WRITE_PERMS},
        {"MESSAGE_SELECT_VERSION_OPEN", MESSAGE_SELECT_VERSION_OPEN},
        {"MESSAGE_SELECT_VERSION_OPEN_MISMATCH", MESSAGE_SELECT_VERSION_OPEN_MISMATCH},
        {"MESSAGE_WRITE_UNKNOWN_KX_FW", MESSAGE_WRITE_UNKNOWN_KX_FW},
        {"MESSAGE_WRITE_VERSION_NONE", MESSAGE_WRITE_VERSION_NONE}};
    static const QRegularExpression form(QStringLiteral("^([A-Z_]+)((?:\\([^()]*\\))*)$"));
    const QRegularExpressionMatch m = form.match(cell);
    if (!m.hasMatch() || !byName.contains(m.captured(1))) {
        return cell;
    }
    QString text = byName.value(m.captured(1));
    static const QRegularExpression argument(QStringLiteral("\\(([^()]*)\\)"));
    auto args = argument.globalMatch(m.captured(2));
    while (args.hasNext()) {
        text = text.arg(args.next().captured(1));
    }
    return text;
}

QStringList shownTexts(const QStringList& cells) {
    QStringList out;
    for (const QString& cell : cells) {
        out << shownText(cell);
    }
    return out;
}

} // namespace testsupport
