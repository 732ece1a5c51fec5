#pragma once

// The application's answers and texts as table files write them.

#include <QList>
#include <QMessageBox>
#include <QStringList>

namespace testsupport {

// Message box buttons by name: "Yes", "No", "Ok", "Cancel", "Save", "Retry", "Ignore".
QList<QMessageBox::StandardButton> buttons(const QStringList& names);

// A text the application shows, by the name of its constant, each argument in
// parentheses: ERROR_SAVEHEX(/tmp/x.hex), ERROR_SAVEHEX() fills %1 with nothing. Any
// other cell is the text itself.
QString shownText(const QString& cell);
QStringList shownTexts(const QStringList& cells);

} // namespace testsupport
