#pragma once

// The program's menu bar: two commands, Quit and About.
//
// The bar keeps a File menu with Quit in it, and the application hides that
// menu at every start. On macOS the Quit and About items move into the
// application menu by their roles, so nothing is lost. Linux has no
// application menu, so the bar also lists the same Quit action in the Help
// menu, after About and a separator: one action, one Ctrl+Q shortcut, one
// handler, whether File is shown or not.

#include <QMenuBar>

class QAction;
class QMenu;

namespace varnock {

class MenuBar1 : public QMenuBar {
  public:
    explicit MenuBar1(QWidget *parent = nullptr);

    // Takes the File menu off the bar; its Quit stays reachable in Help and
    // by its shortcut.
    void HideFileMenu();

    QMenu *FileMenu = nullptr;
    QAction *FileQuit = nullptr;
    QMenu *mnuHelpMenu = nullptr;
    QAction *mnuAbout = nullptr;

  private:
    // The window's own handler for the item when it has one, else the About
    // box over the bar's window.
    void AboutAction();
};

// The one live menu bar, created on first use with no parent. Hand it to the
// main window with QMainWindow::setMenuBar(), which takes ownership; should
// that window be destroyed, the bar goes with it and the next call creates a
// new one.
MenuBar1 &TheMenuBar1();

} // namespace varnock
