// varnock-chart's scales, modes, sounds and name systems, read back from
// what the command prints and writes.

#include "chart/cellpaint.h"
#include "cli/sound.h"
#include "sound_support.h"
#include "support.h"

#include <QImage>
#include <QTemporaryDir>
#include <gtest/gtest.h>

#include <cmath>
#include <filesystem>

using namespace varnock;
using testsupport::Outcome;
using testsupport::RunChart;

namespace {

QStringList Args(std::initializer_list<const char *> args) {
    QStringList list;
    for (const char *arg : args)
        list << QString::fromUtf8(arg);
    return list;
}

// The text after "Notes: " on the last line that starts so.
std::string NotesLine(const std::string &out) {
    const auto at = out.rfind("Notes: ");
    return at == std::string::npos ? "" : out.substr(at + 7, out.find('\n', at) - at - 7);
}

std::uint32_t Be(const std::string &b, std::size_t at, int bytes) {
    std::uint32_t v = 0;
    for (int i = 0; i < bytes; ++i)
        v = v << 8 | static_cast<unsigned char>(b.at(at + static_cast<std::size_t>(i)));
    return v;
}

std::uint32_t Le(const std::string &b, std::size_t at, int bytes) {
    std::uint32_t v = 0;
    for (int i = bytes - 1; i >= 0; --i)
        v = v << 8 | static_cast<unsigned char>(b.at(at + static_cast<std::size_t>(i)));
    return v;
}

struct Note {
    int number;
    double start, end; // seconds
};

// The notes of a type 0 file at 960 ticks a second, as the command writes it:
// every event with its own status byte.
std::vector<Note> ReadMidi(const std::string &b) {
    EXPECT_EQ(b.substr(0, 4), "MThd");
    EXPECT_EQ(Be(b, 8, 2), 0u);  // type 0
    EXPECT_EQ(Be(b, 10, 2), 1u); // one track
    EXPECT_EQ(b.substr(14, 4), "MTrk");
    const std::size_t end = 22 + Be(b, 18, 4);
    EXPECT_EQ(end, b.size());
    std::vector<Note> notes;
    std::uint32_t tick = 0;
    for (std::size_t i = 22; i < end;) {
        std::uint32_t delta = 0;
        for (unsigned char c = 0x80; c & 0x80; ++i) {
            c = static_cast<unsigned char>(b[i]);
            delta = delta << 7 | (c & 0x7F);
        }
        tick += delta;
        const int status = static_cast<unsigned char>(b[i]);
        if (status == 0xFF) {
            i += 3 + static_cast<unsigned char>(b[i + 2]);
        } else if ((status & 0xF0) == 0xC0) {
            EXPECT_EQ(b[i + 1], cli::kPluckedProgramme);
            i += 2;
        } else {
            const int number = static_cast<unsigned char>(b[i + 1]);
            if ((status & 0xF0) == 0x90)
                notes.push_back({number, tick / 960.0, -1});
            else
                for (Note &n : notes)
                    if (n.number == number && n.end < 0)
                        n.end = tick / 960.0;
            i += 3;
        }
    }
    return notes;
}

std::vector<int> Numbers(const std::vector<Note> &notes) {
    std::vector<int> out;
    for (const Note &n : notes)
        out.push_back(n.number);
    return out;
}

class Files : public ::testing::Test {
  protected:
    QTemporaryDir dir;
    QString Path(const char *name) const { return dir.filePath(QString::fromLatin1(name)); }
};

} // namespace

