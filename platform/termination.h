#pragma once

class QObject;

namespace varnock {

// A polite end for the program when the desktop session (or `kill`) asks it
// to stop: SIGTERM, SIGINT and SIGHUP call `window`'s close() slot just as
// its close button does, so the selections are saved on that road too.
// Call first thing: a signal that comes while the program is still starting
// is kept and acted on once the window is there.
void InstallTerminationHandlers();
void CloseOnTerminationSignals(QObject *window);

} // namespace varnock
