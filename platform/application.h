#pragma once

// The application object and what a window reaches through it rather than
// through the program's own shell: the shared menu bar, the About box, menu
// commands handed over by item name, and quitting.

#include <functional>
#include <string>

class QMenuBar;
class QObject;
class QWidget;

namespace varnock {

class Application {
  public:
    // The newest live instance becomes the current one.
    Application();
    virtual ~Application();
    Application(const Application &) = delete;
    Application &operator=(const Application &) = delete;

    // True: the application ends when its last window closes.
    bool AutoQuit = false;

    // The menu bar every window shows; nullptr when the program has none.
    virtual QMenuBar *MenuBar() { return nullptr; }
    // Shows the program's About box over `parent` and returns once it is closed.
    virtual void ShowAboutBox(QWidget *parent) { (void)parent; }
};

// The live application object, or nullptr before there is one.
Application *CurrentApplication();

// A window hands the platform its handler for the menu item named `item`;
// the handler goes with the window.
void AddMenuHandler(QObject *window, const std::string &item, std::function<bool()> handler);
// Runs `window`'s handler for `item`. False when it has none, or when the
// handler says it did not handle the command.
bool RunMenuHandler(const QObject *window, const std::string &item);

// Ends the program: leaves the event loop, after which the process exits.
void AppQuit();
// Replaces what AppQuit does (tests count the calls instead of quitting). An
// empty handler restores the real one. Gives back the previous handler.
std::function<void()> SetAppQuitHandler(std::function<void()> handler);

} // namespace varnock
