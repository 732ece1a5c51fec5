#pragma once
#include <QSize>
#include <QString>

// Renders the whole main window, started in the current folder as the program starts,
// with FILE (when given) opened in a tab and the setting NAME (when given) selected.
int shootWindow(const QString& file, const QString& select, const QSize& size,
                const QString& output);

// Renders the firmware update window as it opens, or, with a setup file and a target
// version, the preview of carrying that file's settings into the target.
int shootUpdate(const QString& file, const QString& target, const QSize& size,
                const QString& output);

// Renders the port dialog with PORT typed in, beside the report Check connection shows for
// it on this machine.
int shootDoctor(const QString& port, const QString& output);
