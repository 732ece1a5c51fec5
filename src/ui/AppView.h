#pragma once
// The main window: menus and a tool bar for every command, one tab per open setup file,
// the current file's status text in the status bar. It turns what the user does into
// triggered actions and shows what the application model says; it decides nothing.
#include <QKeySequence>
#include <QMainWindow>
#include <QMap>

class QAction;
class QLabel;
class QTabWidget;

namespace ui {

class AppModel;
class FileModel;
class KXFileView;

class AppView : public QMainWindow {
    Q_OBJECT
public:
    explicit AppView(QWidget* parent = nullptr);
    void setModel(AppModel* model);
    AppModel* model() const { return m_model; }

    // Places the view of a newly opened file in a tab of its own and brings it forward.
    void addFileView(KXFileView* view);
    void setCurrentTab(int index);
    KXFileView* fileView(int index) const;
    int tabCount() const;
    QString statusText() const;

    // The commands, by the name of their signal without "Pressed" ("open", "save", ...).
    QAction* action(const QString& name) const;
    // Whether the window has painted yet: work that can wait (icons, the port scan) is
    // done after its first paint, so that the window appears sooner.
    bool hasPainted() const { return m_painted; }

signals:
    // The commands are the actions (action(name)); the controller connects to them. A
    // tab's close button and the Close command ask to close that tab.
    void closePressed(int index);
    void indexChanged(int index);
    void settingTip(const QString& tip);
    // The first paint of the window is done.
    void firstPainted();

protected:
    bool event(QEvent* event) override;
    void closeEvent(QCloseEvent* event) override;

private:
    QAction* command(const QString& name, const QString& text, const QString& icon,
                     const QKeySequence& shortcut = {});
    void buildMenus();
    void loadIcons();
    void bindModel();
    void fileRemoved(FileModel* file);
    void currentChanged(int index);
    void showStatus(const QString& text);
    void updateTabText(FileModel* file);

    AppModel* m_model = nullptr;
    QTabWidget* m_tabs;
    QLabel* m_status;
    QMap<QString, QAction*> m_actions;
    QList<QMetaObject::Connection> m_modelConnections;
    QMetaObject::Connection m_statusConnection;
    bool m_painted = false;
};

} // namespace ui
