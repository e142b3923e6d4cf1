#pragma once

// The application object and the one road down.

#include <functional>
#include <string>

namespace varnock {

class App {
  public:
    // Runs once when the application opens, before the main window exists:
    // quit with the last window, set up the settings store, hide File.
    void Event_Open();
    void SetupINI();
    void CheckINILocation(const std::string &folderName);

    bool AutoQuit = false;
};

// The one application object.
App &TheApp();

// Ends the program: leaves the event loop, after which the process exits.
void AppQuit();

// Replaces what AppQuit does (tests count the calls instead of quitting). An
// empty handler restores the real one. Gives back the previous handler.
std::function<void()> SetAppQuitHandler(std::function<void()> handler);

} // namespace varnock
