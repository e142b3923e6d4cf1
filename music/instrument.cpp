#include "music/instrument.h"

#include "music/catalogue.h"
#include "music/sound.h"

namespace varnock::music {

namespace {
constexpr int kFirstOctave = 3;
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

int Instrument::PitchAt(int string, int position) const {
    return catalogue::Mod12(openNotes.at(static_cast<std::size_t>(string)) +
                            FretSemitones(Frets(), position));
}

int Instrument::MidiAt(int string, int position) const {
    const std::vector<int> tuned = octaves.empty() ? DefaultOctaves(openNotes) : octaves;
    const auto s = static_cast<std::size_t>(string);
    return MidiNote(openNotes.at(s), tuned.at(s)) + FretSemitones(Frets(), position);
}

Board Instrument::MakeBoard() const {
    Board board;
    for (int s = 0; s < Strings(); ++s) {
        StringFrets string;
        for (int p = 0; p < kPositions; ++p)
            string[static_cast<std::size_t>(p)] = PitchAt(s, p);
        board.push_back(string);
    }
    return board;
}

} // namespace varnock::music
