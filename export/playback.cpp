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

constexpr int kFirstOctave = 3;
constexpr int kHighestOctave = 8;

std::vector<int> OpenMidi(const ChartSheet &sheet, const std::vector<int> &octaves) {
    std::vector<int> notes;
    for (std::size_t s = 0; s < sheet.openNotes.size() && s < octaves.size(); ++s)
        notes.push_back(MidiNote(sheet.openNotes[s], octaves[s]));
    return notes;
}

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

std::vector<int> DefaultOctaves(const std::vector<int> &openNotes) {
    std::vector<int> octaves;
    int previous = -1;
    for (const int open : openNotes) {
        int octave = kFirstOctave;
        if (previous >= 0)
            while (MidiNote(open, octave) < previous)
                ++octave;
        previous = MidiNote(open, octave);
        octaves.push_back(octave);
    }
    return octaves;
}

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

std::vector<NoteEvent> ChordEvents(const ChartSheet &sheet, const std::vector<int> &octaves) {
    const int chord = static_cast<int>(sheet.chordType);
    const cat::Offsets offsets = cat::ChordOffsets(chord);
    std::vector<ChordTone> tones;
    for (int i = 0; i < offsets.count; ++i)
        tones.push_back({cat::Mod12(sheet.root + offsets.semitones[static_cast<std::size_t>(i)]),
                         std::string(cat::kChordTypes[static_cast<std::size_t>(chord)]
                                         .degrees[static_cast<std::size_t>(i)])});
    const int mode = static_cast<int>(sheet.mode);
    const Board board = BoardFor(mode, sheet.openNotes);
    const std::vector<int> open = OpenMidi(sheet, octaves);
    const auto semitones = FretSemitones(mode);
    Limits limits;
    for (const auto &[reach, mutedOk] : {std::pair{3, false}, {3, true}, {5, true}}) {
        limits.reach = reach;
        limits.mutedOk = mutedOk;
        const FingeringResult found = FindFingerings(board, tones, limits);
        if (found.fingerings.empty())
            continue;
        std::vector<int> notes;
        const Fingering &first = found.fingerings.front();
        for (std::size_t s = 0; s < first.positions.size(); ++s)
            if (first.positions[s] != kMuted)
                notes.push_back(open[s] + semitones[static_cast<std::size_t>(first.positions[s])]);
        return StrumThenNotes(notes);
    }
    std::vector<int> notes;
    for (const ChordTone &tone : tones)
        notes.push_back(AtOrAbove(tone.pitch, notes.empty() ? open.at(0) : notes.back() + 1));
    return StrumThenNotes(notes);
}

std::vector<NoteEvent> ScaleEvents(const ChartSheet &sheet, const Scale &scale,
                                   const std::vector<int> &octaves) {
    const int root = AtOrAbove(sheet.root, OpenMidi(sheet, octaves).at(0));
    std::vector<int> notes;
    for (const int semitones : scale.semitones)
        notes.push_back(root + semitones);
    notes.push_back(root + 12);
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
