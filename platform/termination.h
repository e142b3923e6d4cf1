#pragma once

class QWidget;

namespace varnock {

// A polite end for the program when the desktop session (or `kill`) asks it
// to stop: SIGTERM, SIGINT and SIGHUP close `window` just as its close button
// does, so the selections are saved on that road too.
// Call first thing: a signal that comes while the program is still starting
// is kept and acted on once the window is there.
void InstallTerminationHandlers();
void CloseOnTerminationSignals(QWidget *window);

} // namespace varnock
