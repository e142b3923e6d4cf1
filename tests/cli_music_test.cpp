// varnock-chart's scales, modes, sounds and name systems, read back from
// what the command prints and writes.

#include "chart/cellpaint.h"
#include "music/sound.h"
#include "sound_support.h"
#include "support.h"

#include <QImage>
#include <QTemporaryDir>
#include <gtest/gtest.h>

#include <cmath>

using namespace varnock;
using namespace testsupport;

namespace {

// The text after "Notes: " on the last line that starts so.
std::string NotesLine(const std::string &out) {
    const auto at = out.rfind("Notes: ");
    return at == std::string::npos ? "" : out.substr(at + 7, out.find('\n', at) - at - 7);
}

class Files : public ::testing::Test {
  protected:
    QTemporaryDir dir;
    QString Path(const char *name) const { return dir.filePath(QString::fromLatin1(name)); }
    std::vector<std::uint8_t> Bytes(const char *name) const {
        const std::string bytes = ReadBytes(Path(name).toStdString());
        return {bytes.begin(), bytes.end()};
    }
};

} // namespace

// The notes line of a chord or a scale, in the name system asked for.
TEST(MusicCommand, NotesOfChordsAndScalesInEveryNameSystem) {
    const std::vector<std::pair<QStringList, std::string>> rows = {
        {{"--names", "german", "--root", "Fis", "--chord", "m"}, "Fis A Cis"},
        {{"--names", "german", "--root", "B", "--spelling", "chord"}, "B D F"},
        {{"--names", "german", "--root", "h", "--spelling", "chord"}, "H Dis Fis"},
        {{"--names", "german", "--root", "As", "--chord", "m", "--spelling", "chord"}, "As Ces Es"},
        {{"--names", "Latin", "--root", "Sib", "--chord", "7", "--spelling", "chord"},
         "Sib Re Fa Lab"},
        {{"--names", "latin", "--root", "re"}, "Re Fa# La"},
        {{"--names", "latin", "--tuning", "Re,La,Re,Sol", "--identify-frets", "0,0,0,0"},
         "Re La Sol"},
        {{"--names", "english", "--root", "Bb", "--spelling", "chord"}, "Bb D F"},
        {{"--scale", "dorian", "--root", "D"}, "D E F G A B C"},
        {{"--scale", "Minor Pentatonic", "--root", "a"}, "A C D E G"},
        {{"--scale", "lydian", "--root", "Cx"}, "C## D## E## F### G## A## B##"},
        {{"--scale", "harmonic minor", "--root", "B\u266D"}, "Bb C Db Eb F Gb A"},
        {{"--names", "german", "--scale", "major", "--root", "Fis"}, "Fis Gis Ais H Cis Dis Eis"},
    };
    for (const auto &[args, notes] : rows) {
        const Outcome run = RunChart(args);
        EXPECT_EQ(run.status, 0) << run.err;
        EXPECT_EQ(NotesLine(run.out), notes) << args.join(' ').toStdString();
    }
}

// The answers and the sentences name notes in the system too, and the
// chart's cells are the notes table's names.
TEST(MusicCommand, NameSystemsReachEveryAnswer) {
    EXPECT_EQ(RunChart({"--names", "german", "--identify", "D,Fis,A"}).out.substr(0, 15),
              "D Maj: D Fis A\n");
    const Outcome tsv = RunChart({"--names", "german", "--root", "H", "--chord", "m", "--tsv"});
    EXPECT_NE(tsv.out.find("\tH\t"), std::string::npos) << tsv.out;
    EXPECT_EQ(tsv.out.find("B"), std::string::npos) << tsv.out;
    const std::string said = RunChart({"--names", "german", "--tuning", "Es,B,Es", "--root", "Es",
                                       "--spelling", "flats", "--describe"})
                                 .out;
    EXPECT_EQ(said.substr(0, said.find('\n')), "Diatonic fretboard, 3 strings tuned Es B Es.");
    EXPECT_EQ(RunChart({"--names", "german", "--root", "D", "--chord", "13", "--voicings",
                        "--count", "1"})
                  .out,
              "0 8 6 | D H C | R 13 b7 | without 5\n");
    EXPECT_NE(RunChart({"--help"}).out.find("C Cis D Es E F Fis G As A B H"), std::string::npos);
}