TEST(MusicCommand, NameSystemsReadAndWriteEveryNote) {
    const std::vector<std::pair<QStringList, std::string>> rows = {
        {Args({"--names", "german", "--root", "Fis", "--chord", "m"}), "Fis A Cis"},
        {Args({"--names", "german", "--root", "B", "--spelling", "chord"}), "B D F"},
        {Args({"--names", "german", "--root", "h", "--spelling", "chord"}), "H Dis Fis"},
        {Args({"--names", "german", "--root", "As", "--chord", "m", "--spelling", "chord"}),
         "As Ces Es"},
        {Args({"--names", "Latin", "--root", "Sib", "--chord", "7", "--spelling", "chord"}),
         "Sib Re Fa Lab"},
        {Args({"--names", "latin", "--root", "re"}), "Re Fa# La"},
        {Args({"--names", "latin", "--tuning", "Re,La,Re,Sol", "--identify-frets", "0,0,0,0"}),
         "Re La Sol"},
        {Args({"--names", "english", "--root", "Bb", "--spelling", "chord"}), "Bb D F"},
    };
    for (const auto &[args, notes] : rows) {
        const Outcome run = RunChart(args);
        EXPECT_EQ(run.status, 0) << run.err;
        EXPECT_EQ(NotesLine(run.out), notes) << args.join(' ').toStdString();
    }
    // The answers and the sentences name notes in the system too, and the
    // chart's cells are the notes table's names.
    EXPECT_EQ(RunChart(Args({"--names", "german", "--identify", "D,Fis,A"})).out.substr(0, 15),
              "D Maj: D Fis A\n");
    const Outcome tsv =
        RunChart(Args({"--names", "german", "--root", "H", "--chord", "m", "--tsv"}));
    EXPECT_NE(tsv.out.find("\tH\t"), std::string::npos) << tsv.out;
    EXPECT_EQ(tsv.out.find("B"), std::string::npos) << tsv.out;
    const std::string said = RunChart(Args({"--names", "german", "--tuning", "Es,B,Es", "--root",
                                            "Es", "--spelling", "flats", "--describe"}))
                                 .out;
    EXPECT_EQ(said.substr(0, said.find('\n')), "Diatonic fretboard, 3 strings tuned Es B Es.");
    EXPECT_EQ(RunChart(Args({"--names", "german", "--root", "D", "--chord", "13", "--voicings",
                             "--count", "1"}))
                  .out,
              "0 8 6 | D H C | R 13 b7 | without 5\n");
    EXPECT_NE(RunChart(Args({"--help"})).out.find("C Cis D Es E F Fis G As A B H"),
              std::string::npos);
}

TEST(MusicCommand, ScalesSpelledByDegreeOnTheBoard) {
    const std::vector<std::pair<QStringList, std::string>> rows = {
        {Args({"--scale", "dorian", "--root", "D"}), "D E F G A B C"},
        {Args({"--scale", "Major", "--root", "F#"}), "F# G# A# B C# D# E#"},
        {Args({"--scale", "ionian", "--root", "Gb"}), "Gb Ab Bb Cb Db Eb F"},
        {Args({"--scale", "Minor Pentatonic", "--root", "a"}), "A C D E G"},
        {Args({"--scale", "min-pent", "--root", "E"}), "E G A B D"},
        {Args({"--scale", "blues", "--root", "A"}), "A C D Eb E G"},
        {Args({"--scale", "lydian", "--root", "Cx"}), "C## D## E## F### G## A## B##"},
        {Args({"--scale", "harmonic minor", "--root", "B\u266D"}), "Bb C Db Eb F Gb A"},
        {Args({"--names", "german", "--scale", "major", "--root", "Fis"}),
         "Fis Gis Ais H Cis Dis Eis"},
    };
    for (const auto &[args, notes] : rows) {
        const Outcome run = RunChart(args);
        EXPECT_EQ(run.status, 0) << run.err;
        EXPECT_EQ(NotesLine(run.out), notes) << args.join(' ').toStdString();
    }
    // D dorian on the diatonic D string: no F on its frets, C at the sixth.
    const Outcome tsv = RunChart(Args({"--scale", "dorian", "--root", "D", "--tsv"}));
    const auto row = tsv.out.find("\nD\t");
    ASSERT_NE(row, std::string::npos) << tsv.out;
    EXPECT_EQ(tsv.out.substr(row + 1, 15), "D\tE\t\tG\tA\tB\tC\tD\t");
    const std::string said = RunChart(Args({"--scale", "lydian", "--root", "D", "--describe"})).out;
    EXPECT_NE(said.find("Scale: D lydian, notes D, E, F#, G#, A, B and C# (root D)."),
              std::string::npos)
        << said;
}

