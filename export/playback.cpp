#include "export/playback.h"

#include "music/catalogue.h"
#include "music/errors.h"
#include "music/fingering.h"
#include "music/layouts.h"
#include "platform/basic.h"

namespace varnock::output {

using namespace music;

namespace cat = catalogue;

namespace {

constexpr int kHighestOctave = 8;

// The note of pitch class `pitch` at or above `floor`, within an octave.
int AtOrAbove(int pitch, int floor) {
    return floor + cat::Mod12(pitch - floor + 9); // MIDI 60 is a C, pitch 0 an A
}

void CheckRange(const std::vector<NoteEvent> &events) {
    for (const NoteEvent &event : events)
        if (event.note < 0 || event.note > 127)
            throw BadInput("--octaves puts note " + std::to_string(event.note) +
                           " beyond MIDI's 0..127; accepted: lower octaves");
}

std::string AsString(const std::vector<std::uint8_t> &bytes) {
    return std::string(bytes.begin(), bytes.end());
}

} // namespace

std::vector<int> ParseOctaves(const std::string &text, int strings) {
    const std::vector<std::string> entries = SplitList(text);
    const std::string accepted = "; accepted: one octave 0.." + std::to_string(kHighestOctave) +
                                 " per string, comma-separated, such as 3,3,4";
    if (static_cast<int>(entries.size()) != strings)
        throw BadInput("--octaves \"" + text + "\" names " + std::to_string(entries.size()) +
                       (entries.size() == 1 ? " octave" : " octaves") + " for " +
                       std::to_string(strings) + " strings" + accepted);
    std::vector<int> octaves;
    for (const std::string &entry : entries) {
        if (entry.size() != 1 || entry[0] < '0' || entry[0] > '0' + kHighestOctave)
            throw BadInput("--octaves entry \"" + entry + "\" is not an octave" + accepted);
        octaves.push_back(entry[0] - '0');
    }
    return octaves;
}

std::vector<NoteEvent> ChordEvents(const Instrument &instrument,
                                   const std::vector<Fingering> &fingerings,
                                   const std::vector<ChordTone> &tones) {
    std::vector<int> notes;
    if (!fingerings.empty()) {
        const Fingering &first = fingerings.front();
        for (std::size_t s = 0; s < first.positions.size(); ++s)
            if (first.positions[s] != kMuted)
                notes.push_back(instrument.MidiAt(static_cast<int>(s), first.positions[s]));
        return StrumThenNotes(notes);
    }
    // No fingering: the tones stacked from what the first string sounds at the capo.
    for (const ChordTone &tone : tones)
        notes.push_back(AtOrAbove(tone.pitch, notes.empty() ? instrument.MidiAt(0, instrument.capo)
                                                            : notes.back() + 1));
    return StrumThenNotes(notes);
}

std::vector<NoteEvent> ScaleEvents(const Instrument &instrument, int root, const Scale &scale) {
    const int from = AtOrAbove(root, instrument.MidiAt(0, instrument.capo));
    std::vector<int> notes;
    for (const int semitones : scale.semitones)
        notes.push_back(from + semitones);
    notes.push_back(from + 12);
    return UpAndDown(notes);
}

std::string WavFile(const std::vector<NoteEvent> &events) {
    CheckRange(events);
    return AsString(WavBytes(Synthesize(events)));
}

std::string MidiFile(const std::vector<NoteEvent> &events) {
    CheckRange(events);
    return AsString(MidiBytes(events));
}

} // namespace varnock::output
