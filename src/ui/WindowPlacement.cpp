#include "ui/WindowPlacement.h"

#include <QRect>
#include <QWidget>

namespace ui {

void centreOver(QWidget* window, const QWidget* over) {
    if (!window || !over) {
        return;
    }
    if (!window->testAttribute(Qt::WA_Resized)) {
        window->adjustSize();
    }
    QRect frame(QPoint(), window->size());
    frame.moveCenter(over->window()->geometry().center());
    window->move(frame.topLeft());
}

} // namespace ui
