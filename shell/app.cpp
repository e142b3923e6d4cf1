#include "shell/app.h"

#include "settings/location.h"
#include "shell/frmabout.h"
#include "shell/menubar1.h"
#include "window/dialogs.h"

#include <QApplication>

namespace varnock {

void App::Event_Open() {
    // The settings store may have something to say from here on.
    UseMessageDialogs();
    AutoQuit = true;
    QApplication::setQuitOnLastWindowClosed(AutoQuit);
    SetupINI();
    TheMenuBar1().HideFileMenu();
}

void App::SetupINI() {
    varnock::SetupINI();
}

void App::CheckINILocation(const std::string &folderName) {
    varnock::CheckINILocation(folderName);
}

QMenuBar *App::MenuBar() {
    return &TheMenuBar1();
}

void App::ShowAboutBox(QWidget *parent) {
    ShowAbout(parent);
}

App &TheApp() {
    static App app;
    return app;
}

} // namespace varnock
