#include "shell/app.h"

#include "settings/location.h"
#include "shell/menubar1.h"

#include <QApplication>

namespace varnock {

namespace {
std::function<void()> &QuitHandler() {
    static std::function<void()> handler;
    return handler;
}
} // namespace

void App::Event_Open() {
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

App &TheApp() {
    static App app;
    return app;
}

void AppQuit() {
    if (QuitHandler()) {
        QuitHandler()();
        return;
    }
    QCoreApplication::exit(0);
}

std::function<void()> SetAppQuitHandler(std::function<void()> handler) {
    std::swap(handler, QuitHandler());
    return handler;
}

} // namespace varnock
