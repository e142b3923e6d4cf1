// varnock-chart's ways of showing the chart (spelling, left-handed, flipped),
// its chord lookups and its sentences: each checked against the unturned,
// sharp chart the window shows, and its bad input against "nothing written".

#include "chart/cellpaint.h"
#include "chart/controls.h"
#include "chart/sheet.h"
#include "cli/book.h"
#include "cli/chartdoc.h"
#include "cli/lookup.h"
#include "cli/names.h"
#include "cli/spelling.h"
#include "support.h"

#include <QDir>
#include <QImage>
#include <QProcess>
#include <QTemporaryDir>
#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <map>
#include <set>

using namespace varnock;
using testsupport::OpenWindow;
using testsupport::RunChart;
using theory::Spelling;

namespace {

chart::Options Chart(const char *frets, const char *tuning, const char *root, const char *chord) {
    chart::Options o;
    o.frets = frets;
    o.tuning = tuning;
    o.strings = std::count(tuning, tuning + strlen(tuning), ',') == 3 ? "4" : "3";
    o.root = root;
    o.chord = chord;
    return o;
}

void Select(Window1 &w, const chart::Options &o, Spelling spelling = Spelling::Sharps) {
    chart::Apply(w, chart::Resolve(o));
    chart::ApplySpelling(w, spelling, chart::SpellingRoot(o.root));
}

std::vector<std::string> Lines(const std::string &text) {
    std::vector<std::string> lines = Split(text, "\n");
    lines.pop_back(); // the text ends in a line end
    return lines;
}

// Each word of a text line under the word of `heading` that starts where it does.
std::map<std::string, std::string> UnderHeadings(const std::string &heading,
                                                 const std::string &line) {
    std::map<std::string, std::string> cells;
    for (auto at = line.find_first_not_of(' '); at != std::string::npos;
         at = line.find_first_not_of(' ', line.find(' ', at)))
        cells[heading.substr(at, heading.find(' ', at) - at)] =
            line.substr(at, line.find(' ', at) - at);
    return cells;
}

} // namespace

TEST(ChartOrientation, EveryTileIsTheUnturnedTileAtItsMirroredOrFlippedPlace) {
    OpenWindow w;
    Select(*w, Chart("Chromatic", "D,A,D,G", "D", "7"));
    const Listbox &list = *w->Listbox1;
    const QSize size(ControlByName("Listbox1").width, ControlByName("Listbox1").height);
    const QImage plain = RenderSheet(*w, 1);
    struct Row {
        bool left, flip;
    };
    for (const Row turn : {Row{true, false}, Row{false, true}, Row{true, true}}) {
        const QImage turned = RenderSheet(*w, 1, {turn.left, turn.flip});
        EXPECT_NE(turned, plain);
        // Row -1 stands for the heading line, which turns with the columns.
        for (Int row = -1; row < list.ListCount(); ++row)
            for (Int column = 0; column < list.ColumnCount(); ++column) {
                QRect from = ListboxCellRect(list, size, std::max<Int>(row, 0), column);
                if (row < 0)
                    from.setRect(from.left(), 1, from.width(), kListboxHeadingHeight);
                QRect to = from;
                if (turn.left)
                    to.moveLeft(size.width() - 1 - from.right());
                // The strings reverse under the label row: each keeps its colour band.
                if (turn.flip && row >= 1)
                    to.moveTop(ListboxCellRect(list, size, list.ListCount() - row, 0).top());
                EXPECT_EQ(turned.copy(to), plain.copy(from))
                    << turn.left << turn.flip << " row " << row << " column " << column;
            }
        // The notes table is a legend and stays as it is.
        const QRect rest(0, size.height(), plain.width(), plain.height() - size.height());
        EXPECT_EQ(turned.copy(rest), plain.copy(rest));
    }
}