TEST_F(Files, EachScaleNoteInItsOwnColourTurnedOrNot) {
    // D major on the chromatic board has all seven notes; each of the seven
    // colours shows in the chart, in the plain and the turned picture.
    for (const char *turn : {"--root", "--left-handed"}) {
        QStringList args =
            Args({"--frets", "Chromatic", "--scale", "major", "--root", "D", "--png"});
        args << Path("scale.png");
        if (std::string(turn) != "--root")
            args << QString::fromLatin1(turn) << QStringLiteral("--flip");
        ASSERT_EQ(RunChart(args).status, 0);
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
        ASSERT_EQ(RunChart(Args({"--root", "D", "--png"}) << Path("chord.png")).status, 0);
        EXPECT_EQ(image.height(), QImage(Path("chord.png")).height());
    }
}

// The modes each string of D A D plays from its open note: the frets each
// layout adds are what let more modes in.
TEST(MusicCommand, ModesOfEachLayout) {
    const std::vector<std::pair<const char *, std::string>> rows = {
        {"Diatonic", "mixolydian"},
        {"Diatonic with 6+", "ionian, mixolydian"},
        {"Diatonic with 1+ and 6+", "ionian, dorian, mixolydian"},
        {"Chromatic", "ionian, dorian, phrygian, lydian, mixolydian, aeolian, locrian"},
    };
    for (const auto &[layout, modes] : rows) {
        const Outcome run = RunChart(Args({"--modes", "--frets", layout}));
        ASSERT_EQ(run.status, 0) << run.err;
        EXPECT_NE(run.out.find("String 1, tuned D, from D: " + modes + ".\n"), std::string::npos)
            << run.out;
        EXPECT_NE(run.out.find("String 2, tuned A, from A: " + modes + ".\n"), std::string::npos)
            << run.out;
    }
    // From a chosen root, each degree on the next fret up; 6+ named as such.
    const Outcome g = RunChart(Args({"--modes", "--frets", "Diatonic with 6+", "--root", "G"}));
    EXPECT_NE(g.out.find("  G lydian: G A B C# D E F# G at positions 3 4 5 7 8 9 10 11 "
                         "(frets 3 4 5 6+ 7 8 9 10)\n"),
              std::string::npos)
        << g.out;
}

TEST_F(Files, SoundOfAChordAndAScaleReadBack) {
    // D A D sounds D3 A3 D4; the first fingering of D Maj is 0,0,2.
    const std::vector<std::pair<QStringList, std::vector<int>>> rows = {
        {Args({"--root", "D"}), {50, 57, 66, 50, 57, 66}},
        {Args({"--root", "D", "--octaves", "2,3,4"}), {38, 57, 66, 38, 57, 66}},
        {Args({"--tuning", "D,A,D,G", "--root", "G", "--chord", "5"}), {50, 62, 62, 67}},
        {Args({"--scale", "major", "--root", "D"}),
         {50, 52, 54, 55, 57, 59, 61, 62, 61, 59, 57, 55, 54, 52, 50}},
        {Args({"--tuning", "G,D,G", "--scale", "minor pentatonic", "--root", "G"}),
         {55, 58, 60, 62, 65, 67, 65, 62, 60, 58, 55}},
    };
    for (const auto &[args, numbers] : rows) {
        const Outcome run = RunChart(QStringList(args) << "--midi" << Path("s.mid"));
        ASSERT_EQ(run.status, 0) << run.err;
        const std::vector<Note> notes =
            ReadMidi(testsupport::ReadBytes(Path("s.mid").toStdString()));
        const std::vector<int> got = Numbers(notes);
        // A strum is every note at once, then each again: compare the heads.
        EXPECT_EQ(std::vector<int>(got.begin(), got.begin() + std::min(got.size(), numbers.size())),
                  numbers)
            << args.join(' ').toStdString();
    }
}

