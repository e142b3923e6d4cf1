// varnock-chart's ways of showing the chart (spelling, left-handed, flipped),
// its chord lookups and its sentences: each checked against the unturned,
// sharp chart the window shows, and its bad input against "nothing written".

#include "chart/cellpaint.h"
#include "chart/controls.h"
#include "chart/sheet.h"
#include "cli/names.h"
#include "cli_select.h"
#include "export/book.h"
#include "export/chartdoc.h"
#include "export/lookup.h"
#include "export/spelling.h"
#include "music/catalogue.h"
#include "support.h"

#include <QDir>
#include <QFileInfo>
#include <QImage>
#include <QProcess>
#include <QTemporaryDir>
#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <iterator>
#include <map>
#include <regex>
#include <set>
#include <sstream>

using namespace varnock;
using cli::Labels;
using cli::Spelling;
using namespace testsupport;

namespace {

cli::Options Chart(const char *frets, const char *tuning, const char *root, const char *chord) {
    const char *strings = std::count(tuning, tuning + strlen(tuning), ',') == 3 ? "4" : "3";
    return cli::ParseArguments({"--frets", frets, "--tuning", tuning, "--strings", strings,
                                "--root", root, "--chord", chord});
}

// The colour a cell's text is painted in, by the sheet's own notes.
std::optional<Color> TextColour(const ChartSheet &sheet, const std::string &text) {
    const auto &n = sheet.notes;
    return ChartTextColor(text, n[0], n[1], n[2], n[3]);
}

// The sheet of a selection, spelled.
ChartSheet Select(Window1 &w, const cli::Options &o, Spelling spelling = Spelling::Sharps) {
    Apply(w, cli::Resolve(o));
    return cli::Spell(w.Sheet(), spelling, cli::SpellingRoot(o.root));
}

// Each word of a text line under the word of `heading` that starts where it
// does; a word where the heading has none (a string's name) under "".
std::map<std::string, std::string> UnderHeadings(const std::string &heading,
                                                 const std::string &line) {
    std::map<std::string, std::string> cells;
    for (auto at = line.find_first_not_of(' '); at != std::string::npos;
         at = line.find_first_not_of(' ', line.find(' ', at)))
        cells[at < heading.size() ? heading.substr(at, heading.find(' ', at) - at) : ""] =
            line.substr(at, line.find(' ', at) - at);
    return cells;
}

} // namespace

TEST(ChartOrientation, EveryTileIsTheUnturnedTileAtItsMirroredOrFlippedPlace) {
    OpenWindow w;
    Select(*w, Chart("Chromatic", "D,A,D,G", "D", "7"));
    const Listbox &list = *w->Listbox1;
    const QSize size(ControlByName("Listbox1").width, ControlByName("Listbox1").height);
    const QImage plain = RenderSheet(w->Sheet(), 1);
    for (const auto &[left, flip] : {std::pair{true, false}, {false, true}, {true, true}}) {
        const QImage turned = RenderSheet(w->Sheet(), 1, {left, flip});
        EXPECT_NE(turned, plain);
        // Row -1 stands for the heading line, which turns with the columns.
        for (Int row = -1; row < list.ListCount(); ++row)
            for (Int column = 0; column < list.ColumnCount(); ++column) {
                QRect from = ListboxCellRect(list, size, std::max<Int>(row, 0), column);
                if (row < 0)
                    from.setRect(from.left(), 1, from.width(), kListboxHeadingHeight);
                QRect to = from;
                if (left)
                    to.moveLeft(size.width() - 1 - from.right());
                // The strings reverse under the label row: each keeps its colour band.
                if (flip && row >= 1)
                    to.moveTop(ListboxCellRect(list, size, list.ListCount() - row, 0).top());
                EXPECT_EQ(turned.copy(to), plain.copy(from))
                    << left << flip << " row " << row << " column " << column;
            }
        // The notes table is a legend and stays as it is.
        const QRect rest(0, size.height(), plain.width(), plain.height() - size.height());
        EXPECT_EQ(turned.copy(rest), plain.copy(rest));
    }
}

