#pragma once

// The application object: start-up before the main window exists, and what
// the windows reach through the platform (the menu bar, the About box).

#include "platform/application.h"

#include <string>

namespace varnock {

class App : public Application {
  public:
    // Runs once when the application opens, before the main window exists:
    // quit with the last window, set up the settings store, hide File.
    void Event_Open();
    void SetupINI();
    void CheckINILocation(const std::string &folderName);

    QMenuBar *MenuBar() override;
    void ShowAboutBox(QWidget *parent) override;
};

// The one application object.
App &TheApp();

} // namespace varnock
