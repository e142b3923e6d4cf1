#include "shell/menubar1.h"

#include "platform/application.h"
#include "shell/frmabout.h"

#include <QAction>
#include <QApplication>
#include <QKeySequence>
#include <QList>
#include <QMenu>
#include <QPointer>

namespace varnock {

MenuBar1::MenuBar1(QWidget *parent) : QMenuBar(parent) {
    setObjectName(QStringLiteral("MenuBar1"));

    FileMenu = addMenu(QStringLiteral("&File"));
    FileMenu->setObjectName(QStringLiteral("FileMenu"));

    FileQuit = FileMenu->addAction(QStringLiteral("&Quit"));
    FileQuit->setObjectName(QStringLiteral("FileQuit"));
    // The desktop's own Quit keys where it has them (Ctrl+Q on Linux desktops,
    // Cmd+Q on macOS); Windows and bare platforms have none, so Ctrl+Q.
    QList<QKeySequence> quitKeys = QKeySequence::keyBindings(QKeySequence::Quit);
    if (quitKeys.isEmpty()) {
        quitKeys.append(QKeySequence(Qt::CTRL | Qt::Key_Q));
    }
    FileQuit->setShortcuts(quitKeys);
    FileQuit->setMenuRole(QAction::QuitRole);
    // Closing the windows is all Quit does; the main window's close handling
    // saves and ends the program.
    connect(FileQuit, &QAction::triggered, this, [] { QApplication::closeAllWindows(); });

    mnuHelpMenu = addMenu(QStringLiteral("&Help"));
    mnuHelpMenu->setObjectName(QStringLiteral("mnuHelpMenu"));

    mnuAbout = mnuHelpMenu->addAction(QStringLiteral("About..."));
    mnuAbout->setObjectName(QStringLiteral("mnuAbout"));
    mnuAbout->setMenuRole(QAction::AboutRole);
    connect(mnuAbout, &QAction::triggered, this, [this] { AboutAction(); });

    mnuHelpMenu->addSeparator();
    mnuHelpMenu->addAction(FileQuit);
}

void MenuBar1::HideFileMenu() {
    FileMenu->menuAction()->setVisible(false);
}

void MenuBar1::AboutAction() {
    if (parentWidget() != nullptr && RunMenuHandler(window(), "mnuAbout"))
        return;
    // Before the bar sits in a window it is a hidden top-level of its own,
    // which would make a poor parent.
    ShowAbout(parentWidget() != nullptr ? window() : QApplication::activeWindow());
}

MenuBar1 &TheMenuBar1() {
    static QPointer<MenuBar1> bar;
    if (!bar) {
        bar = new MenuBar1();
    }
    return *bar;
}

} // namespace varnock