TEST(ChartOrientation, TextTurnsAndTsvStaysInPositionOrder) {
    OpenWindow w;
    const ChartSheet sheet = Select(*w, Chart("Chromatic", "D,A,D,G", "D", "7"));
    const auto plain = Lines(cli::ChartText(sheet));
    EXPECT_EQ(plain[0], "D 7: D F# A C - Chromatic, 4 strings D A D G");
    for (const auto &[left, flip] : {std::pair{true, false}, {false, true}, {true, true}}) {
        const auto lines = Lines(cli::ChartText(sheet, {left, flip}));
        ASSERT_EQ(lines.size(), plain.size());
        EXPECT_EQ(lines[0], plain[0]);
        // Positions fall right to left, and each cell stays under its position.
        for (std::size_t i = 2; i < lines.size() - 1; ++i) {
            const std::size_t from = flip && i >= 3 ? 9 - i : i; // the four strings reverse
            EXPECT_EQ(UnderHeadings(lines[1], lines[i]), UnderHeadings(plain[1], plain[from]))
                << left << flip << " line " << i;
        }
        EXPECT_EQ(lines[1].substr(0, 3), left ? "22 " : "  0");
        // The string's name heads its row on the open-string side.
        const std::string top = flip ? "G" : "D";
        EXPECT_EQ(left ? lines[3].substr(lines[3].size() - 2) : lines[3].substr(0, 2),
                  left ? " " + top : top + " ")
            << lines[3];
        EXPECT_EQ(lines.back(), "Notes: D F# A C");
    }
    EXPECT_EQ(RunChart({"--frets", "Chromatic", "--tuning", "D,A,D,G", "--root", "D", "--chord",
                        "7", "--tsv"})
                  .out,
              cli::ChartTsv(sheet));
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
        const cli::Options o = Chart("Chromatic", "D,A,D,G", c.root, c.chord);
        const ChartSheet plain = Select(*w, o);
        const auto sharp = cli::ChartRows(plain);
        const ChartSheet sheet = Select(*w, o, c.spelling);
        // The controller's own sheet stays as the model computed it.
        EXPECT_EQ(cli::ChartRows(w->Sheet()), sharp);
        const auto spelled = cli::ChartRows(sheet);
        EXPECT_EQ(Join(sheet.ChordNotes(), " "), c.notes) << c.root << " " << c.chord;
        // Each cell names the same pitch and is painted in the same colour,
        // which holds only if Note1..Note4 were renamed with the cells.
        ASSERT_EQ(spelled.size(), sharp.size());
        for (std::size_t r = 2; r < sharp.size(); ++r)
            for (std::size_t p = 0; p < sharp[r].size(); ++p) {
                EXPECT_EQ(catalogue::ParseNote(spelled[r][p]), catalogue::ParseNote(sharp[r][p]));
                EXPECT_EQ(TextColour(sheet, spelled[r][p]), TextColour(plain, sharp[r][p]))
                    << c.root << " " << c.chord << " " << spelled[r][p];
            }
        EXPECT_EQ(spelled[1], sharp[1]); // fret names are no notes
    }
}

TEST(ChartSpelling, TheBookPaintsEveryChartSpelledAndColoured) {
    // Chromatic, D A D. Each root as typed, with its first letter raised; a
    // menu text by its sharp.
    const cli::Book book =
        cli::MakeBook({3, {5, 0, 5}, {}, 0}, {1, 9}, {0, 1},
                      {{true, true}, Spelling::Chord, cli::SpellingRoots("bb, F# / Gb")});
    // Every note the book's charts hold is painted in its colour.
    std::set<std::string> names;
    ASSERT_EQ(book.parts.size(), 2u);
    EXPECT_EQ(book.parts[0].name, "Bb");
    EXPECT_EQ(book.parts[1].charts[1].title, "F# 7");
    for (const cli::BookPart &part : book.parts)
        for (const cli::BookChart &chart : part.charts)
            for (std::size_t r = 1; r < chart.sheet.rows.size(); ++r)
                for (const std::string &name : chart.sheet.rows[r]) {
                    if (name.empty())
                        continue;
                    names.insert(name);
                    EXPECT_TRUE(TextColour(chart.sheet, name)) << name;
                }
    QTemporaryDir dir;
    EXPECT_EQ(cli::WriteBook(dir.filePath(QStringLiteral("book.pdf")), book), 3);
    EXPECT_EQ(names, (std::set<std::string>{"Ab", "Bb", "D", "F", "F#", "A#", "C#", "E"}));
    EXPECT_EQ(cli::SpellingRoot(std::nullopt), "");
}

TEST(ChartCommand, TheMusiciansSpellingIsTheDefault) {
    // The arguments and a line the answer must hold.
    const std::vector<std::pair<QStringList, std::string>> rows = {
        {{"--identify", "C,E,G,Bb"}, "C 7: C E G Bb\n"},
        {{"--root", "Eb", "--describe"}, "Chord: Eb Maj, notes Eb, G and Bb (root Eb)."},
        {{"--root", "C", "--chord", "m7"}, "\nNotes: C Eb G Bb\n"},
        {{"--identify", "A#,D,F,A"}, "Bb maj7: Bb D F A\n"},
        {{"--identify", "D#,F#,A,C", "--spelling", "chord"}, "A Dim7: A C Eb Gb\n"},
        {{"--root", "B\u266D", "--tuning", "D,Bb,F", "--chord", "7"},
         "Bb 7: Bb D F Ab - Diatonic, 3 strings D Bb F\n"},
        {{"--root", "A#", "--chord", "Maj"}, "A# Maj: A# C## E# - Diatonic, 3 strings D A D\n"},
        {{"--root", "Gb", "--chord", "m", "--tuning", "d,a,d"},
         "Gb m: Gb Bbb Db - Diatonic, 3 strings D A D\n"},
        {{"--root", "Eb", "--spelling", "sharps"}, "D# Maj: D# G A# - "},
        {{"--root", "Eb", "--spelling", "flats", "--chord", "Aug"}, "Eb Aug: Eb G B - "},
    };
    for (const auto &[args, line] : rows) {
        const Outcome run = RunChart(args);
        EXPECT_EQ(run.status, 0) << run.err;
        EXPECT_NE(run.out.find(line), std::string::npos) << run.out;
    }
    // No chord is named on a root with double flats.
    EXPECT_EQ(RunChart({"--identify", "D#,F#,A,C"}).out.find("bb "), std::string::npos);
}

