#pragma once

// The one way the settings store talks to the user: a modal message with an
// OK button. Tests swap the box for a handler that records the texts.

#include <functional>
#include <string>

namespace varnock {

using MsgBoxHandler = std::function<void(const std::string &)>;

// Shows `text` in a modal box titled "Varnock" and returns once it is
// dismissed, or hands the text to the installed handler instead.
void MsgBox(const std::string &text);

// Installs `handler` and gives back the one it replaces. An empty handler
// brings back the real message box. Main thread only, like everything else.
MsgBoxHandler SetMsgBoxHandler(MsgBoxHandler handler);

} // namespace varnock
