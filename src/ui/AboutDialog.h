#pragma once
// Who made the program, its version and licence, and where newer firmware comes from.
#include <QDialog>

namespace ui {

class AboutDialog : public QDialog {
    Q_OBJECT
public:
    explicit AboutDialog(QWidget* parent = nullptr);
};

} // namespace ui
