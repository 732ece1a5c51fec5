#include "ui/AppView.h"

#include "app/AppModel.h"
#include "ui/KXFileModel.h"
#include "ui/KXFileView.h"

#include <QAction>
#include <QCloseEvent>
#include <QLabel>
#include <QMenuBar>
#include <QMessageBox>
#include <QPushButton>
#include <QStackedWidget>
#include <QStatusBar>
#include <QStyle>
#include <QTabWidget>
#include <QTimer>
#include <QToolBar>
#include <QVBoxLayout>

namespace ui {

namespace {

// The style's own icons: always there and the same on every desktop (a search through
// the icon themes costs a noticeable part of the start-up).
QIcon standardIcon(const QStyle* style, const QString& name) {
    static const QMap<QString, QStyle::StandardPixmap> icons{
        {QStringLiteral("document-new"), QStyle::SP_FileIcon},
        {QStringLiteral("document-open"), QStyle::SP_DialogOpenButton},
        {QStringLiteral("document-save"), QStyle::SP_DialogSaveButton},
        {QStringLiteral("go-down"), QStyle::SP_ArrowDown},
        {QStringLiteral("go-up"), QStyle::SP_ArrowUp},
        {QStringLiteral("edit-undo"), QStyle::SP_ArrowBack},
        {QStringLiteral("edit-redo"), QStyle::SP_ArrowForward},
        {QStringLiteral("help-contents"), QStyle::SP_DialogHelpButton},
    };
    return icons.contains(name) ? style->standardIcon(icons.value(name)) : QIcon();
}

} // namespace

AppView::AppView(QWidget* parent)
    : QMainWindow(parent), m_tabs(new QTabWidget(this)), m_status(new QLabel(this)) {
    m_tabs->setTabsClosable(true);
    m_tabs->setDocumentMode(true);
    connect(m_tabs, &QTabWidget::tabCloseRequested, this, &AppView::closePressed);
    connect(m_tabs, &QTabWidget::currentChanged, this, &AppView::currentChanged);

    // With no file open the window says what can be done instead of showing nothing.
    auto* empty = new QWidget(this);
    auto* hint = new QLabel(tr("No setup is open.\nCreate a new setup, open a setup file, or "
                               "read the settings of your Korvex."),
                            empty);
    hint->setAlignment(Qt::AlignCenter);
    auto* emptyLayout = new QVBoxLayout(empty);
    emptyLayout->addStretch();
    emptyLayout->addWidget(hint);
    emptyLayout->addStretch();

    auto* pages = new QStackedWidget(this);
    pages->addWidget(empty);
    pages->addWidget(m_tabs);
    connect(m_tabs, &QTabWidget::currentChanged, pages, [pages, this](int index) {
        pages->setCurrentWidget(index < 0 ? pages->widget(0) : m_tabs);
    });
    setCentralWidget(pages);

    m_status->setTextInteractionFlags(Qt::TextSelectableByMouse);
    statusBar()->addWidget(m_status, 1);
    buildMenus();
    resize(1100, 760);
    // Loading the icons takes a tenth of the start-up; the window paints first.
    connect(this, &AppView::firstPainted, this, &AppView::loadIcons);
}

QAction* AppView::command(const QString& name, const QString& text, const QString& icon,
                          const QKeySequence& shortcut) {
    auto* act = new QAction(text, this);
    act->setShortcut(shortcut);
    act->setProperty("iconName", icon);
    act->setObjectName(name);
    m_actions.insert(name, act);
    return act;
}

void AppView::buildMenus() {
    QMenu* file = menuBar()->addMenu(tr("&File"));
    file->addAction(command(QStringLiteral("new"), tr("&New Setup..."),
                            QStringLiteral("document-new"), QKeySequence::New));
    file->addAction(command(QStringLiteral("open"), tr("&Open Setup File..."),
                            QStringLiteral("document-open"), QKeySequence::Open));
    file->addAction(command(QStringLiteral("save"), tr("&Save"), QStringLiteral("document-save"),
                            QKeySequence::Save));
    file->addAction(command(QStringLiteral("saveAs"), tr("Save &As..."),
                            QStringLiteral("document-save-as"), QKeySequence::SaveAs));
    QAction* close = new QAction(tr("&Close"), this);
    close->setObjectName(QStringLiteral("close"));
    close->setShortcut(QKeySequence::Close);
    connect(close, &QAction::triggered, this, [this] {
        if (m_tabs->currentIndex() >= 0) {
            emit closePressed(m_tabs->currentIndex());
        }
    });
    m_actions.insert(close->objectName(), close);
    file->addAction(close);
    file->addSeparator();
    file->addAction(command(QStringLiteral("read"), tr("&Read from Korvex..."),
                            QStringLiteral("go-down"), Qt::CTRL | Qt::SHIFT | Qt::Key_R));
    file->addAction(command(QStringLiteral("write"), tr("&Write to Korvex..."),
                            QStringLiteral("go-up"), Qt::CTRL | Qt::SHIFT | Qt::Key_W));
    file->addAction(command(QStringLiteral("compare"), tr("Com&pare with Korvex..."), QString()));
    file->addSeparator();
    file->addAction(
        command(QStringLiteral("updateFirmware"), tr("&Update Firmware..."), QString()));
    file->addAction(command(QStringLiteral("getFirmware"), tr("&Get New Firmware..."), QString()));
    file->addAction(
        command(QStringLiteral("clearFirmware"), tr("Remove All &Firmware..."), QString()));
    file->addSeparator();
    QAction* quit =
        command(QStringLiteral("exit"), tr("E&xit"), QStringLiteral("application-exit"));
    quit->setShortcut(QKeySequence::Quit);
    quit->setMenuRole(QAction::QuitRole);
    file->addAction(quit);

    QMenu* edit = menuBar()->addMenu(tr("&Edit"));
    edit->addAction(command(QStringLiteral("undo"), tr("&Undo"), QStringLiteral("edit-undo"),
                            QKeySequence::Undo));
    edit->addAction(command(QStringLiteral("redo"), tr("&Redo"), QStringLiteral("edit-redo"),
                            QKeySequence::Redo));

    QMenu* view = menuBar()->addMenu(tr("&View"));
    QAction* protect =
        command(QStringLiteral("showProtected"), tr("Show &Protected Settings"), QString());
    QAction* multiple =
        command(QStringLiteral("enableMultiple"), tr("&Multiple Files in Tabs"), QString());
    for (QAction* act : {protect, multiple}) {
        act->setCheckable(true);
        view->addAction(act);
    }

    QMenu* help = menuBar()->addMenu(tr("&Help"));
    help->addAction(command(QStringLiteral("help"), tr("Settings &Help"),
                            QStringLiteral("help-contents"), QKeySequence::HelpContents));
    QAction* keys = help->addAction(tr("&Keyboard"));
    keys->setObjectName(QStringLiteral("keys"));
    connect(keys, &QAction::triggered, this, [this] {
        QMessageBox box(QMessageBox::NoIcon, tr("Keyboard"), KXFileView::keysText(),
                        QMessageBox::Close, this);
        box.exec();
    });
    help->addAction(command(QStringLiteral("about"), tr("&About"), QStringLiteral("help-about")));

    QToolBar* bar = addToolBar(tr("Commands"));
    bar->setObjectName(QStringLiteral("commands"));
    bar->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
    const char* const tools[] = {"new",   "open",  "save", nullptr, "read",
                                 "write", nullptr, "undo", "redo"};
    for (const char* name : tools) {
        if (name) {
            bar->addAction(m_actions.value(QLatin1String(name)));
        } else {
            bar->addSeparator();
        }
    }
}

void AppView::loadIcons() {
    for (QAction* act : std::as_const(m_actions)) {
        act->setIcon(standardIcon(style(), act->property("iconName").toString()));
    }
}

QAction* AppView::action(const QString& name) const {
    return m_actions.value(name);
}

void AppView::setModel(AppModel* model) {
    if (m_model == model) {
        return;
    }
    for (const QMetaObject::Connection& c : m_modelConnections) {
        disconnect(c);
    }
    m_modelConnections.clear();
    m_model = model;
    if (m_model) {
        bindModel();
    }
}

void AppView::bindModel() {
    const auto enable = [this](const char* name, void (AppModel::*changed)(bool), bool now,
                               bool check = false) {
        QAction* act = m_actions.value(QLatin1String(name));
        check ? act->setChecked(now) : act->setEnabled(now);
        m_modelConnections << connect(m_model, changed, act,
                                      check ? &QAction::setChecked : &QAction::setEnabled);
    };
    AppModel* m = m_model;
    enable("new", &AppModel::newEnabledChanged, m->getNewEnabled());
    enable("open", &AppModel::openEnabledChanged, m->getOpenEnabled());
    enable("save", &AppModel::saveEnabledChanged, m->getSaveEnabled());
    enable("saveAs", &AppModel::saveEnabledChanged, m->getSaveEnabled());
    enable("close", &AppModel::saveEnabledChanged, m->getSaveEnabled());
    enable("read", &AppModel::readEnabledChanged, m->getReadEnabled());
    enable("write", &AppModel::writeEnabledChanged, m->getWriteEnabled());
    enable("compare", &AppModel::writeEnabledChanged, m->getWriteEnabled());
    enable("undo", &AppModel::undoEnabledChanged, m->getUndoEnabled());
    enable("redo", &AppModel::redoEnabledChanged, m->getRedoEnabled());
    enable("showProtected", &AppModel::showProtectedChanged, m->getShowProtected(), true);
    enable("enableMultiple", &AppModel::multipleEnabledChanged, m->getMultipleEnabled(), true);
    // A check mark follows the model even when the controller keeps the old mode.
    for (const char* name : {"showProtected", "enableMultiple"}) {
        QAction* act = m_actions.value(QLatin1String(name));
        m_modelConnections << connect(act, &QAction::triggered, this, [this, name, act] {
            act->setChecked(QLatin1String(name) == QLatin1String("showProtected")
                                ? m_model->getShowProtected()
                                : m_model->getMultipleEnabled());
        });
    }
    setWindowTitle(m->getTitle());
    m_modelConnections << connect(m, &AppModel::titleChanged, this, &QWidget::setWindowTitle);
    m_modelConnections << connect(m, &AppModel::fileRemoved, this, &AppView::fileRemoved);
    m_modelConnections << connect(m, &AppModel::currentIndexChanged, this, &AppView::setCurrentTab);
}

void AppView::addFileView(KXFileView* view) {
    FileModel* file = view->file();
    const int index = m_tabs->addTab(view, file->getTitle());
    connect(file, &FileModel::titleChanged, this, [this, file] { updateTabText(file); });
    connect(file, &FileModel::modifiedChanged, this, [this, file] { updateTabText(file); });
    connect(view, &KXFileView::settingTip, this, &AppView::settingTip);
    updateTabText(file);
    m_tabs->setCurrentIndex(index);
}

void AppView::updateTabText(FileModel* file) {
    for (int i = 0; i < m_tabs->count(); ++i) {
        if (fileView(i)->file() == file) {
            m_tabs->setTabText(i, file->isModified() ? file->getTitle() + QStringLiteral(" *")
                                                     : file->getTitle());
            m_tabs->setTabToolTip(i, file->getPath().isEmpty() ? tr("Not saved yet")
                                                               : file->getPath());
        }
    }
}

void AppView::fileRemoved(FileModel* file) {
    for (int i = 0; i < m_tabs->count(); ++i) {
        KXFileView* view = fileView(i);
        if (view->file() == file) {
            m_tabs->removeTab(i);
            view->deleteLater();
            return;
        }
    }
}

void AppView::setCurrentTab(int index) {
    if (index >= 0 && index < m_tabs->count()) {
        m_tabs->setCurrentIndex(index);
    }
}

KXFileView* AppView::fileView(int index) const {
    return qobject_cast<KXFileView*>(m_tabs->widget(index));
}

int AppView::tabCount() const {
    return m_tabs->count();
}

QString AppView::statusText() const {
    return m_status->text();
}

void AppView::currentChanged(int index) {
    disconnect(m_statusConnection);
    if (KXFileView* view = fileView(index)) {
        m_statusConnection =
            connect(view->file(), &FileModel::statusChanged, this, &AppView::showStatus);
        showStatus(view->file()->getStatus());
    } else {
        showStatus(QString());
    }
    emit indexChanged(index);
}

void AppView::showStatus(const QString& text) {
    m_status->setText(text);
}

bool AppView::event(QEvent* event) {
    if (event->type() == QEvent::Paint && !m_painted) {
        m_painted = true;
        // Once the whole window has painted and control is back in the event loop.
        QTimer::singleShot(0, this, &AppView::firstPainted);
    }
    return QMainWindow::event(event);
}

void AppView::closeEvent(QCloseEvent* event) {
    // The controller decides and ends the program; the window only asks.
    event->ignore();
    m_actions.value(QStringLiteral("exit"))->trigger();
}

} // namespace ui
