#pragma once

// Where the program's own windows open: centred over the window they belong to.

class QWidget;

namespace ui {

// Moves window (at its size hint when it has no size yet) so that its centre is the
// centre of over; nothing without over.
void centreOver(QWidget* window, const QWidget* over);

} // namespace ui