TEST(ChartLabels, EachCellShowsItsNotesDegreeInTheNotesColour) {
    struct Row {
        const char *root, *chord;
        Labels labels;
        std::map<std::string, std::string> shown; // note name -> the cell's text
        const char *degrees;                      // the notes table's second row
    };
    const Row cases[] = {
        {"C", "7", Labels::Degrees, {{"C", "R"}, {"E", "3"}, {"G", "5"}, {"Bb", "b7"}}, "R 3 5 b7"},
        {"Bb", "Dim7", Labels::Both, {{"Bb", "Bb R"}, {"Abb", "Abb bb7"}}, "R b3 b5 bb7"},
        {"D", "add9", Labels::Degrees, {{"E", "9"}, {"F#", "3"}}, "R 3 5 9"},
        {"A", "m", Labels::Notes, {{"C", "C"}}, "R b3 5"},
    };
    OpenWindow w;
    for (const Row &c : cases) {
        const ChartSheet plain =
            Select(*w, Chart("Chromatic", "D,A,D,G", c.root, c.chord), Spelling::Musician);
        const ChartSheet sheet = cli::Label(cli::WithDegrees(plain), c.labels);
        ASSERT_EQ(sheet.notesRows.size(), 2u);
        EXPECT_EQ(Join(sheet.ChordNotes(), " "), Join(plain.ChordNotes(), " "));
        std::vector<std::string> degrees;
        for (const std::string &d : sheet.notesRows[1])
            if (!d.empty())
                degrees.push_back(d);
        EXPECT_EQ(Join(degrees, " "), c.degrees) << c.root << " " << c.chord;
        std::set<std::string> seen;
        for (std::size_t r = 1; r < plain.rows.size(); ++r)
            for (std::size_t p = 0; p < plain.rows[r].size(); ++p) {
                const std::string &name = plain.rows[r][p], &text = sheet.rows[r][p];
                if (const auto want = c.shown.find(name); want != c.shown.end()) {
                    EXPECT_EQ(text, want->second) << name;
                    seen.insert(name);
                }
                EXPECT_EQ(TextColour(sheet, text), TextColour(plain, name))
                    << c.root << " " << c.chord << " " << text;
            }
        EXPECT_EQ(seen.size(), c.shown.size()) << c.root << " " << c.chord;
    }
    const Outcome run = RunChart({"--root", "G", "--chord", "m7", "--labels", "Degrees"});
    EXPECT_NE(run.out.find("\nNotes: G Bb D F\nDegrees: R b3 5 b7\n"), std::string::npos)
        << run.out;
}

