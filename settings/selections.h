#pragma once

// The six selections the main window remembers between runs: fret layout,
// number of strings and the four tunings, kept in the settings file.

namespace varnock {

class Window1;

// Sets each saved popup's ListIndex (each change runs that popup's handling);
// a fret layout that is not saved goes to 0. Keys that are missing, empty or
// unreadable leave the popup as it is.
void RestoreSelections(Window1 &window);

// Writes the six popups' indices, each with its own write of the file.
void SaveSelections(Window1 &window);

} // namespace varnock
