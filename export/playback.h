#pragma once

// What --wav and --midi play: the chord in its first fingering, strummed
// from the first string to the last and then note by note, or a scale up and
// down, each note in the octave the strings are tuned to.

#include "music/fingering.h"
#include "music/instrument.h"
#include "music/scales.h"
#include "music/sound.h"

#include <optional>
#include <string>
#include <vector>

namespace varnock::output {

using namespace music;

// "3,3,4": one scientific octave 0..8 per string. BadInput naming the value
// for the wrong count or an entry that is no such number.
std::vector<int> ParseOctaves(const std::string &text, int strings);

// The chord as the first of `fingerings` plays it on the instrument (its
// tuning, octaves and capo), strummed from the first string to the last and
// then note by note; with no fingering, its tones stacked from what the
// first string sounds at the capo.
std::vector<NoteEvent> ChordEvents(const Instrument &instrument,
                                   const std::vector<Fingering> &fingerings,
                                   const std::vector<ChordTone> &tones);

// One octave of the scale from the lowest root at or above what the first
// string sounds at the capo, up and back down.
std::vector<NoteEvent> ScaleEvents(const Instrument &instrument, int root, const Scale &scale);

// WavBytes or MidiBytes of the events, as a string of bytes to write;
// BadInput when the octaves put a note above MIDI's 127.
std::string WavFile(const std::vector<NoteEvent> &events);
std::string MidiFile(const std::vector<NoteEvent> &events);

} // namespace varnock::output
