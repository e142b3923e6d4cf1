#pragma once

// --voicings: the chord of a sheet fingered on its board, as text lines.

#include "music/chartsheet.h"
#include "music/fingering.h"

#include <string>
#include <vector>

namespace varnock::output {

using namespace music;

// The sheet's chord as the fingering search takes it: each tone's pitch and
// its degree label from the catalogue. BadInput for a sheet without a chord.
std::vector<ChordTone> SheetTones(const ChartSheet &sheet);

// What a fingering shows, read once so the text and the diagrams agree.
struct Voicing {
    std::vector<std::string> frets;   // per string: fret name, "0" at the capo, "x" muted
    std::vector<std::string> notes;   // per string: spelled note, "-" muted
    std::vector<std::string> degrees; // per string: degree label, "-" muted
    std::vector<std::string> omitted; // degree labels of the tones left out
};
// `notes` are the chord's names in formula order, spelled as the output asks.
Voicing Describe(const Fingering &fingering, const std::vector<ChordTone> &tones,
                 const std::vector<std::string> &notes, const std::vector<std::string> &fretNames,
                 int capo);

// "0 0 2 | D A F# | R 5 3", then " | without 5" when a tone is left out.
std::string VoicingLine(const Voicing &voicing);

// The sheet's chord fingered within the limits, each read for showing;
// `none` is the line saying there is none and which option to raise.
struct Voicings {
    std::vector<Fingering> fingerings;
    std::vector<Voicing> voicings;
    std::string none;
};
Voicings FindVoicings(const ChartSheet &sheet, const std::vector<std::string> &fretNames,
                      const Limits &limits);

// A line per fingering, or one line saying there is none and which option
// to raise. `sheet` comes spelled and `fretNames` from the unspelled layout.
std::string VoicingsText(const ChartSheet &sheet, const std::vector<std::string> &fretNames,
                         const Limits &limits);

// The option that raises a limit, as the user types it.
std::string OptionFor(Limit limit);

} // namespace varnock::output
