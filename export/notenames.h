#pragma once

// Note names in the system a player chose with --names. Everything inside
// works with the program's English names; what the player types is read in
// the chosen system on the way in, and every sheet, book and answer is
// written in it on the way out, so no writer needs to know.

#include "export/book.h"
#include "export/request.h"
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

// The note a player typed in `system`, accents forgiven ("R\u00e9" is "Re").
// BadInput naming the `noun` and the system's rule; a name that reads in
// another system points to it, and a chord name typed for a root says which
// options to write.
catalogue::WrittenNote ReadNote(const std::string &typed, NameSystem system,
                                const std::string &noun);
// "Dm" as the options that choose its root and chord type; nullopt for a
// name that is not a chord's.
std::optional<std::string> ChordNameOptions(const std::string &typed, NameSystem system);
// --identify's "D, F#,a" as note indices: 2 to 4 names in any spelling, at
// least two of them different.
std::vector<int> ReadNoteList(const std::string &list);
// Every note the player typed (the root, the tuning, the book's roots, the
// notes to identify) rewritten from asked.names to English, otherwise as
// typed ("Fis" gives "F#", "Sib" gives "Bb").
void ToEnglish(Asked &asked);

} // namespace varnock::output
