#pragma once

// The six selections the main window remembers between runs: fret layout,
// number of strings and the four tunings, kept in the settings file.

#include "settings/iniclass.h"

#include <array>

namespace varnock {

class PopupMenu;

// The popups that are saved, in the order of their keys: layout, strings,
// then the four tunings from the first string on.
using SavedPopups = std::array<PopupMenu *, 6>;

// Sets each saved popup's ListIndex (each change runs that popup's handling);
// a fret layout that is not saved goes to 0. Keys that are missing, empty or
// unreadable leave the popup as it is.
void RestoreSelections(iniClass &store, const SavedPopups &popups);

// Writes the six popups' indices, each with its own write of the file.
void SaveSelections(iniClass &store, const SavedPopups &popups);

} // namespace varnock
