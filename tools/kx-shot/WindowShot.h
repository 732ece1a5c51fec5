#pragma once
#include <QSize>
#include <QString>

// Renders the whole main window, started in the current folder as the program starts,
// with FILE (when given) opened in a tab and the setting NAME (when given) selected.
int shootWindow(const QString& file, const QString& select, const QSize& size,
                const QString& output);