TEST(ChartOrientation, TextTurnsAndTsvStaysInPositionOrder) {
    OpenWindow w;
    Select(*w, Chart("Chromatic", "D,A,D,G", "D", "7"));
    const auto plain = Lines(chart::ChartText(*w));
    for (const auto &[left, flip] : {std::pair{true, false}, {false, true}, {true, true}}) {
        const auto lines = Lines(chart::ChartText(*w, {left, flip}));
        ASSERT_EQ(lines.size(), plain.size());
        // Positions fall right to left, and each cell stays under its position.
        for (std::size_t i = 1; i < lines.size() - 1; ++i) {
            const std::size_t from = flip && i >= 2 ? 7 - i : i; // the four strings reverse
            EXPECT_EQ(UnderHeadings(lines[0], lines[i]), UnderHeadings(plain[0], plain[from]))
                << left << flip << " line " << i;
        }
        EXPECT_EQ(lines[0].substr(0, 3), left ? "22 " : "0 1");
        EXPECT_EQ(lines.back(), "Notes: D F# A C");
    }
    EXPECT_EQ(RunChart({"--frets", "Chromatic", "--tuning", "D,A,D,G", "--root", "D", "--chord",
                        "7", "--tsv", "--left-handed", "--flip"})
                  .out,
              chart::ChartTsv(*w));
}

TEST(ChartSpelling, RenamesCellsNotesAndColoursTogether) {
    struct Row {
        const char *root, *chord;
        Spelling spelling;
        const char *notes;
    };
    const Row cases[] = {
        {"D", "Maj", Spelling::Flats, "D Gb A"},
        {"A#", "Maj", Spelling::Flats, "Bb D F"},
        {"Bb", "Maj", Spelling::Chord, "Bb D F"},
        {"A#", "Maj", Spelling::Chord, "A# C## E#"},
        {"bb", "m7", Spelling::Chord, "Bb Db F Ab"},
        {"C", "Dim7", Spelling::Chord, "C Eb Gb Bbb"},
        {"F# / Gb", "7", Spelling::Chord, "F# A# C# E"},
        {"D", "5", Spelling::Chord, "D A"},
    };
    OpenWindow w;
    for (const Row &c : cases) {
        const chart::Options o = Chart("Chromatic", "D,A,D,G", c.root, c.chord);
        Select(*w, o);
        const auto sharp = chart::ChartRows(*w);
        const ChordModel before = w->Model;
        Select(*w, o, c.spelling);
        // Twice is the same as once: the book spells after every change.
        chart::ApplySpelling(*w, c.spelling, chart::SpellingRoot(o.root));
        const auto spelled = chart::ChartRows(*w);
        EXPECT_EQ(chart::Join(chart::ChordNotes(*w), " "), c.notes) << c.root << " " << c.chord;
        // Each cell names the same pitch and is painted in the same colour,
        // which holds only if Note1..Note4 were renamed with the cells.
        const ChordModel &m = w->Model;
        ASSERT_EQ(spelled.size(), sharp.size());
        for (std::size_t r = 2; r < sharp.size(); ++r)
            for (std::size_t p = 0; p < sharp[r].size(); ++p) {
                EXPECT_EQ(theory::ParseNote(spelled[r][p]), theory::ParseNote(sharp[r][p]));
                EXPECT_EQ(ChartTextColor(spelled[r][p], m.Note1, m.Note2, m.Note3, m.Note4),
                          ChartTextColor(sharp[r][p], before.Note1, before.Note2, before.Note3,
                                         before.Note4))
                    << c.root << " " << c.chord << " " << spelled[r][p];
            }
        EXPECT_EQ(spelled[1], sharp[1]); // fret names are no notes
    }
}

TEST(ChartSpelling, TheBookPaintsEveryChartSpelledAndColoured) {
    OpenWindow w;
    Select(*w, Chart("Chromatic", "D,A,D", "A", "Maj"));
    // Every note the book's charts paint, and whether it was painted in its colour.
    std::vector<std::pair<std::string, bool>> painted;
    const auto paint = w->Listbox1->CellTextPaint;
    w->Listbox1->CellTextPaint = [&](Listbox &l, Graphics &g, Int r, Int c, Int x, Int y) {
        const bool coloured = paint(l, g, r, c, x, y);
        if (r > 0 && !l.Cell(r, c).empty())
            painted.emplace_back(l.Cell(r, c), coloured);
        return coloured;
    };
    QTemporaryDir dir;
    // Each root as typed, with its first letter raised; a menu text by its sharp.
    chart::WriteBook(dir.filePath(QStringLiteral("book.pdf")), *w, {1, 9}, {0, 1},
                     {{true, true}, Spelling::Chord, chart::SpellingRoots("bb, F# / Gb")});
    std::set<std::string> names;
    for (const auto &[name, coloured] : painted) {
        names.insert(name);
        EXPECT_TRUE(coloured) << name;
    }
    EXPECT_EQ(names, (std::set<std::string>{"Ab", "Bb", "D", "F", "F#", "A#", "C#", "E"}));
    EXPECT_EQ(chart::SpellingRoot(std::nullopt), "A");
}

