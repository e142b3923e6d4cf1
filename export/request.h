#pragma once

// What a player asks varnock-chart to make, as plain values: which outputs
// and files, how the chart is shown, and the values only the layout or the
// song can read (positions, octaves, a key). Notes are in English names by
// the time they get here. Render and RunSong make every output from it.

#include "chart/cellpaint.h"
#include "export/spelling.h"
#include "export/writers.h"
#include "music/catalogue.h"
#include "music/fingering.h"
#include "music/instrument.h"
#include "music/scales.h"

#include <optional>
#include <string>
#include <vector>

namespace varnock::output {

using namespace music;

using catalogue::NameSystem;

struct Asked {
    // The notes as typed: the root, the open notes, the book's roots, the
    // notes to identify.
    std::optional<std::string> tuning, root, roots, identify;
    bool text = false;
    bool tsv = false;
    std::optional<std::string> output; // for --text / --tsv / --describe; stdout if absent
    std::optional<std::string> png, svg, pdf, book;
    std::optional<std::string> wav, midi, octaves; // the sound of the chord or scale
    std::optional<std::string> windowImage;        // the PNG exactly as the window shows it
    Paper paper = Paper::A4;
    int pixelScale = 1;
    const Scale *scale = nullptr; // a scale in place of the chord
    bool modes = false;           // the modes each string plays
    // How the chart is shown; the window knows none of these.
    Spelling spelling = Spelling::Musician;
    Labels labels = Labels::Notes;
    Palette palette = Palette::Window;
    NameSystem names = NameSystem::English;
    bool leftHanded = false;
    bool flip = false;
    // Answers in words instead of the chart.
    std::optional<std::string> identifyFrets;
    bool describe = false;
    // Fingerings and the capo; positions stay text until the layout is known.
    bool voicings = false;
    std::optional<std::string> highest, capo;
    std::optional<int> reach, count;
    bool mutedOk = false;
    // A ChordPro song on the instrument; the key stays as typed until --names is known.
    std::optional<std::string> song, transpose, key, tunings, chordpro;
    bool suggest = false;
};

// What the typed names chose: the instrument without its capo, the chord,
// and the notes, roots and chord types of the answers that list them.
struct Chosen {
    Instrument instrument;
    int root = 0, chord = 0;
    std::vector<int> identify, roots, chords;
};

// The limits asked for on a layout with these fret names. The default
// highest position is the fret named "12", or higher when the capo leaves
// less than a reach above it. BadInput for a highest position below the capo
// or a value that names no position.
Limits ResolveLimits(const Asked &asked, const std::vector<std::string> &fretNames, int capo);

// Every output asked for, handed to the current Batch; returns what goes to
// standard output. BadInput for a position, octave or fret list the layout
// does not take.
std::string Render(const Asked &asked, const Chosen &chosen);

} // namespace varnock::output
