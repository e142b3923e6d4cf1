// Every output of varnock-chart calls a position by the same fret name and a
// note by the same name: the first fingering --voicings prints is found at
// those frets in the TSV chart and in --describe's sentences, is captioned so
// under its diagram with its notes named on the dots, names those notes when typed back into
// --identify-frets, and is what --midi plays.

#include "music/catalogue.h"
#include "music/layouts.h"
#include "sound_support.h"
#include "support.h"

#include <QTemporaryDir>
#include <gtest/gtest.h>

using namespace varnock;
using namespace testsupport;

namespace {

struct Row {
    int layout;
    const char *tuning, *root, *chord, *capo; // capo "" for none
    bool leftHanded;
    const char *names;
};

// Every layout on three and four strings; capo, hand and name system vary.
// clang-format off
const Row kRows[] = {
    {0, "D,A,D",   "D",   "Maj", "",   false, "english"},
    {0, "D,A,D,G", "G",   "7",   "2",  true,  "german"},
    {1, "D,A,D",   "A",   "m",   "2",  false, "latin"},
    {1, "D,G,D,G", "E",   "m7",  "",   true,  "english"},
    {2, "D,A,D",   "C",   "Maj", "1+", true,  "english"},
    {2, "C,G,C,G", "F",   "6",   "",   false, "german"},
    {3, "D,A,D",   "Bb",  "7",   "3",  false, "english"},
    {3, "D,A,D,G", "F#",  "m",   "",   true,  "latin"},
    {4, "D,A,D",   "A",   "5",   "",   false, "english"},
    {4, "D,A,D,G", "D",   "5",   "3",  true,  "german"},
    {5, "D,A,D",   "E",   "m",   "",   true,  "english"},
    {5, "D,A,E,A", "E",   "Sus4","2",  false, "latin"},
};
// clang-format on

std::vector<std::string> Fields(const std::string &text, const std::string &separator) {
    std::vector<std::string> out;
    for (const std::string &field : Split(text, separator))
        if (!field.empty())
            out.push_back(field);
    return out;
}

void PrintTo(const Row &r, std::ostream *out) {
    *out << r.layout << " " << r.tuning << " " << r.root << " " << r.chord;
}

class Consistency : public ::testing::TestWithParam<Row> {};

TEST_P(Consistency, EveryOutputNamesTheFirstFingeringAlike) {
    const Row &r = GetParam();
    const auto system = *catalogue::FindNameSystem(r.names);
    // The instrument, with or without the chord, typed in a name system.
    const auto typed = [&](catalogue::NameSystem names, bool chord) {
        const auto in = [&](const std::string &note) {
            return catalogue::Translate(note, catalogue::NameSystem::English, names);
        };
        std::vector<std::string> tuning;
        for (const std::string &note : SplitList(r.tuning))
            tuning.push_back(in(note));
        QStringList args = {"--frets", QString::number(r.layout), "--tuning",
                            QString::fromStdString(Join(tuning, ","))};
        if (names != catalogue::NameSystem::English)
            args << "--names" << r.names;
        if (*r.capo)
            args << "--capo" << r.capo;
        if (chord)
            args << "--root" << QString::fromStdString(in(r.root)) << "--chord" << r.chord;
        return args;
    };
    const QStringList instrument = typed(system, false), base = typed(system, true);
    const std::string where = std::to_string(r.layout) + " " + r.tuning + " " + r.root + " " +
                              r.chord + " capo " + r.capo + " " + r.names;

    // "f1 f2 f3 | n1 n2 n3 | degrees": the first fingering.
    const Outcome voicings = RunChart(base + QStringList{"--voicings", "--muted-ok"});
    ASSERT_EQ(voicings.status, 0) << where << voicings.err;
    const std::vector<std::string> parts = Split(Lines(voicings.out).at(0), " | ");
    ASSERT_GE(parts.size(), 3u) << where << voicings.out;
    const std::vector<std::string> frets = Fields(parts[0], " "), notes = Fields(parts[1], " ");
    ASSERT_EQ(frets.size(), notes.size()) << where;

    // The chart's heading line names the frets; position 0 stands for the capo.
    const Outcome tsv = RunChart(base + QStringList{"--tsv"});
    ASSERT_EQ(tsv.status, 0) << where << tsv.err;
    const std::vector<std::string> rows = Lines(tsv.out);
    const std::vector<std::string> headings = Split(rows.at(0), "\t");
    const std::vector<std::string> names = music::FretNames(r.layout);
    const Outcome describe = RunChart(base + QStringList{"--describe"});
    ASSERT_EQ(describe.status, 0) << where << describe.err;
    const std::vector<std::string> sentences = Lines(describe.out);
    std::vector<std::string> sounding;
    for (std::size_t s = 0; s < frets.size(); ++s) {
        if (frets[s] == "x")
            continue;
        sounding.push_back(notes[s]);
        const auto at = std::find(names.begin(), names.end(), frets[s]);
        ASSERT_NE(at, names.end()) << where << ": " << frets[s] << " is no fret of the layout";
        const std::size_t column =
            frets[s] == "0" ? 0 : static_cast<std::size_t>(at - names.begin());
        EXPECT_EQ(headings.at(column), column == 0 ? "0" : frets[s]) << where;
        EXPECT_EQ(Split(rows.at(s + 2), "\t").at(column), notes[s])
            << where << ", string " << s + 1;
        // "String 2, tuned A: ... E at positions 7, 19 (frets 7, 19) ..."
        const std::string &sentence =
            *std::find_if(sentences.begin(), sentences.end(), [&](const std::string &l) {
                return l.starts_with("String " + std::to_string(s + 1) + ",");
            });
        EXPECT_NE(sentence.find(notes[s] + " at position"), std::string::npos) << where << sentence;
        EXPECT_TRUE(sentence.find(" " + frets[s] + ",") != std::string::npos ||
                    sentence.find(" " + frets[s] + ")") != std::string::npos ||
                    sentence.find(" " + frets[s] + ";") != std::string::npos ||
                    (column == 0 && sentence.find("position 0") != std::string::npos))
            << where << ": fret " << frets[s] << " in " << sentence;
    }

    // Typed back, the frets sound the notes.
    const Outcome identify = RunChart(
        instrument + QStringList{"--identify-frets", QString::fromStdString(Join(frets, ","))});
    ASSERT_EQ(identify.status, 0) << where << identify.err;
    std::vector<std::string> distinct;
    for (const std::string &note : sounding)
        if (std::find(distinct.begin(), distinct.end(), note) == distinct.end())
            distinct.push_back(note);
    EXPECT_EQ(Lines(identify.out).at(0), "Notes: " + Join(distinct, " ")) << where;

    // The diagrams' caption, first string first whichever hand.
    QTemporaryDir dir;
    const QString svg = dir.filePath("d.svg"), mid = dir.filePath("d.mid");
    QStringList drawn = base + QStringList{"--voicings", "--muted-ok", "--svg", svg};
    if (r.leftHanded)
        drawn << "--left-handed";
    const Outcome diagrams = RunChart(drawn);
    ASSERT_EQ(diagrams.status, 0) << where << diagrams.err;
    EXPECT_NE(ReadBytes(svg.toStdString()).find(">" + Join(frets, " ")), std::string::npos)
        << where << ": no caption " << Join(frets, " ");
    // A fretted string's dot carries its note; an open one is only marked.
    for (std::size_t s = 0; s < frets.size(); ++s)
        if (frets[s] != "x" && frets[s] != "0") {
            EXPECT_NE(ReadBytes(svg.toStdString()).find(">" + notes[s] + "<"), std::string::npos)
                << where << ": no dot named " << notes[s];
        }

    // The sound strums the same notes, string by string; it knows no name system.
    const Outcome sound = RunChart(typed(catalogue::NameSystem::English, true) +
                                   QStringList{"--voicings", "--muted-ok", "--midi", mid});
    ASSERT_EQ(sound.status, 0) << where << sound.err;
    const std::string bytes = ReadBytes(mid.toStdString());
    const MidiFile midi(std::vector<std::uint8_t>(bytes.begin(), bytes.end()));
    const auto struck = midi.Struck();
    ASSERT_GE(struck.size(), sounding.size()) << where;
    for (std::size_t i = 0; i < sounding.size(); ++i)
        EXPECT_EQ(catalogue::Mod12(struck[i].note - 69 + 12 * 10),
                  catalogue::ParseNote(sounding[i], system))
            << where << ": note " << i;
}

INSTANTIATE_TEST_SUITE_P(Outputs, Consistency, ::testing::ValuesIn(kRows),
                         [](const auto &info) { return "Row" + std::to_string(info.index); });

} // namespace