TEST(ChartLookup, IdentifiesNotesInAnySpellingAndOrder) {
    struct Row {
        const char *notes;
        Spelling spelling;
        const char *first, *also; // the first line, and one further line ("" for none)
    };
    const Row cases[] = {
        {"D,F#,A", Spelling::Sharps, "D Maj: D F# A", "B m7: B D F# A"},
        {"a, f#,D,d", Spelling::Sharps, "D Maj: D F# A", "D 6: D F# A B"},
        {"Bb,D,F", Spelling::Flats, "Bb Maj: Bb D F", "G m7: G Bb D F"},
        {"bb,D,F", Spelling::Chord, "Bb Maj: Bb D F", "G m7: G Bb D F"},
        {"A#,Cx,E#", Spelling::Chord, "A# Maj: A# C## E#", ""},
        {"C,C#,D,D#", Spelling::Flats, "No chord type holds the notes C Db D Eb.", ""},
    };
    for (const Row &c : cases) {
        const auto lines = Lines(chart::IdentifyText(chart::ParseNoteList(c.notes), c.spelling,
                                                     chart::SplitList(c.notes)));
        ASSERT_FALSE(lines.empty());
        EXPECT_EQ(lines[0], c.first) << c.notes;
        EXPECT_TRUE(!*c.also || std::count(lines.begin(), lines.end(), c.also)) << c.notes;
    }
}

TEST(ChartLookup, NamesTheNotesAtAFretListOnTheChosenInstrument) {
    struct Row {
        const char *frets, *tuning, *list, *notes, *first;
    };
    const Row cases[] = {
        {"Chromatic", "D,A,D", "0,2,4", "Notes: D B F#", "B m: B D F#"},
        {"Diatonic", "D,A,D", "0,x,4", "Notes: D A", "D 5: D A"},
        {"Diatonic with 6+", "D,A,D", "7, 3 ,0", "Notes: C# D", "D maj7: D F# A C#"},
        {"Chromatic", "E,A,D,G", "x,0,4,0", "Notes: A F# G", "A 13: A E G F#"},
        {"Diatonic", "D,A,D", "x,x,0", "Notes: D", "A chord needs two different notes or more."},
    };
    OpenWindow w;
    for (const Row &c : cases) {
        Select(*w, Chart(c.frets, c.tuning, "A", "Maj"));
        const auto lines = Lines(chart::IdentifyFretsText(*w, c.list, Spelling::Sharps));
        ASSERT_GE(lines.size(), 2u);
        EXPECT_EQ(lines[0], c.notes) << c.list;
        EXPECT_NE(std::find(lines.begin(), lines.end(), c.first), lines.end()) << c.list;
    }
}

