#pragma once

// The main window: a view of the chart controller's popups and lists, with
// the selectors at the top, the chart with a tuning popup beside each string,
// and the notes table. Opening it restores the saved selections; closing it
// saves them and ends the program.

#include "chart/controller.h"

#include <QMainWindow>

#include <string>

namespace varnock {

// The controller comes first so that it outlives the widgets that show its
// controls: they are destroyed with the QMainWindow part.
class Window1 : public ChartController, public QMainWindow {
  public:
    // Builds the window and its controls; nothing is computed yet. Open()
    // (of the controller) then runs the lists' Open events and Event_Open.
    Window1();

    // Saves the selections and ends the program.
    void Event_Close();

    // The About command of the menu bar.
    bool _mnuAbout_Action();

    // The widget that shows the control `name` of the window's table.
    QWidget *ControlView(const std::string &name) const;

  protected:
    void RestoreSaved() override;
    void closeEvent(QCloseEvent *event) override;

  private:
    void Layout();
    void CreateControls();
    void _CreateControls0();

    bool closed_ = false;
};

} // namespace varnock
