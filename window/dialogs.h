#pragma once

// The messages a windowed program shows in boxes rather than on stderr.

namespace varnock {

// From now on MsgBox shows its text in a modal box titled "Varnock" with an
// OK button.
void UseMessageDialogs();

// Where an exception that leaves a user's action ends up: reported, never
// thrown through Qt's event loop.
void ReportUnhandledException(const char *what);

} // namespace varnock
