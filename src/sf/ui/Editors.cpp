#include "sf/ui/Editors.h"

namespace sf::ui {

// The editors that stay open in the cells never take the focus (a click still works them):
// the keyboard stays with the table, which hands Space, Enter and Alt+Down to them.
ListComboBox::ListComboBox(QWidget* parent) : QComboBox(parent) {
    setFocusPolicy(Qt::NoFocus);
    // Not AdjustToContents: that policy resizes the box to its contents on a timer after
    // every change of its items, leaving it narrower than its cell until the view places
    // it again.
}

CheckBoolBox::CheckBoolBox(QWidget* parent) : QCheckBox(parent) {
    setAutoFillBackground(true);
    setFocusPolicy(Qt::NoFocus);
}

bool CheckBoolBox::hitButton(const QPoint& pos) const {
    return rect().contains(pos);
}

BoolButton::BoolButton(QWidget* parent) : QPushButton(parent) {
    setCheckable(true);
    setFocusPolicy(Qt::NoFocus);
}

void BoolButton::setState(bool on) {
    setChecked(on);
}

} // namespace sf::ui
