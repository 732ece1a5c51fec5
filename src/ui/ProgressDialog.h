#pragma once
// The progress of a transfer with the instrument: what is happening, a bar, and Cancel,
// which only asks the transfer to stop (aborted()); the transfer ends it with finish().
#include <QDialog>

class QLabel;
class QProgressBar;

namespace ui {

class ProgressDialog : public QDialog {
    Q_OBJECT
public:
    explicit ProgressDialog(const QString& title, QWidget* parent = nullptr);
    bool wasAborted() const { return m_aborted; }
    QString progressText() const;
    int progress() const;

public slots:
    void setProgressText(const QString& text);
    void setProgress(int percent);
    // Hides the dialog and makes it ready for the next transfer.
    void finish();
    // What Cancel and closing the window do.
    void abort();

signals:
    void aborted();

protected:
    void reject() override;

private:
    QLabel* m_text;
    QProgressBar* m_bar;
    bool m_aborted = false;
};

} // namespace ui