TEST(ChartPalette, ColourBlindTonesFillTheirCellsWithReadableTextAndNoGreenStripe) {
    OpenWindow w;
    const ChartSheet sheet =
        cli::WithDegrees(Select(*w, Chart("Chromatic", "D,A,D,G", "D", "7"), Spelling::Musician));
    QTemporaryDir dir;
    const QString png = dir.filePath(QStringLiteral("chart.png"));
    const auto greenish = [](QRgb p) { return qGreen(p) - std::max(qRed(p), qBlue(p)) > 24; };
    for (const char *palette : {"window", "colour-blind"}) {
        const Outcome run = RunChart({"--frets", "Chromatic", "--tuning", "D,A,D,G", "--root", "D",
                                      "--chord", "7", "--palette", palette, "--png", png});
        ASSERT_EQ(run.status, 0) << run.err;
        const QImage image = QImage(png).convertToFormat(QImage::Format_RGB32);
        const bool colourBlind = std::strcmp(palette, "window") != 0;
        std::set<QRgb> fills;
        int cells = 0, green = 0;
        for (Int row = 1; row <= sheet.StringCount(); ++row) {
            const QRect band = ChartPageRow(sheet, row);
            for (int x = band.left(); x <= band.right(); ++x)
                for (int y = band.top(); y <= band.bottom(); ++y)
                    green += greenish(image.pixel(x, y));
            // A cell's fill is what stands at its lower right, clear of text
            // and of the frame; its text is the pixel that differs most.
            const int columns = static_cast<int>(sheet.rows[0].size());
            for (int c = 0; c < columns; ++c) {
                const int left = band.left() + c * band.width() / columns;
                const int right = band.left() + (c + 1) * band.width() / columns - 1;
                const QRgb fill = image.pixel(right - 2, band.bottom() - 2);
                const Color fillColor = fill & 0xFFFFFF;
                if (std::find(std::begin(colors::kToneColourBlind),
                              std::end(colors::kToneColourBlind),
                              fillColor) == std::end(colors::kToneColourBlind))
                    continue;
                ++cells;
                fills.insert(fill);
                double best = 1;
                for (int x = left + 1; x < right - 1; ++x)
                    for (int y = band.top() + 1; y < band.bottom() - 1; ++y)
                        best =
                            std::max(best, ContrastRatio(fillColor, image.pixel(x, y) & 0xFFFFFF));
                EXPECT_GE(best, 4.5) << "row " << row << " column " << c;
            }
        }
        int expected = 0;
        for (std::size_t r = 1; r < sheet.rows.size(); ++r)
            for (const std::string &cell : sheet.rows[r])
                expected += !cell.empty();
        EXPECT_EQ(cells, colourBlind ? expected : 0) << palette;
        EXPECT_EQ(fills.size(), colourBlind ? 4u : 0u) << palette;
        // The window's even rows are a light green; the colour-blind ones are not.
        EXPECT_EQ(green > 0, !colourBlind) << palette;
    }
    EXPECT_NEAR(ContrastRatio(0x000000, 0xFFFFFF), 21.0, 1e-9);
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
        const auto lines =
            Lines(cli::IdentifyText(cli::ReadNoteList(c.notes), c.spelling, SplitList(c.notes)));
        ASSERT_FALSE(lines.empty());
        EXPECT_EQ(lines[0], c.first) << c.notes;
        EXPECT_TRUE(!*c.also || std::count(lines.begin(), lines.end(), c.also)) << c.notes;
    }
}

// The chart in words: the notes at a fret list and the chords they make (when
// a list is given; the answer starts with the lines given), or the chart in
// sentences (holding the line given).
TEST(ChartWords, FretListsAndSentencesUseTheLayoutsFretNamesAndTheSpelling) {
    struct Row {
        const char *frets, *tuning, *root;
        Spelling spelling;
        const char *list, *lines;
    };
    const Row cases[] = {
        {"Chromatic", "D,A,D", "A", Spelling::Sharps, "0,2,4", "Notes: D B F#\nB m: B D F#"},
        {"Diatonic", "D,A,D", "A", Spelling::Sharps, "0,x,4", "Notes: D A\nD 5: D A"},
        {"Diatonic with 6+", "D,A,D", "A", Spelling::Sharps, "7, 3 ,0",
         "Notes: C# D\nB madd9: B D C#"},
        {"Chromatic", "E,A,D,G", "A", Spelling::Sharps, "x,0,4,0",
         "Notes: A F# G\nA 9/6: A F# G B\nA 13: A E G F#"},
        {"Diatonic", "D,A,D", "A", Spelling::Sharps, "x,x,0",
         "Notes: D\nA chord needs two different notes or more."},
        {"Diatonic", "D,A,D", "D", Spelling::Sharps, nullptr,
         "String 2, tuned A: D at positions 3, 10, 17 (frets 3, 10, 17); F# at positions 5, 12, "
         "19 (frets 5, 12, 19); A at positions 0, 7, 14, 21 (frets 0, 7, 14, 21)."},
        {"Diatonic with 6+", "D,A,D", "A", Spelling::Sharps, nullptr,
         "String 1, tuned D: A at positions 4, 12, 20 (frets 4, 11, 18); C# at positions 7, 15 "
         "(frets 6+, 13+); E at positions 1, 9, 17 (frets 1, 8, 15)."},
        {"Chromatic", "D,A,D", "Bb", Spelling::Chord, nullptr,
         "Chord: Bb Maj, notes Bb, D and F (root Bb)."},
        {"Chromatic", "D,A#,D", "Bb", Spelling::Flats, nullptr,
         "Chromatic fretboard, 3 strings tuned D Bb D."},
        {"Chromatic", "D,A,D", "Bb", Spelling::Flats, nullptr,
         "String 1, tuned D: Bb at positions 8, 20 (frets 8, 20; diatonic 4+, 11+); D at "
         "positions 0, 12 (frets 0, 12; diatonic 0, 7); F at positions 3, 15 (frets 3, 15; "
         "diatonic 1+, 8+)."},
        // Layout 4 leaves the label row empty: the headings name the frets.
        {"4", "D,A,D", "A", Spelling::Sharps, nullptr,
         "String 1, tuned D: A at positions 3, 8, 13, 18 (frets 3, 8, 13, 18); no C#; no E."},
    };
    OpenWindow w;
    for (const Row &c : cases) {
        const ChartSheet sheet = Select(*w, Chart(c.frets, c.tuning, c.root, "Maj"), c.spelling);
        const std::string out = c.list ? cli::IdentifyFretsText(sheet, c.list, c.spelling)
                                       : cli::DescribeText(sheet, c.spelling, false);
        const auto at = ("\n" + out).find("\n" + std::string(c.lines) + "\n");
        EXPECT_TRUE(c.list ? at == 0 : at != std::string::npos) << out;
    }
    const ChartSheet sheet = Select(*w, Chart("Chromatic", "D,A,D,G", "D", "7"));
    const auto plain = Lines(cli::DescribeText(sheet, Spelling::Sharps, false));
    auto flipped = Lines(cli::DescribeText(sheet, Spelling::Sharps, true));
    EXPECT_EQ(flipped[2].rfind("String 4, tuned G: ", 0), 0u);
    std::reverse(flipped.begin() + 2, flipped.end());
    EXPECT_EQ(flipped, plain);
}

