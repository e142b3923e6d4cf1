#pragma once

// The chart told in sentences for screen readers. No Qt.

#include <string>
#include <vector>

namespace varnock::music {

struct SheetFacts {
    std::string layoutName;             // as in the layout popup, e.g. "Diatonic"
    int strings = 0;                    // 3 or 4
    std::vector<std::string> tuning;    // open note of each string, spelled
    std::string kind = "Chord";         // or "Scale"
    std::string chordTitle;             // e.g. "D Maj", "D dorian"
    std::vector<std::string> notes;     // spelled, root first
    std::vector<std::string> fretNames; // the layout's names of positions 0..22
    // The same frets as a diatonic board names them, where that helps a
    // player (a chromatic board's label row); empty otherwise.
    std::vector<std::string> diatonicNames;
    std::vector<std::vector<std::string>> cells; // per string, by position; "" where nothing
    bool lastStringFirst = false;                // the strings' sentences from the last one
};

// One sentence for the layout and tuning, one for the chord, one per string
// listing where each chord note lies, root first, positions ascending, e.g.
// "String 1, tuned D: D at positions 0, 7 (frets 0, 7); no F#; A at position 4 (fret 4)."
// BadInput when the tuning or cells do not match `strings` or a row is longer
// than fretNames.
std::string Describe(const SheetFacts &facts);

} // namespace varnock::music
