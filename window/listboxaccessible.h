#pragma once

// What assistive technology sees of a ListboxView: a table whose column
// headers are the list's headings and whose cells read as "heading: text",
// with the view's current cell as the focused cell. Nothing here draws.

#include "platform/basic.h"

#include <string>

namespace varnock {

class ListboxView;

// Registers the interface factory for every ListboxView; once is enough,
// more calls do nothing.
void InstallListboxAccessibility();

// What a cell reads as: its heading and its text, "(empty)" for no text.
std::string ListboxCellName(const std::string &heading, const std::string &text);

// Tell assistive technology, while one listens, that the current cell of
// `view` moved (and with it the selected row, when `selection` is true), or
// that the list's content changed.
void AnnounceListboxCell(ListboxView &view, bool selection);
void AnnounceListboxContent(ListboxView &view);

} // namespace varnock
