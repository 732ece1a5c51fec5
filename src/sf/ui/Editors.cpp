#include "sf/ui/Editors.h"

namespace sf::ui {

ListComboBox::ListComboBox(QWidget* parent) : QComboBox(parent) {
    setFocusPolicy(Qt::StrongFocus);
    setSizeAdjustPolicy(QComboBox::AdjustToContents);
}

CheckBoolBox::CheckBoolBox(QWidget* parent) : QCheckBox(parent) {
    setAutoFillBackground(true);
}

bool CheckBoolBox::hitButton(const QPoint& pos) const {
    return rect().contains(pos);
}

BoolButton::BoolButton(QWidget* parent) : QPushButton(parent) {
    setCheckable(true);
}

void BoolButton::setState(bool on) {
    setChecked(on);
}

} // namespace sf::ui