TEST(ChartCommand, ImagesAreTurnedAndSpelledAsTheSheetIsInProcess) {
    QTemporaryDir dir;
    const QString out = dir.filePath(QStringLiteral("out"));
    OpenWindow w;
    const ChartSheet sheet = Select(*w, Chart("Diatonic", "D,A,D,D", "Bb", "7"), Spelling::Chord);
    const Outcome run = RunChart({"--strings", "4", "--root", "Bb", "--chord", "7", "--spelling",
                                  "chord", "--left-handed", "--flip", "--png", out});
    ASSERT_EQ(run.status, 0) << run.err;
    EXPECT_EQ(QImage(out).convertToFormat(QImage::Format_RGB32),
              RenderChartPage(cli::WithDegrees(sheet), cli::ChartTitle(sheet), 1, {true, true}));
}

// Each bad input: exit status 2, one line after "varnock-chart: " holding
// the words given (the whole line when they end in a line end), nothing
// printed and no file written.
TEST(ChartCommand, EachBadInputIsOneLineAStatusAndNoFile) {
    QTemporaryDir dir;
    const QString out = dir.filePath(QStringLiteral("out"));
    const std::string chords =
        "accepted: \"Maj\", \"7\", \"maj7\", \"m\", \"m7\", \"Dim\", \"Dim7\", \"Sus2\", "
        "\"Sus4\", \"add9\", \"madd9\", \"Aug\", \"2\", \"5\", \"6\", \"6/9\", \"9/6\", \"9\", "
        "\"11\", \"13\", \"maj9\", \"maj11\", \"maj13\", \"m6\", \"maj6/9\", \"mmaj7\", "
        "\"mmaj9\", \"m9\", \"m11\", \"m13\", \"7/6\", \"7sus4\"\n";
    const std::string notes =
        "accepted: a letter A-G then sharps (#, \u266F, x for two) or flats (b, \u266D)\n";
    const std::string frets =
        "accepted: \"Diatonic\", \"Diatonic with 6+\", \"Diatonic with 1+ and "
        "6+\", \"Chromatic\", \"0\", \"1\", \"2\", \"3\", \"4\", \"5\"\n";
    const std::pair<QStringList, std::string> rows[] = {
        {{"--chord", "M7", "--png", out}, "unknown chord \"M7\"; did you mean \"maj7\"? " + chords},
        {{"--chord", "M", "--png", out}, "unknown chord \"M\"; did you mean \"Maj\"? " + chords},
        {{"--chord", "min7", "--png", out},
         "unknown chord \"min7\"; did you mean \"m7\"? " + chords},
        {{"--chord", "MIN7", "--png", out},
         "unknown chord \"MIN7\"; did you mean \"m7\"? " + chords},
        {{"--chord", "Maj8", "--png", out}, "unknown chord \"Maj8\"; " + chords},
        {{"--chord", "", "--png", out}, "unknown chord \"\"; " + chords},
        {{"", "--png", out}, "unknown option \"\"; see --help\n"},
        {{"--root", "Dm", "--png", out}, "root \"Dm\" names a chord; use --root D --chord m\n"},
        {{"--root", "Bbmaj7", "--png", out},
         "root \"Bbmaj7\" names a chord; use --root Bb --chord maj7\n"},
        {{"--chord", "F#m7", "--svg", out},
         "chord \"F#m7\" names a root too; use --root F# --chord m7\n"},
        {{"--root", "H", "--png", out},
         "unknown root \"H\"; did you mean --names german? " + notes},
        {{"--root", "Sib", "--png", out},
         "unknown root \"Sib\"; did you mean --names latin? " + notes},
        {{"--root", "R\u00e9", "--png", out},
         "unknown root \"R\u00e9\"; did you mean --names latin? "},
        {{"--tuning", "D,A,Hb", "--png", out},
         "unknown tuning note \"Hb\"; did you mean --names german? " + notes},
        {{"--root", "D", "--root", "E", "--png", out}, "option --root is given twice\n"},
        {{"--flip", "--flip", "--png", out}, "option --flip is given twice\n"},
        {{"--book", "--help"}, "option --book needs a file name, not \"--help\"\n"},
        {{"-o", "--tsv"}, "option -o needs a file name, not \"--tsv\"\n"},
        {{"--png=-x.png"}, "option --png needs a file name, not \"-x.png\"\n"},
        {{"--root", "-1", "--png", out}, "option --root needs a value, not \"-1\"\n"},
        {{"--png", out, "--png", out}, "option --png is given twice\n"},
        {{"--png", out, "--text", "--text"}, "option --text is given twice\n"},
        {{"--output", out, "-o", out}, "option --output is given twice\n"},
        {{"--strings", "3", "--tuning", "D,A,D,G", "--png", out},
         "tuning \"D,A,D,G\" names 4 strings, but --strings is 3\n"},
        {{"--tuning", "D,A,D", "--strings", "4", "--png", out},
         "tuning \"D,A,D\" names 3 strings, but --strings is 4\n"},
        {{"--flip=yes", "--png", out}, "option --flip takes no value\n"},
        {{"--png"}, "option --png needs a value\n"},
        {{"--chord", "--svg", out}, "option --chord needs a value, not \"--svg\"\n"},
        {{"--frets", "Fretless", "--svg", out}, "unknown fret layout \"Fretless\"; " + frets},
        {{"--frets", "6", "--pdf", out}, "unknown fret layout \"6\"; " + frets},
        {{"--frets", "diatonic with 6", "--svg", out},
         "unknown fret layout \"diatonic with 6\"; did you mean \"Diatonic with 6+\"? " + frets},
        {{"--strings", "5", "--book", out}, "unknown string count \"5\"; accepted: \"3\", \"4\"\n"},
        {{"--scale", "2", "--png", out},
         "--scale \"2\" names no scale: the PNG's pixel scale moved to --pixel-scale 2\n"},
        {{"--pixel-scale", "5", "--png", out},
         "--pixel-scale \"5\" is not accepted; a whole number 1..4"},
        {{"--scale", "pentatonic", "--png", out},
         "unknown scale \"pentatonic\"; did you mean \"major pentatonic\" or \"minor "
         "pentatonic\"?"},
        {{"--nonsense", "-o", out}, "unknown option \"--nonsense\"; see --help\n"},
        {{"--voicing", "-o", out},
         "unknown option \"--voicing\"; did you mean \"--voicings\"? see --help\n"},
        {{"--lefthanded", "--png", out},
         "unknown option \"--lefthanded\"; did you mean \"--left-handed\"? see --help\n"},
        {{"--book-roots", "A", "--book", out}, "unknown option \"--book-roots\"; see --help\n"},
        {{"--roots", "A,H", "--book", out},
         "unknown root \"H\"; did you mean --names german? " + notes},
        {{"--chords", "Maj,X", "--book", out}, "unknown chord \"X\"; " + chords},
        {{"--spelling", "flat", "--png", out},
         "\"flat\"; did you mean \"flats\"? accepted: musician, sharps, flats, chord"},
        {{"--paper", "b4", "--pdf", out},
         "unknown paper \"b4\"; did you mean \"a4\"? accepted: \"a4\", \"letter\""},
        {{"--palette", "grey", "--png", out},
         "unknown palette \"grey\"; accepted: window, colour-blind"},
        {{"--labels", "note", "--png", out},
         "unknown labels \"note\"; did you mean \"notes\"? accepted: notes, degrees, both"},
        {{"--identify", "D,H"}, "unknown note \"H\"; did you mean --names german? " + notes},
        {{"--identify", "D,F#,A,C,E"}, "names 5 notes; accepted: 2 to 4"},
        {{"--identify", "D"}, "names 1 note;"},
        {{"--identify", "D,d"}, "one note only"},
        {{"--identify-frets", "0,2"}, "has 2 positions; the instrument has 3 strings"},
        {{"--identify-frets", "0,2,4", "--tuning", "D,A,D,G"}, "the instrument has 4 strings"},
        {{"--identify-frets", "0,2,23"}, "\"23\" is not accepted; a fret of the layout: 0..22"},
        {{"--identify-frets", "0,q,4"}, "\"q\" is not accepted"},
        {{"--identify-frets", "0,6+,4"}, "\"6+\" is not accepted"},
        {{"--frets", "1", "--capo", "3", "--identify-frets", "0,2,x"}, "below the capo at 3"},
        {{"--voicings", "--reach", "0", "--png", out},
         "--reach \"0\" is not accepted; a whole number 1..22"},
        {{"--voicings", "--count", "0", "-o", out},
         "--count \"0\" is not accepted; a whole number 1..999"},
        {{"--capo", "23", "--png", out},
         "--capo \"23\" is not accepted; a fret of the layout: 0..22"},
        {{"--frets", "1", "--capo", "8+", "--svg", out},
         "\"8+\" is not accepted; a fret of the layout: 0..20, 6+, 13+"},
        {{"--voicings", "--capo", "5", "--highest", "4", "--pdf", out}, "below the capo at 5"},
        {{"--reach", "4", "--png", out}, "--reach goes with --voicings or --song only"},
        {{"--muted-ok", "-o", out}, "--muted-ok goes with --voicings or --song only"},
        {{"--voicings", "--tsv", "-o", out}, "--voicings does not combine with --tsv"},
        {{"--identify", "D,A", "--png", out}, "does not combine with --png"},
        {{"--identify-frets", "0,0,0", "-o", out}, "does not combine with --output"},
        {{"--identify", "D,A", "--identify-frets", "0,0,0"}, "exclude each other"},
        {{"--describe", "--tsv", "-o", out}, "exclude each other"},
        {{"--scale", "dorain", "--wav", out},
         "unknown scale \"dorain\"; did you mean \"dorian\"? accepted: \"major\", \"dorian\""},
        {{"--names", "greek", "--wav", out},
         "unknown note names \"greek\"; accepted: english, german, latin"},
        {{"--names", "german", "--root", "Bes", "--png", out},
         "unknown root \"Bes\" in german names; accepted: C D E F G A H"},
        {{"--names", "latin", "--tuning", "D,A,D", "--svg", out},
         "unknown tuning note \"D\" in latin names; did you mean --names english?"},
        // What none of the outputs asked for would use is refused, not dropped.
        {{"--window-image", out, "--palette", "colour-blind"},
         "option --palette changes nothing in --window-image; leave it out\n"},
        {{"--book", out, "--root", "E"}, "option --root changes nothing in --book; leave it out\n"},
        {{"--labels", "both", "--tsv"}, "option --labels changes nothing in --tsv; leave it out\n"},
        {{"--octaves", "3,3,4", "--png", out},
         "option --octaves changes nothing in --png; leave it out\n"},
        {{"--roots", "A", "--pdf", out}, "option --roots changes nothing in --pdf; leave it out\n"},
        {{"--voicings", "--flip", "--svg", out}, "option --flip changes nothing in --svg;"},
        {{"--paper", "letter", "--png", out}, "option --paper changes nothing in --png;"},
        {{"--capo", "2", "--window-image", out},
         "option --capo changes nothing in --window-image;"},
        {{"--spelling", "flats", "--window-image", out}, "option --spelling changes nothing in"},
        {{"--tsv", "--left-handed"},
         "option --left-handed changes nothing in --tsv; leave it out\n"},
        {{"--octaves", "3,3", "--wav", out},
         "--octaves \"3,3\" names 2 octaves for 3 strings; accepted: one octave 0..8 per string"},
        {{"--octaves", "3,9,4", "--wav", out}, "--octaves entry \"9\" is not an octave"},
        {{"--octaves", "3,x,4", "--midi", out}, "--octaves entry \"x\" is not an octave"},
        {{"--octaves", "8,8,8", "--scale", "major", "--root", "C", "--wav", out},
         "beyond MIDI's 0..127"},
        {{"--scale", "dorian", "--chord", "m", "--wav", out}, "does not combine with --chord"},
        {{"--modes", "--scale", "dorian", "--wav", out}, "does not combine with --modes"},
        {{"--modes", "--identify", "D,A", "--wav", out}, "exclude each other"},
    };
    for (const auto &[args, words] : rows) {
        const Outcome run = RunChart(args);
        const std::string name = args.join(' ').toStdString();
        const auto at = run.err.find(words);
        EXPECT_EQ(run.status, 2) << name;
        EXPECT_EQ(run.err.rfind("varnock-chart: ", 0), 0u) << run.err;
        EXPECT_TRUE(words.back() == '\n' ? at == 15 : at != std::string::npos) << run.err;
        EXPECT_EQ(std::count(run.err.begin(), run.err.end(), '\n'), 1) << run.err;
        EXPECT_TRUE(run.out.empty()) << run.out;
        EXPECT_TRUE(QDir(dir.path()).isEmpty()) << name;
    }
}

