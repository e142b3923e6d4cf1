#pragma once

// Frets as players name them, and the capo. A position is typed as the
// chart's heading line names it: 0..22 on the diatonic and chromatic boards,
// "6+" and "13+" among the numbers on the boards that have them, so what a
// fingering prints can be typed back. A capo makes a new sheet, as spelling
// does: the writers only read it.

#include "music/chartsheet.h"
#include "music/layouts.h"

#include <string>
#include <vector>

namespace varnock::output {

using namespace music;

// "0..20, 6+, 13+": the names, for messages.
std::string AcceptedFrets(const std::vector<std::string> &fretNames);
// The same for the frets from position `first` up: "3..20, 6+, 13+".
std::string FretsFrom(const std::vector<std::string> &fretNames, int first);

// The position of a fret name ("7", "6+"). BadInput naming `option`, the
// value and what is accepted.
int ParsePosition(const std::string &text, const std::vector<std::string> &fretNames,
                  const std::string &option);

// The positions a fret list names, counted from the capo: 0 is the capo, a
// position below it is BadInput. Entries are numbers, fret names or x; the
// result is "p1,p2,..." in numbers, as ParseFretList reads it.
std::string FretListFromCapo(const std::string &list, const std::vector<std::string> &fretNames,
                             int capo);

} // namespace varnock::output
