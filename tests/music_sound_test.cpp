// Sound: the WAV and MIDI files are read back, and the pitch of each note is
// measured from the samples.

#include "music/sound.h"
#include "sound_support.h"

#include <gtest/gtest.h>

#include <cmath>
#include <string>

using namespace varnock::music;
using namespace testsupport;

TEST(Sound, NoteNumbersAndFrequencies) {
    struct Row {
        int pitchClass, octave, note;
        double hertz;
    };
    const std::vector<Row> rows = {
        {5, 3, 50, 146.832}, {0, 3, 57, 220.0},   {5, 4, 62, 293.665},  {0, 4, 69, 440.0},
        {3, 4, 60, 261.626}, {2, 3, 59, 246.942}, {11, 2, 44, 103.826},
    };
    for (const Row &r : rows) {
        EXPECT_EQ(MidiNote(r.pitchClass, r.octave), r.note) << r.note;
        EXPECT_NEAR(Frequency(r.note), r.hertz, 0.001) << r.note;
    }
}

TEST(Sound, PerformancesInOrder) {
    const std::vector<int> chord = {50, 57, 62};
    const auto strum = StrumThenNotes(chord);
    ASSERT_EQ(strum.size(), 6u);
    for (std::size_t i = 0; i < strum.size(); ++i) {
        EXPECT_EQ(strum[i].note, chord[i % 3]) << i;
        if (i > 0) {
            EXPECT_GT(strum[i].start, strum[i - 1].start) << i;
        }
    }
    // The strum's notes ring together; the single notes one after another.
    EXPECT_GT(strum[0].start + strum[0].duration, strum[2].start);
    EXPECT_LE(strum[2].start + strum[2].duration, strum[3].start);
    for (std::size_t i = 3; i + 1 < strum.size(); ++i)
        EXPECT_LE(strum[i].start + strum[i].duration, strum[i + 1].start + 1e-9) << i;

    std::vector<int> notes;
    for (const NoteEvent &e : UpAndDown({62, 64, 66, 67}))
        notes.push_back(e.note);
    EXPECT_EQ(notes, (std::vector<int>{62, 64, 66, 67, 66, 64, 62}));
}

TEST(Sound, WavHeaderAndLength) {
    const std::vector<NoteEvent> events = {{50, 0, 0.5}, {57, 0.25, 1.0}};
    const auto samples = Synthesize(events);
    EXPECT_EQ(samples.size(), 55125u); // 1.25 s
    int peak = 0;
    for (std::int16_t s : samples)
        peak = std::max(peak, std::abs(static_cast<int>(s)));
    EXPECT_EQ(peak, 29490); // 90% of full scale

    const auto wav = WavBytes(samples);
    ASSERT_EQ(wav.size(), 44 + 2 * samples.size());
    EXPECT_EQ(Text(wav, 0), "RIFF");
    EXPECT_EQ(Le(wav, 4, 4), wav.size() - 8);
    EXPECT_EQ(Text(wav, 8), "WAVE");
    EXPECT_EQ(Text(wav, 12), "fmt ");
    const std::vector<std::pair<std::size_t, std::uint32_t>> fields = {
        {16, 16}, {20, 1}, {22, 1}, {24, 44100}, {28, 88200}, {32, 2}, {34, 16}};
    for (const auto &[at, want] : fields)
        EXPECT_EQ(Le(wav, at, at < 20 || at == 24 || at == 28 ? 4 : 2), want) << "byte " << at;
    EXPECT_EQ(Text(wav, 36), "data");
    EXPECT_EQ(Le(wav, 40, 4), 2 * samples.size());
    EXPECT_EQ(static_cast<std::int16_t>(Le(wav, 44 + 2 * 1000, 2)), samples[1000]);
    EXPECT_THROW(Synthesize({{128, 0, 1}}), std::invalid_argument);
    EXPECT_THROW(Synthesize({{60, 0, 0}}), std::invalid_argument);
}

TEST(Sound, EachNoteInTuneWithin10Cents) {
    // D3, A3, D4, F#4, A5, D6: the single notes after the strum.
    const std::vector<int> notes = {50, 57, 62, 66, 81, 86};
    const auto events = StrumThenNotes(notes);
    const auto samples = Synthesize(events);
    for (std::size_t i = notes.size(); i < events.size(); ++i) {
        const auto from = static_cast<std::size_t>((events[i].start + 0.05) * kSampleRate);
        const double hertz = MeasuredFrequency(samples, from, 4096);
        const double cents = 1200 * std::log2(hertz / Frequency(events[i].note));
        EXPECT_LT(std::abs(cents), 10.0) << "note " << events[i].note << ": " << hertz << " Hz";
    }
}

TEST(Sound, MidiReadBack) {
    const std::vector<NoteEvent> events = {{50, 0, 0.5}, {62, 0.25, 1.0}, {57, 0.5, 0.5}};
    const MidiFile midi(MidiBytes(events));
    EXPECT_EQ(midi.format, 0);
    EXPECT_EQ(midi.tracks, 1);
    EXPECT_EQ(midi.division, 480);
    EXPECT_EQ(midi.tempo, 500000u);
    EXPECT_EQ(midi.programme, kPluckedProgramme);
    EXPECT_TRUE(midi.ended);
    // 960 ticks a second; at 480 the note-off comes first.
    const std::vector<MidiEvent> want = {{0, 0x90, 50},   {240, 0x90, 62}, {480, 0x80, 50},
                                         {480, 0x90, 57}, {960, 0x80, 57}, {1200, 0x80, 62}};
    EXPECT_EQ(midi.notes, want);
    EXPECT_THROW(MidiBytes({{-1, 0, 1}}), std::invalid_argument);
}