// One reader takes every word-valued option's words: the same slip gets the
// same answer whichever option it is typed for.
TEST(ChartCommand, EveryWordIsReadAlike) {
    struct Row {
        const cli::Choices &(*choices)();
        const char *typed, *taken; // "" where it is refused
    };
    const Row rows[] = {
        {cli::ChordChoices, "maj", "Maj"},
        {cli::ChordChoices, "dim", "Dim"},
        {cli::ChordChoices, "sus4", "Sus4"},
        {cli::ChordChoices, "MAJ7", "maj7"},
        {cli::ChordChoices, "m", "m"},
        {cli::ChordChoices, "M", ""},
        {cli::ChordChoices, "M7", ""},
        {cli::PaletteChoices, "colorblind", "colour-blind"},
        {cli::PaletteChoices, "Colour Blind", "colour-blind"},
        {cli::ScaleChoices, "Natural_Minor", "natural minor"},
        {cli::ScaleChoices, "min-pent", "minor pentatonic"},
        {cli::ScaleChoices, "pentatonic", ""},
        {cli::LayoutChoices, "CHROMATIC", "Chromatic"},
        {cli::LayoutChoices, "diatonic-with-6+", "Diatonic with 6+"},
        {cli::PaperChoices, "Letter", "letter"},
        {cli::NameChoices, "LATIN", "latin"},
        {cli::SpellingChoices, "Sharps", "sharps"},
        {cli::LabelChoices, "sharps", ""},
    };
    for (const Row &r : rows) {
        std::string taken;
        try {
            taken = cli::ReadChoice(r.choices(), r.typed).word;
        } catch (const cli::BadInput &) {
        }
        EXPECT_EQ(taken, r.taken) << r.typed;
    }
}

