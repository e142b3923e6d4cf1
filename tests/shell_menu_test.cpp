// The menu bar in a real main window, on the offscreen platform.

#include "platform/application.h"
#include "shell/frmabout.h"
#include "shell/menubar1.h"

#include <QAction>
#include <QApplication>
#include <QKeySequence>
#include <QMainWindow>
#include <QMenu>
#include <QPointer>
#include <QPushButton>
#include <QSignalSpy>
#include <QTest>
#include <QTimer>
#include <gtest/gtest.h>

#include <memory>

namespace {

using varnock::MenuBar1;
using varnock::TheMenuBar1;

// A main window carrying the one menu bar, shown and in front, as the
// program's own window is after start-up.
struct WindowWithBar {
    WindowWithBar() {
        window->setMenuBar(&TheMenuBar1());
        TheMenuBar1().HideFileMenu();
        window->show();
        window->activateWindow();
        active = QTest::qWaitForWindowActive(window.get());
    }
    MenuBar1 &bar() { return *static_cast<MenuBar1 *>(window->menuBar()); }

    std::unique_ptr<QMainWindow> window = std::make_unique<QMainWindow>();
    bool active = false;
};

TEST(MenuBar, HasFileWithQuitThenHelpWithAbout) {
    MenuBar1 bar;
    ASSERT_NE(bar.FileMenu, nullptr);
    ASSERT_NE(bar.FileQuit, nullptr);
    ASSERT_NE(bar.mnuHelpMenu, nullptr);
    ASSERT_NE(bar.mnuAbout, nullptr);

    const QList<QAction *> top = bar.actions();
    ASSERT_EQ(top.size(), 2);
    EXPECT_EQ(top[0], bar.FileMenu->menuAction());
    EXPECT_EQ(top[1], bar.mnuHelpMenu->menuAction());
    EXPECT_EQ(bar.FileMenu->title(), QStringLiteral("&File"));
    EXPECT_EQ(bar.mnuHelpMenu->title(), QStringLiteral("&Help"));

    ASSERT_EQ(bar.FileMenu->actions().size(), 1);
    EXPECT_EQ(bar.FileMenu->actions()[0], bar.FileQuit);
    EXPECT_EQ(bar.FileQuit->text(), QStringLiteral("&Quit"));
    EXPECT_TRUE(bar.FileQuit->shortcuts().contains(QKeySequence(Qt::CTRL | Qt::Key_Q)));
    for (const QKeySequence &keys : QKeySequence::keyBindings(QKeySequence::Quit)) {
        EXPECT_TRUE(bar.FileQuit->shortcuts().contains(keys)) << keys.toString().toStdString();
    }

    EXPECT_EQ(bar.mnuAbout->text(), QStringLiteral("About..."));
    EXPECT_TRUE(bar.mnuAbout->shortcut().isEmpty());

    // Help: About..., a separator, and the same Quit action.
    const QList<QAction *> help = bar.mnuHelpMenu->actions();
    ASSERT_EQ(help.size(), 3);
    EXPECT_EQ(help[0], bar.mnuAbout);
    EXPECT_TRUE(help[1]->isSeparator());
    EXPECT_EQ(help[2], bar.FileQuit);

    for (QAction *a :
         {bar.FileMenu->menuAction(), bar.FileQuit, bar.mnuHelpMenu->menuAction(), bar.mnuAbout})
        EXPECT_TRUE(a->isVisible() && a->isEnabled());

    // Hidden, File leaves only Help on the bar, with Quit still in it.
    bar.HideFileMenu();
    QStringList shown;
    for (QAction *a : bar.actions())
        if (a->isVisible())
            shown << a->text();
    EXPECT_EQ(shown, QStringList{QStringLiteral("&Help")});
    EXPECT_TRUE(bar.FileQuit->isVisible() && bar.FileQuit->isEnabled());
}

TEST(MenuBar, TheSharedBarLivesWithItsWindow) {
    QPointer<MenuBar1> first = &TheMenuBar1();
    EXPECT_EQ(&TheMenuBar1(), first.data());
    {
        QMainWindow window;
        window.setMenuBar(first);
        EXPECT_EQ(window.menuBar(), first.data());
        EXPECT_EQ(&TheMenuBar1(), first.data());
    }
    EXPECT_TRUE(first.isNull()) << "the window owns the bar it was given";
    QPointer<MenuBar1> second = &TheMenuBar1();
    EXPECT_FALSE(second.isNull());
    delete second.data();
}

TEST(MenuBar, CtrlQQuitsWhileFileIsHidden) {
    WindowWithBar w;
    ASSERT_TRUE(w.active);
    ASSERT_FALSE(w.bar().FileMenu->menuAction()->isVisible());

    QWidget other;
    other.show();
    QSignalSpy quits(w.bar().FileQuit, &QAction::triggered);
    QTest::keyClick(w.window.get(), Qt::Key_Q, Qt::ControlModifier);
    EXPECT_EQ(quits.count(), 1);
    EXPECT_FALSE(w.window->isVisible()) << "Quit closes the windows";
    EXPECT_FALSE(other.isVisible());
}

TEST(MenuBar, AboutCanBeRoutedThroughTheWindow) {
    WindowWithBar w;
    int calls = 0;
    varnock::AddMenuHandler(w.window.get(), "mnuAbout", [&calls] {
        ++calls;
        return true;
    });
    w.bar().mnuAbout->trigger();
    EXPECT_EQ(calls, 1);
    EXPECT_EQ(varnock::OpenAbout(), nullptr);
}

} // namespace