TEST(MusicCommand, ScalesOnTheBoardAndInSentences) {
    // D dorian on the diatonic D string: no F on its frets, C at the sixth.
    const Outcome tsv = RunChart({"--scale", "dorian", "--root", "D", "--tsv"});
    const auto row = tsv.out.find("\nD\t");
    ASSERT_NE(row, std::string::npos) << tsv.out;
    EXPECT_EQ(tsv.out.substr(row + 1, 15), "D\tE\t\tG\tA\tB\tC\tD\t");
    const std::string said = RunChart({"--scale", "lydian", "--root", "D", "--describe"}).out;
    EXPECT_NE(said.find("Scale: D lydian, notes D, E, F#, G#, A, B and C# (root D)."),
              std::string::npos)
        << said;
    // The degrees are the scale's, and the cells take them as labels.
    const std::string labelled =
        RunChart({"--scale", "minor pentatonic", "--root", "A", "--labels", "both"}).out;
    EXPECT_NE(labelled.find("\nD D 4 E 5   G b7 A R   C b3"), std::string::npos) << labelled;
    EXPECT_NE(labelled.find("\nNotes: A C D E G\nDegrees: R b3 4 5 b7\n"), std::string::npos)
        << labelled;
}

TEST_F(Files, EachScaleNoteInItsOwnColourTurnedOrNot) {
    // D major on the chromatic board has all seven notes; each of the seven
    // colours shows in the chart, in the plain and the turned picture, and
    // with degrees for names.
    ASSERT_EQ(RunChart({"--root", "D", "--png", Path("chord.png")}).status, 0);
    const QStringList scale = {"--frets", "Chromatic", "--scale", "major",
                               "--root",  "D",         "--png",   Path("scale.png")};
    for (const QStringList &turn : {QStringList(), QStringList{"--left-handed", "--flip"},
                                    QStringList{"--labels", "degrees"}}) {
        ASSERT_EQ(RunChart(scale + turn).status, 0);
        const QImage image(Path("scale.png"));
        std::set<unsigned> seen;
        for (int y = 0; y < image.height(); ++y)
            for (int x = 0; x < image.width(); ++x)
                seen.insert(image.pixel(x, y) & 0xFFFFFFu);
        for (const Color color : colors::kNote)
            EXPECT_TRUE(seen.count(color)) << std::hex << color;
        for (const Color color : colors::kScaleNote)
            EXPECT_TRUE(seen.count(color)) << std::hex << color;
        // Its notes table's second row holds the notes past the fourth, where a
        // chord's holds degrees: the pictures are the same height.
        EXPECT_EQ(image.height(), QImage(Path("chord.png")).height());
    }
}

// The modes each string of D A D plays from its open note: the frets each
// layout adds are what let more modes in (every layout in the engine's test).
TEST(MusicCommand, ModesOfEachLayout) {
    const std::vector<std::pair<const char *, std::string>> rows = {
        {"Diatonic", "mixolydian"},
        {"Chromatic", "ionian, dorian, phrygian, lydian, mixolydian, aeolian, locrian"},
    };
    for (const auto &[layout, modes] : rows) {
        const Outcome run = RunChart({"--modes", "--frets", layout});
        ASSERT_EQ(run.status, 0) << run.err;
        EXPECT_NE(run.out.find("String 1, tuned D, from D: " + modes + ".\n"), std::string::npos)
            << run.out;
        EXPECT_NE(run.out.find("String 2, tuned A, from A: " + modes + ".\n"), std::string::npos)
            << run.out;
    }
    // From a chosen root, each degree on the next fret up; 6+ named as such.
    const Outcome g = RunChart({"--modes", "--frets", "Diatonic with 6+", "--root", "G"});
    EXPECT_NE(g.out.find("  G lydian: G A B C# D E F# G at positions 3 4 5 7 8 9 10 11 "
                         "(frets 3 4 5 6+ 7 8 9 10)\n"),
              std::string::npos)
        << g.out;
}