// The completion asks the command for its words, and the manual page is
// written from the table: both name exactly the table's options.
TEST(ChartCommand, CompletionAndManualPageNameTheTablesOptions) {
    std::set<std::string> table;
    for (const cli::OptionSpec &entry : cli::OptionTable()) {
        table.insert(std::string(entry.name));
        if (!entry.shortName.empty())
            table.insert(std::string(entry.shortName));
    }
    // What bash offers after the words typed, the command on the PATH.
    const auto complete = [](const QStringList &words) {
        QProcess bash;
        QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
        env.insert("PATH", QFileInfo(VARNOCK_CHART_EXE).path() + ":" + env.value("PATH"));
        bash.setProcessEnvironment(env);
        bash.start("bash", QStringList{"--norc", "--noprofile", "-c", R"(source "$1"; shift
            COMP_WORDS=(varnock-chart "$@"); COMP_CWORD=$#
            _varnock_chart varnock-chart "${COMP_WORDS[COMP_CWORD]}" "${COMP_WORDS[COMP_CWORD - 1]}"
            echo "${COMPREPLY[*]}")",
                                       "_", VARNOCK_SOURCE_DIR "/resources/varnock-chart.bash"} +
                               words);
        bash.waitForFinished();
        return bash.readAllStandardOutput().trimmed().toStdString();
    };
    const std::pair<QStringList, std::string> rows[] = {
        {{"--le"}, "--left-handed"},
        {{"--ident"}, "--identify --identify-frets"},
        {{"--frets", "Diatonic w"}, R"(Diatonic\ with\ 6+ Diatonic\ with\ 1+\ and\ 6+)"},
        {{"--frets", "=", "Ch"}, "Chromatic"},
        {{"--root", "G"}, "Gb G G#"},
        {{"--names", "german", "--root", "Fi"}, "Fis"},
        {{"--chord", "6"}, "6 6/9"},
        {{"--tuning", "D,A,D"}, "D,A,Db D,A,D D,A,D#"},
        {{"--chords", "Maj,7s"}, "Maj,7sus4"},
        {{"--palette", "c"}, "colour-blind"},
        {{"--scale", "ma"}, R"(major major\ pentatonic)"},
        {{"--reach", ""}, ""},
        {{"--root", "D", "--ro"}, "--root --roots"},
    };
    for (const auto &[words, offered] : rows)
        EXPECT_EQ(complete(words), offered) << words.join(' ').toStdString();
    const std::string all = complete({""});
    std::istringstream offered(all);
    EXPECT_EQ(std::set<std::string>(std::istream_iterator<std::string>(offered), {}), table);

    const std::string man = ReadBytes(VARNOCK_MAN_PAGE);
    const std::regex option(R"((\\-)+[A-Za-z0-9](\\-|[A-Za-z0-9])*)");
    std::set<std::string> listed;
    std::istringstream lines(man);
    for (std::string line, previous; std::getline(lines, line); previous = line) {
        if (previous != ".TP")
            continue;
        // "\fB\-o\fR, \fB\-\-output\fR \fIFILE\fR": each option named.
        for (auto it = std::sregex_iterator(line.begin(), line.end(), option);
             it != std::sregex_iterator(); ++it)
            listed.insert(std::regex_replace(it->str(), std::regex(R"(\\-)"), "-"));
    }
    EXPECT_EQ(listed, table);
    EXPECT_NE(man.find(".B 3\n"), std::string::npos) << "every exit status is listed";
}
