#pragma once

// The one way the settings store talks to the user: a modal message with an
// OK button where the program has windows, a line on stderr where it has
// none. Tests swap either for a handler that records the texts.

#include <functional>
#include <string>

namespace varnock {

using MsgBoxHandler = std::function<void(const std::string &)>;

// Hands `text` to the installed handler; without one, shows it in the
// installed box and returns once it is dismissed; without a box, writes it
// to stderr.
void MsgBox(const std::string &text);

// Installs `handler` and gives back the one it replaces. An empty handler
// brings back the box. Main thread only, like everything else.
MsgBoxHandler SetMsgBoxHandler(MsgBoxHandler handler);

// Installs the modal box (the window layer has one).
void SetMsgBoxDialog(MsgBoxHandler dialog);

} // namespace varnock