TEST_F(Files, SoundOfAChordAndAScaleReadBack) {
    // D A D sounds D3 A3 D4; the first fingering of D Maj is 0,0,2.
    const std::vector<std::pair<QStringList, std::vector<int>>> rows = {
        {{"--root", "D"}, {50, 57, 66, 50, 57, 66}},
        {{"--root", "D", "--octaves", "2,3,4"}, {38, 57, 66, 38, 57, 66}},
        {{"--tuning", "D,A,D,G", "--root", "G", "--chord", "5"}, {50, 62, 62, 67}},
        {{"--scale", "major", "--root", "D"},
         {50, 52, 54, 55, 57, 59, 61, 62, 61, 59, 57, 55, 54, 52, 50}},
        {{"--tuning", "G,D,G", "--scale", "minor pentatonic", "--root", "G"},
         {55, 58, 60, 62, 65, 67, 65, 62, 60, 58, 55}},
    };
    for (const auto &[args, numbers] : rows) {
        const Outcome run = RunChart(QStringList(args) << "--midi" << Path("s.mid"));
        ASSERT_EQ(run.status, 0) << run.err;
        std::vector<int> got;
        for (const auto &note : MidiFile(Bytes("s.mid")).Struck())
            got.push_back(note.note);
        // A strum is every note at once, then each again: compare the heads.
        EXPECT_EQ(std::vector<int>(got.begin(), got.begin() + std::min(got.size(), numbers.size())),
                  numbers)
            << args.join(' ').toStdString();
    }
}

TEST_F(Files, WavOfDMajorInTuneWithin10Cents) {
    const Outcome run = RunChart({"--root", "D", "--wav", Path("d.wav"), "--midi", Path("d.mid")});
    ASSERT_EQ(run.status, 0) << run.err;
    EXPECT_EQ(run.out, "");
    // The header is the sound engine's, read back in its own test.
    const std::vector<std::uint8_t> wav = Bytes("d.wav");
    ASSERT_GT(wav.size(), 44u);
    EXPECT_EQ(Le(wav, 40, 4), wav.size() - 44);
    std::vector<std::int16_t> samples;
    for (std::size_t i = 44; i + 1 < wav.size(); i += 2)
        samples.push_back(static_cast<std::int16_t>(Le(wav, i, 2)));

    // 960 ticks a second.
    const MidiFile midi(Bytes("d.mid"));
    const auto notes = midi.Struck();
    ASSERT_EQ(notes.size(), 6u);
    // The sound lasts as long as the notes, and a few seconds.
    const double seconds = static_cast<double>(samples.size()) / music::kSampleRate;
    EXPECT_NEAR(seconds, midi.notes.back().tick / 960.0, 0.05);
    EXPECT_GT(seconds, 2.0);
    EXPECT_LT(seconds, 8.0);
    // Each note alone, measured a little after its pluck.
    for (std::size_t i = 3; i < notes.size(); ++i) {
        const auto from =
            static_cast<std::size_t>((notes[i].tick / 960.0 + 0.05) * music::kSampleRate);
        const double hz = MeasuredFrequency(samples, from, 4096);
        const double cents = 1200 * std::log2(hz / music::Frequency(notes[i].note));
        EXPECT_LT(std::abs(cents), 10.0) << notes[i].note << ": " << hz << " Hz";
        std::printf("note %d: %.2f Hz, %+.2f cents\n", notes[i].note, hz, cents);
    }
}