TEST_F(Files, WavOfDMajorInTuneWithin10Cents) {
    const Outcome run =
        RunChart(Args({"--root", "D", "--wav"}) << Path("d.wav") << "--midi" << Path("d.mid"));
    ASSERT_EQ(run.status, 0) << run.err;
    EXPECT_EQ(run.out, "");
    const std::string wav = testsupport::ReadBytes(Path("d.wav").toStdString());
    ASSERT_GT(wav.size(), 44u);
    EXPECT_EQ(wav.substr(0, 4), "RIFF");
    EXPECT_EQ(wav.substr(8, 8), "WAVEfmt ");
    EXPECT_EQ(Le(wav, 20, 2), 1u);     // PCM
    EXPECT_EQ(Le(wav, 22, 2), 1u);     // mono
    EXPECT_EQ(Le(wav, 24, 4), 44100u); // samples a second
    EXPECT_EQ(Le(wav, 34, 2), 16u);    // bits
    EXPECT_EQ(wav.substr(36, 4), "data");
    EXPECT_EQ(Le(wav, 40, 4), wav.size() - 44);
    std::vector<std::int16_t> samples;
    for (std::size_t i = 44; i + 1 < wav.size(); i += 2)
        samples.push_back(static_cast<std::int16_t>(Le(wav, i, 2)));

    const std::vector<Note> notes = ReadMidi(testsupport::ReadBytes(Path("d.mid").toStdString()));
    ASSERT_EQ(notes.size(), 6u);
    // The sound lasts as long as the notes, and a few seconds.
    const double seconds = static_cast<double>(samples.size()) / cli::kSampleRate;
    EXPECT_NEAR(seconds, notes.back().end, 0.05);
    EXPECT_GT(seconds, 2.0);
    EXPECT_LT(seconds, 8.0);
    // Each note alone, measured a little after its pluck.
    for (std::size_t i = 3; i < notes.size(); ++i) {
        const auto from = static_cast<std::size_t>((notes[i].start + 0.05) * cli::kSampleRate);
        const double hz = testsupport::MeasuredFrequency(samples, from, 4096);
        const double cents = 1200 * std::log2(hz / cli::Frequency(notes[i].number));
        EXPECT_LT(std::abs(cents), 10.0) << notes[i].number << ": " << hz << " Hz";
        std::printf("note %d: %.2f Hz, %+.2f cents\n", notes[i].number, hz, cents);
    }
}

TEST_F(Files, BadMusicInputWritesNothing) {
    const struct {
        QStringList args;
        int status;
        std::string message;
    } rows[] = {
        {Args({"--scale", "dorain"}), 2,
         "unknown scale \"dorain\"; did you mean \"dorian\"? accepted: major, dorian"},
        {Args({"--names", "greek"}), 2,
         "unknown note names \"greek\"; accepted: english, german, latin"},
        {Args({"--names", "german", "--root", "Bes"}), 2,
         "--root \"Bes\" is no german note name; accepted: C D E F G A H"},
        {Args({"--names", "latin", "--tuning", "D,A,D"}), 2,
         "--tuning \"D\" is no latin note name"},
        {Args({"--octaves", "3,3"}), 2,
         "--octaves \"3,3\" names 2 octaves for 3 strings; accepted: one octave 0..8 per string"},
        {Args({"--octaves", "3,9,4"}), 2, "--octaves entry \"9\" is not an octave"},
        {Args({"--octaves", "3,x,4"}), 2, "--octaves entry \"x\" is not an octave"},
        {Args({"--octaves", "8,8,8", "--scale", "major", "--root", "C"}), 2,
         "beyond MIDI's 0..127"},
        {Args({"--scale", "dorian", "--chord", "m"}), 2, "does not combine with --chord"},
        {Args({"--modes", "--scale", "dorian"}), 2, "does not combine with --modes"},
        {Args({"--modes", "--identify", "D,A"}), 2, "exclude each other"},
    };
    for (const auto &row : rows) {
        std::filesystem::remove(Path("x.wav").toStdString());
        const Outcome run = RunChart(QStringList(row.args) << "--wav" << Path("x.wav"));
        EXPECT_EQ(run.status, row.status) << row.args.join(' ').toStdString();
        EXPECT_NE(run.err.find(row.message), std::string::npos) << run.err;
        EXPECT_EQ(std::count(run.err.begin(), run.err.end(), '\n'), 1) << run.err;
        EXPECT_FALSE(std::filesystem::exists(Path("x.wav").toStdString()));
    }
    const Outcome unwritable = RunChart(Args({"--root", "D", "--midi"}) << Path("no/such/x.mid"));
    EXPECT_EQ(unwritable.status, 1) << unwritable.err;
}
