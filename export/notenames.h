#pragma once

// Note names in the system a player chose with --names. Everything inside
// works with the program's English names; what the player types is read in
// the chosen system on the way in, and every sheet, book and answer is
// written in it on the way out, so no writer needs to know.

#include "export/book.h"
#include "music/catalogue.h"
#include "music/chartsheet.h"

#include <optional>
#include <string>

namespace varnock::output {

using namespace music;

using catalogue::NameSystem;

// The sheet with every note (chart cells, notes table, colour keys, root
// item) named in the system; the cells keep their colours.
ChartSheet Named(const ChartSheet &sheet, NameSystem system);
Book Named(Book book, NameSystem system);

} // namespace varnock::output
