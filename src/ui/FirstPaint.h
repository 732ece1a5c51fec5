#pragma once
// For the start-up benchmark: watches the first time the window paints and, once control
// is back in the event loop, prints "painted NS" on the standard output (NS: the
// monotonic clock, in ns, when the last widget of that first paint was painted) and ends
// the event loop. The program installs it only when KX_QUIT_AFTER_FIRST_PAINT is set.
#include <QObject>

class QWidget;

namespace ui {

class FirstPaint : public QObject {
    Q_OBJECT
public:
    static constexpr const char* VARIABLE = "KX_QUIT_AFTER_FIRST_PAINT";
    // Watches the window when the variable is set.
    static void watchIfAsked(QWidget* window);
    // The monotonic clock in ns, as printed.
    static qint64 now();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    FirstPaint(QWidget* window);
    QWidget* m_window;
    qint64 m_lastPaint = 0;
    bool m_reported = false;
};

} // namespace ui
