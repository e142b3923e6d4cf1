#pragma once

// The sound of a chord or a scale: a plucked string synthesised from noise
// (no samples), written as a WAV file, and the same notes as a Standard MIDI
// File for any synthesiser. Plain data in, bytes out, no Qt.

#include <cstdint>
#include <vector>

namespace varnock::music {

inline constexpr int kSampleRate = 44100;
// General MIDI programme 26, "Acoustic Guitar (steel)", sent as 25: a steel
// string plucked and left to ring, the nearest of the standard sounds to a
// steel-strung fretted folk instrument.
inline constexpr int kPluckedProgramme = 25;

// MIDI note numbers: A4 (69) is 440 Hz, equal temperament.
double Frequency(int midiNote);
// The note number of a pitch class (semitones above A, 0..11) in a scientific
// octave, which begins at C: (5, 3) is D3, 50; (0, 4) is A4, 69.
int MidiNote(int pitchClass, int octave);

struct NoteEvent {
    int note = 69;         // MIDI note number 0..127
    double start = 0;      // seconds
    double duration = 0.5; // seconds; the sound has died away at its end
    bool operator==(const NoteEvent &) const = default;
};

// The chord strummed from the first note to the last (as given, lowest string
// first) and left to ring, then its notes one by one.
std::vector<NoteEvent> StrumThenNotes(const std::vector<int> &notes);
// The notes one by one as given, then back down without repeating the top.
std::vector<NoteEvent> UpAndDown(const std::vector<int> &notes);

// Mono 16-bit samples at kSampleRate, up to the last event's end, the loudest
// sample at 90% of full scale (silence stays silence). Each note is a
// Karplus-Strong string tuned by a fractional delay to within a few cents.
// std::invalid_argument for a note outside 0..127, a negative start or a
// duration not above 0.
std::vector<std::int16_t> Synthesize(const std::vector<NoteEvent> &events);

// A RIFF/WAVE file: PCM, 16-bit, mono, kSampleRate.
std::vector<std::uint8_t> WavBytes(const std::vector<std::int16_t> &samples);

// A Standard MIDI File, type 0, one track, 480 ticks a quarter at 120 beats a
// minute (960 ticks a second): the tempo, the plucked programme on channel 1,
// every note as a note-on and a note-off, each with its own status byte, and
// the end of the track. At one moment note-offs come before note-ons.
// std::invalid_argument as for Synthesize.
std::vector<std::uint8_t> MidiBytes(const std::vector<NoteEvent> &events);

} // namespace varnock::music
