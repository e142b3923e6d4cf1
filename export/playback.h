#pragma once

// What --wav and --midi play: the chord in its first fingering, strummed
// from the first string to the last and then note by note, or a scale up and
// down, each note in the octave the strings are tuned to.

#include "chart/chartsheet.h"
#include "music/scales.h"
#include "music/sound.h"

#include <optional>
#include <string>
#include <vector>

namespace varnock::output {

using namespace music;

// The octave of each open string as players tune them: the first string in
// octave 3, each next one the nearest note at or above the string before
// (D A D: D3 A3 D4; D A D G: D3 A3 D4 G4; D A A: D3 A3 A3).
std::vector<int> DefaultOctaves(const std::vector<int> &openNotes);

// "3,3,4": one scientific octave 0..8 per string. BadInput naming the value
// for the wrong count or an entry that is no such number.
std::vector<int> ParseOctaves(const std::string &text, int strings);

// The chord of `sheet` (English names, a chord of the catalogue) in the
// first fingering FindFingerings gives with its default limits (allowing a
// muted string, then a wider reach, when those give none; the chord tones
// stacked from the first string's open note when nothing fits at all).
std::vector<NoteEvent> ChordEvents(const ChartSheet &sheet, const std::vector<int> &octaves);

// One octave of the scale from the lowest root at or above the first
// string's open note, up and back down.
std::vector<NoteEvent> ScaleEvents(const ChartSheet &sheet, const Scale &scale,
                                   const std::vector<int> &octaves);

// WavBytes or MidiBytes of the events, as a string of bytes to write;
// BadInput when the octaves put a note above MIDI's 127.
std::string WavFile(const std::vector<NoteEvent> &events);
std::string MidiFile(const std::vector<NoteEvent> &events);

} // namespace varnock::output
