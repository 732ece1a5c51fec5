#pragma once
// A firmware version's help file: the HTML that describes each of its settings.
#include <QDialog>

class QTextBrowser;

namespace ui {

class HelpWindow : public QDialog {
    Q_OBJECT
public:
    HelpWindow(const QString& title, const QString& html, QWidget* parent = nullptr);
    QString text() const;

private:
    QTextBrowser* m_browser;
};

} // namespace ui