TEST(ChartDescription, UsesTheLayoutsFretNamesTheSpellingAndTheStringOrder) {
    struct Row {
        const char *frets, *tuning, *root;
        Spelling spelling;
        const char *line; // one line the description must hold
    };
    const Row cases[] = {
        {"Diatonic", "D,A,D", "D", Spelling::Sharps,
         "String 2, tuned A: D at positions 3, 10, 17 (frets 3, 10, 17); F# at positions 5, 12, "
         "19 (frets 5, 12, 19); A at positions 0, 7, 14, 21 (frets 0, 7, 14, 21)."},
        {"Diatonic with 6+", "D,A,D", "A", Spelling::Sharps,
         "String 1, tuned D: A at positions 4, 12, 20 (frets 4, 11, 18); C# at positions 7, 15 "
         "(frets 6+, 13+); E at positions 1, 9, 17 (frets 1, 8, 15)."},
        {"Chromatic", "D,A,D", "Bb", Spelling::Chord,
         "Chord: Bb Maj, notes Bb, D and F (root Bb)."},
        {"Chromatic", "D,A#,D", "Bb", Spelling::Flats,
         "Chromatic fretboard, 3 strings tuned D Bb D."},
        {"Chromatic", "D,A,D", "Bb", Spelling::Flats,
         "String 1, tuned D: Bb at positions 8, 20 (frets 4+, 11+); D at positions 0, 12 (frets "
         "0, 7); F at positions 3, 15 (frets 1+, 8+)."},
        // Layout 4 leaves the label row empty: the headings name the frets.
        {"4", "D,A,D", "A", Spelling::Sharps,
         "String 1, tuned D: A at positions 3, 8, 13, 18 (frets 3, 8, 13, 18); no C#; no E."},
    };
    OpenWindow w;
    for (const Row &c : cases) {
        Select(*w, Chart(c.frets, c.tuning, c.root, "Maj"), c.spelling);
        const auto lines = Lines(chart::DescribeText(*w, c.spelling, false));
        EXPECT_NE(std::find(lines.begin(), lines.end(), c.line), lines.end()) << c.line;
    }
    Select(*w, Chart("Chromatic", "D,A,D,G", "D", "7"));
    const auto plain = Lines(chart::DescribeText(*w, Spelling::Sharps, false));
    auto flipped = Lines(chart::DescribeText(*w, Spelling::Sharps, true));
    EXPECT_EQ(flipped[2].rfind("String 4, tuned G: ", 0), 0u);
    std::reverse(flipped.begin() + 2, flipped.end());
    EXPECT_EQ(flipped, plain);
}

TEST(ChartCommand, NewOptionsReachTheFilesAndTheirBadValuesWriteNothing) {
    QTemporaryDir dir;
    const QString out = dir.filePath(QStringLiteral("out"));
    // Each bad value, and a word of the one line that must name it.
    const std::pair<QStringList, const char *> bad[] = {
        {{"--spelling", "flat", "--png", out}, "\"flat\"; accepted: sharps, flats, chord"},
        {{"--identify", "D,H"}, "\"H\" is not a note name"},
        {{"--identify", "D,F#,A,C,E"}, "names 5 notes; accepted: 2 to 4"},
        {{"--identify", "D"}, "names 1 note;"},
        {{"--identify", "D,d"}, "one note only"},
        {{"--identify-frets", "0,2"}, "has 2 positions; the instrument has 3 strings"},
        {{"--identify-frets", "0,2,4", "--tuning", "D,A,D,G"}, "the instrument has 4 strings"},
        {{"--identify-frets", "0,2,23"}, "\"23\" is outside 0..22"},
        {{"--identify-frets", "0,q,4"}, "\"q\" is not a number or x"},
        {{"--identify", "D,A", "--png", out}, "does not combine with --png"},
        {{"--identify-frets", "0,0,0", "-o", out}, "does not combine with --output"},
        {{"--identify", "D,A", "--identify-frets", "0,0,0"}, "exclude each other"},
        {{"--describe", "--tsv", "-o", out}, "exclude each other"},
        {{"--left-handed", "--root", "H", "--svg", out}, "\"H\""},
    };
    for (const auto &[args, words] : bad) {
        const testsupport::Outcome run = RunChart(args);
        EXPECT_EQ(run.status, 2) << args.join(' ').toStdString();
        EXPECT_EQ(run.err.rfind("varnock-chart: ", 0), 0u) << run.err;
        EXPECT_NE(run.err.find(words), std::string::npos) << run.err;
        EXPECT_EQ(std::count(run.err.begin(), run.err.end(), '\n'), 1) << run.err;
        EXPECT_TRUE(run.out.empty()) << run.out;
    }
    EXPECT_TRUE(QDir(dir.path()).isEmpty());

    // The command turns and spells its images as the sheet does in process.
    OpenWindow w;
    Select(*w, Chart("Diatonic", "D,A,D,D", "Bb", "7"), Spelling::Chord);
    ASSERT_EQ(RunChart({"--strings", "4", "--root", "Bb", "--chord", "7", "--spelling", "chord",
                        "--left-handed", "--flip", "--png", out})
                  .status,
              0);
    EXPECT_EQ(QImage(out).convertToFormat(QImage::Format_RGB32), RenderSheet(*w, 1, {true, true}));
}
