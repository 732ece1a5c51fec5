#pragma once
// For the start-up benchmark: once the window it watches has painted for the first
// time, prints "painted" on the standard output and ends the event loop. The program
// installs it only when the variable KX_QUIT_AFTER_FIRST_PAINT is set.
#include <QObject>

namespace ui {

class FirstPaint : public QObject {
    Q_OBJECT
public:
    static constexpr const char* VARIABLE = "KX_QUIT_AFTER_FIRST_PAINT";
    // Watches the window when the variable is set.
    static void watchIfAsked(QWidget* window);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    using QObject::QObject;
    bool m_done = false;
};

} // namespace ui
