#pragma once

// The editor widgets the settings table opens in its cells.

#include <QCheckBox>
#include <QComboBox>
#include <QPushButton>

namespace sf::ui {

// A choice among a setting's options (a list) or a bit's two labels.
class ListComboBox : public QComboBox {
    Q_OBJECT
public:
    explicit ListComboBox(QWidget* parent = nullptr);
};

// A check box for one box of a check box group; a click anywhere in the cell, its border
// included, toggles it.
class CheckBoolBox : public QCheckBox {
    Q_OBJECT
public:
    explicit CheckBoolBox(QWidget* parent = nullptr);

protected:
    bool hitButton(const QPoint& pos) const override;
};

// A two-state button: on while a foldable setting shows one row per bit.
class BoolButton : public QPushButton {
    Q_OBJECT
public:
    explicit BoolButton(QWidget* parent = nullptr);
    void setState(bool on);
    bool getState() const { return isChecked(); }
};

} // namespace sf::ui
