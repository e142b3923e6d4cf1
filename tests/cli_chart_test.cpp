// varnock-chart: its text and TSV against the worked charts, its images
// against the window's own pixels, and the binary's handling of bad input.

#include "chart/sheet.h"
#include "cli/names.h"
#include "cli/options.h"
#include "cli_select.h"
#include "export/book.h"
#include "export/chartdoc.h"
#include "export/writers.h"
#include "support.h"
#include "version.h"

#include <QFontMetrics>
#include <QImage>
#include <QPainter>
#include <QProcess>
#include <QSvgRenderer>
#include <QTemporaryDir>
#include <cairo.h>
#include <gtest/gtest.h>

#include <regex>
#include <set>

using namespace varnock;
using namespace testsupport;

namespace {

// The window set as the command's arguments ask.
void Select(Window1 &w, const std::vector<std::string> &args) {
    Apply(w, cli::Resolve(cli::ParseArguments(args)));
}

QStringList Args(const std::vector<std::string> &args) {
    QStringList list;
    for (const std::string &arg : args)
        list << QString::fromStdString(arg);
    return list;
}

} // namespace

// The chart as TSV for a handful of selections, cells written with "|"
// between them; the heading line comes first.
struct TsvCase {
    const char *name, *frets, *strings, *tuning, *root, *chord;
    std::vector<const char *> rows;
};

void PrintTo(const TsvCase &c, std::ostream *os) {
    *os << c.name;
}

const char *const kNumbers = "0|1|2|3|4|5|6|7|8|9|10|11|12|13|14|15|16|17|18|19|20|21|22";
const char *const kLabelOnly = "0||||||||||||||||||||||";
const char *const kDad = "D||F#||A|||D||F#||A|||D||F#||A|||D|";

// clang-format off
const TsvCase kTsvCases[] = {
    {"DiatonicDMajor", "Diatonic", "3", "D,A,D", "D", "Maj",
     {kNumbers, kNumbers, kDad, "A|||D||F#||A|||D||F#||A|||D||F#||A|", kDad}},
    {"ChromaticD7OnFourStrings", "Chromatic", "4", "D,A,D,G", "D", "7",
     {kNumbers, "0|0+|1|1+|2|3|3+|4|4+|5|6|6+|7|7+|8|8+|9|10|10+|11|11+|12|13",
      "D||||F#|||A|||C||D||||F#|||A|||C", "A|||C||D||||F#|||A|||C||D||||F#|",
      "D||||F#|||A|||C||D||||F#|||A|||C", "||A|||C||D||||F#|||A|||C||D|||"}},
    {"SixPlusHeadingsRepeatInTheLabelRow", "Diatonic with 6+", "3", "D,A,D", "A", "Maj",
     {"0|1|2|3|4|5|6|6+|7|8|9|10|11|12|13|13+|14|15|16|17|18|19|20",
      "0|1|2|3|4|5|6|6+|7|8|9|10|11|12|13|13+|14|15|16|17|18|19|20",
      "|E|||A|||C#||E|||A|||C#||E|||A||", "A||C#||E||||A||C#||E||||A||C#||E||",
      "|E|||A|||C#||E|||A|||C#||E|||A||"}},
    {"OnePlusAndSixPlusOnFourStrings", "Diatonic with 1+ and 6+", "4", "G,D,G,C", "C", "m7",
     {"0|1|1+|2|3|4|5|6|6+|7|8|8+|9|10|11|12|13|13+|14|15|15+|16|17",
      "0|1|1+|2|3|4|5|6|6+|7|8|8+|9|10|11|12|13|13+|14|15|15+|16|17",
      "G||A#||C|||||G||A#||C|||||G||A#||C", "||||G|||C||||||G|||C||||||G",
      "G||A#||C|||||G||A#||C|||||G||A#||C", "C||D#|||G||A#||C||D#|||G||A#||C||D#||"}},
    {"TwoNotesOnTheMinorPentatonicBoard", "4", "3", "D,A,D", "A", "5",
     {kNumbers, kLabelOnly, "|||A|||||A|||||A|||||A||||", "A|||E||A|||E||A|||E||A|||E||A||",
      "|||A|||||A|||||A|||||A||||"}},
    {"ModeFiveHasNoOpenStringNote", "5", "3", "D,A,D", "D", "Maj",
     {kNumbers, kLabelOnly, "|F#|||||F#|||||F#|||||F#|||||F#|", "||D||F#|||D||F#|||D||F#|||D||F#|||D",
      "|F#|||||F#|||||F#|||||F#|||||F#|"}},
    {"NotesTheLayoutLacksAreNowhere", "Diatonic", "3", "D,A,D", "A#", "Maj",
     {kNumbers, kNumbers, "D|||||||D|||||||D|||||||D|", "|||D|||||||D|||||||D|||||",
      "D|||||||D|||||||D|||||||D|"}},
};
// clang-format on

class Tsv : public ::testing::TestWithParam<TsvCase> {};

TEST_P(Tsv, ChartOfTheControllerAndOfTheCommand) {
    const TsvCase &c = GetParam();
    const std::vector<std::string> args = {"--frets", c.frets,  "--strings", c.strings, "--tuning",
                                           c.tuning,  "--root", c.root,      "--chord", c.chord};
    OpenWindow w;
    Select(*w, args);
    std::string expected;
    for (const char *row : c.rows)
        expected += QString::fromLatin1(row).replace('|', '\t').toStdString() + "\n";
    EXPECT_EQ(cli::ChartTsv(w->Sheet()), expected);
    // The command itself, from the same arguments.
    const Outcome run = RunChart(Args(args) + QStringList{"--tsv", "--spelling", "sharps"});
    EXPECT_EQ(run.status, 0) << run.err;
    EXPECT_EQ(run.out, expected);
}

INSTANTIATE_TEST_SUITE_P(Charts, Tsv, ::testing::ValuesIn(kTsvCases),
                         [](const auto &info) { return std::string(info.param.name); });

TEST(ChartExport, LayoutsTheMenuLacksAreNamedByNumber) {
    OpenWindow w;
    Select(*w, {"--root", "D", "--frets", "5"});
    EXPECT_EQ(cli::ChartTitle(w->Sheet()), "D Maj: D F# A - Layout 5, 3 strings D A D");
    EXPECT_EQ(w->PopupMenu9->ListCount(), 4) << "no item is added for it";
    Select(*w, {"--frets", "chromatic"});
    EXPECT_EQ(w->PopupMenu9->ListIndex(), 3);
}

TEST(ChartExport, TextIsAlignedAndEndsWithTheNotes) {
    OpenWindow w;
    Select(*w, {"--root", "D"});
    const std::string text = cli::ChartText(w->Sheet());
    const std::string expected = "D Maj: D F# A - Diatonic, 3 strings D A D\n"
                                 "  0 1 2  3 4 5  6 7 8 9  10 11 12 13 14 15 16 17 18 19 20 21 22\n"
                                 "  0 1 2  3 4 5  6 7 8 9  10 11 12 13 14 15 16 17 18 19 20 21 22\n"
                                 "D D   F#   A      D   F#    A        D     F#    A        D\n"
                                 "A A      D   F#   A      D     F#    A        D     F#    A\n"
                                 "D D   F#   A      D   F#    A        D     F#    A        D\n"
                                 "Notes: D F# A\n";
    EXPECT_EQ(text, expected);
}

// An option, a name as typed and the popup index it resolves to, or the words
// its refusal must hold (more refusals in the command's bad input).
struct Name {
    const char *option, *typed;
    int index;
    const char *refusal;
};

const Name kNames[] = {
    {"--root", "F#", 9, nullptr},
    {"--root", "gb", 9, nullptr},
    {"--root", "F# / Gb", 9, nullptr},
    {"--root", "F\u266F", 9, nullptr},
    {"--root", "B\u266D", 1, nullptr},
    {"--root", "B#", 3, nullptr},
    {"--root", "Cx", 5, nullptr},
    {"--root", "F# /", -1, "\"F# /\""},
    {"--root", "D ", 5, nullptr},
    {"--root", " D", 5, nullptr},
    {"--chord", "maj7", 2, nullptr},
    {"--chord", "Maj7", 2, nullptr},
    {"--chord", "dim7", 6, nullptr},
    {"--chord", "M7", -1, "did you mean \"maj7\""},
    {"--chord", " m ", 3, nullptr},
    {"--frets", "diatonic with 6+", 1, nullptr},
    {"--frets", "3", 3, nullptr},
    {"--tuning", "E#,A,D", 8, nullptr},
    {"--tuning", "F\u266F,A,D", 9, nullptr},
    {"--tuning", "Eb,Bb,Eb", 6, nullptr},
    {"--tuning", "D,A", -1, "3 or 4"},
};

TEST(ChartExport, NamesResolveAsTheMenusHaveThemOrAreRefusedWithTheAcceptedOnes) {
    for (const Name &n : kNames) {
        try {
            const cli::Selection s = cli::Resolve(cli::ParseArguments({n.option, n.typed}));
            // Only the option given is set.
            const std::optional<int> got = s.root    ? s.root
                                           : s.chord ? s.chord
                                           : s.frets ? s.frets
                                                     : s.tuning.at(0);
            EXPECT_EQ(got, n.index) << n.option << " " << n.typed;
        } catch (const cli::BadInput &e) {
            EXPECT_NE(std::string(e.what()).find(n.refusal ? n.refusal : "\x01"), std::string::npos)
                << n.option << " " << n.typed << ": " << e.what();
        }
    }
    EXPECT_EQ(cli::ParseArguments({"--root=Gb"}).root, "Gb");
}

// The SVG drawn back, and the chord book's page drawn by cairo: every tile
// comes back pixel for pixel, seen on a strip at the right of each cell where
// no text reaches; elsewhere only glyphs and the frame may differ.
QImage SvgDrawnBack(const ChartSheet &sheet) {
    QTemporaryDir dir;
    const QString path = dir.filePath(QStringLiteral("chart.svg"));
    cli::WriteSvg(path, sheet);
    QSvgRenderer svg(path);
    EXPECT_EQ(svg.viewBox(), QRect(QPoint(0, 0), ChartPageSize(sheet)));
    QImage back(ChartPageSize(sheet), QImage::Format_RGB32);
    back.fill(Qt::white);
    QPainter painter(&back);
    svg.render(&painter);
    return back;
}

QImage BookPage(const ChartSheet &sheet) {
    const QSize size = ChartPageSize(sheet);
    cairo_surface_t *surface =
        cairo_image_surface_create(CAIRO_FORMAT_RGB24, size.width(), size.height());
    cairo_t *cairo = cairo_create(surface);
    cairo_set_source_rgb(cairo, 1, 1, 1);
    cairo_paint(cairo);
    PaintChartPage(cairo, sheet, cli::ChartTitle(sheet));
    cairo_destroy(cairo);
    cairo_surface_flush(surface);
    const QImage page = QImage(cairo_image_surface_get_data(surface), size.width(), size.height(),
                               cairo_image_surface_get_stride(surface), QImage::Format_RGB32)
                            .copy();
    cairo_surface_destroy(surface);
    return page;
}

TEST(ChartExport, VectorPagesDrawTheSameTiles) {
    OpenWindow w;
    Select(*w, {"--frets", "Chromatic", "--tuning", "D,A,D,G", "--root", "D", "--chord", "7"});
    const QImage sheet = RenderChartPage(w->Sheet(), cli::ChartTitle(w->Sheet()), 1)
                             .convertToFormat(QImage::Format_RGB32);
    // The chart's first string row stands where the page says.
    const QPoint shift =
        ChartPageRow(w->Sheet(), 1).topLeft() - CellRect(*w, w->Listbox1, 1, 0).topLeft();
    const Listbox &list = *w->Listbox1;
    const struct {
        const char *name;
        QImage (*draw)(const ChartSheet &);
        double alike;
    } kPages[] = {{"svg", SvgDrawnBack, 0.9}, {"book page", BookPage, 0.75}};
    for (const auto &page : kPages) {
        const QImage back = page.draw(w->Sheet());
        for (Int row = 0; row < list.ListCount(); ++row)
            for (Int column = 0; column < list.ColumnCount(); ++column) {
                const QRect cell = CellRect(*w, w->Listbox1, row, column).translated(shift);
                for (int y = cell.top(); y <= cell.bottom(); ++y)
                    for (int x = cell.right() - 3; x <= cell.right(); ++x)
                        ASSERT_EQ(back.pixel(x, y), sheet.pixel(x, y))
                            << page.name << ": row " << row << " column " << column << " at " << x
                            << "," << y;
            }
        qint64 same = 0;
        for (int y = 0; y < sheet.height(); ++y)
            for (int x = 0; x < sheet.width(); ++x)
                same += sheet.pixel(x, y) == back.pixel(x, y);
        EXPECT_GT(static_cast<double>(same) / (sheet.width() * sheet.height()), page.alike)
            << page.name;
    }
}

// SVG keeps a font's family, size and weight but not its width: where the
// chart's cells hold a note with its degree, every cell's text, measured in
// the font the file names, fits the narrowest cell.
TEST(ChartExport, SvgCellTextFitsInTheFontItNames) {
    const QStringList chords[] = {{"--root", "Eb", "--chord", "m7"},
                                  {"--names", "latin", "--root", "Mib", "--chord", "m7"}};
    const std::regex cellText(R"re(<text[^>]*font-family="([^"]+)" font-size="(\d+)")re"
                              R"re( font-weight="700"[^>]*\s*>([^<]+)</text>)re");
    for (const QStringList &chord : chords) {
        QTemporaryDir dir;
        const QString path = dir.filePath(QStringLiteral("chart.svg"));
        ASSERT_EQ(RunChart(chord + QStringList{"--labels", "both", "--svg", path}).status, 0);
        const std::string svg = ReadBytes(path.toStdString());
        int cells = 0;
        for (auto m = std::sregex_iterator(svg.begin(), svg.end(), cellText);
             m != std::sregex_iterator(); ++m) {
            // The chart's own narrowed size, below the headings' and the title's.
            if (std::stoi((*m)[2]) >= 12)
                continue;
            QFont font(QString::fromStdString((*m)[1]));
            font.setBold(true);
            font.setPixelSize(std::stoi((*m)[2]));
            const int width = QFontMetrics(font).horizontalAdvance(QString::fromStdString((*m)[3]));
            EXPECT_LE(width, 32) << (*m)[3] << " in " << (*m)[1] << " " << (*m)[2];
            cells += (*m)[3].str().find(' ') != std::string::npos;
        }
        EXPECT_GT(cells, 10) << chord.join(' ').toStdString();
    }
}

TEST(ChartCommand, PngAtOneTimesEqualsTheWindowsGrab) {
    OpenWindow w;
    Select(*w, {"--root", "D"});
    QTemporaryDir dir;
    const QString png = dir.filePath(QStringLiteral("chart.png"));
    const Outcome run = RunChart({"--root", "D", "--window-image", png});
    ASSERT_EQ(run.status, 0) << run.err;
    EXPECT_TRUE(run.out.empty());
    const QImage image = QImage(png).convertToFormat(QImage::Format_RGB32);
    ASSERT_EQ(image.size(), SheetSize());
    const QImage chartPixels = Grab(w->ControlView("Listbox1"));
    EXPECT_EQ(image.copy(QRect(QPoint(0, 0), chartPixels.size())), chartPixels);
    // The notes table stands where the window has it, relative to the chart.
    const QImage notes = Grab(w->ControlView("Listbox2"));
    const QPoint at = w->ControlView("Listbox2")->pos() - w->ControlView("Listbox1")->pos();
    EXPECT_EQ(image.copy(QRect(at, notes.size())), notes);
    const QString big = dir.filePath(QStringLiteral("big.png"));
    ASSERT_EQ(RunChart({"--root", "D", "--window-image", big, "--pixel-scale", "2"}).status, 0);
    EXPECT_EQ(QImage(big).size(), image.size() * 2);
    // The window's image keeps the window's names: Eb is D# there.
    const std::vector<std::string> eb = {
        "--frets", "Chromatic", "--tuning", "D,A,D,G",        "--root",
        "Eb",      "--chord",   "7",        "--window-image", png.toStdString()};
    Select(*w, eb);
    const Outcome eb7 = RunChart(Args(eb));
    ASSERT_EQ(eb7.status, 0) << eb7.err;
    EXPECT_EQ(QImage(png)
                  .convertToFormat(QImage::Format_RGB32)
                  .copy(QRect(QPoint(0, 0), chartPixels.size())),
              Grab(w->ControlView("Listbox1")));
}

// What poppler makes of a PDF: its page count, its outline as "title page"
// lines (each level indented by two more spaces), and the pages the links on
// its first page lead to, each link once.
struct PdfStructure {
    int pages = 0;
    std::vector<std::string> outline;
    std::vector<int> firstPageLinks;
};

PdfStructure ReadStructure(const QString &pdf) {
    QProcess run;
    run.start(QStringLiteral("pdftohtml"), {QStringLiteral("-xml"), QStringLiteral("-i"),
                                            QStringLiteral("-q"), QStringLiteral("-stdout"), pdf});
    EXPECT_TRUE(run.waitForFinished(10000)) << "pdftohtml (poppler-utils) is needed";
    const std::string xml = run.readAllStandardOutput().toStdString();
    const std::regex tag(
        R"re(<page number="(\d+)"|<a href="[^"#]*#(\d+)"|<item page="(\d+)">([^<]*)<|<(/?)outline>)re");
    PdfStructure out;
    std::vector<int> &links = out.firstPageLinks;
    int depth = -1;
    for (auto it = std::sregex_iterator(xml.begin(), xml.end(), tag); it != std::sregex_iterator();
         ++it) {
        const std::smatch &m = *it;
        if (m[1].matched)
            out.pages = std::stoi(m[1]);
        else if (m[2].matched && out.pages == 1 &&
                 (links.empty() || links.back() != std::stoi(m[2])))
            links.push_back(std::stoi(m[2]));
        else if (m[3].matched)
            out.outline.push_back(std::string(2 * depth, ' ') + m[4].str() + " " + m[3].str());
        else if (m[5].matched)
            depth += m[5].length() ? -1 : 1;
    }
    return out;
}

// pdftotext's words of a page with their heights in points.
std::vector<std::pair<std::string, double>> Words(const QString &pdf, int page) {
    QProcess run;
    run.start(QStringLiteral("pdftotext"),
              {QStringLiteral("-bbox"), QStringLiteral("-f"), QString::number(page),
               QStringLiteral("-l"), QString::number(page), pdf, QStringLiteral("-")});
    EXPECT_TRUE(run.waitForFinished(10000)) << "pdftotext (poppler-utils) is needed";
    const std::string html = run.readAllStandardOutput().toStdString();
    const std::regex word(R"re(yMin="([\d.]+)" xMax="[\d.]+" yMax="([\d.]+)">([^<]*)</word>)re");
    std::vector<std::pair<std::string, double>> words;
    for (auto it = std::sregex_iterator(html.begin(), html.end(), word);
         it != std::sregex_iterator(); ++it)
        words.push_back({(*it)[3], std::stod((*it)[2]) - std::stod((*it)[1])});
    return words;
}

// How many of a page's words are among `wanted`, each checked to be set at
// 9 pt or more: DejaVu Bold's line is 1.163 em.
int ReadableCount(const QString &pdf, int page, const std::set<std::string> &wanted) {
    int count = 0;
    for (const auto &[word, height] : Words(pdf, page))
        if (wanted.count(word)) {
            ++count;
            EXPECT_GE(height / 1.163, 8.999) << word;
        }
    return count;
}

TEST(ChartCommand, BookHasLinkedContentsAnOutlineAndReadableCells) {
    QTemporaryDir dir;
    const QString book = dir.filePath(QStringLiteral("book.pdf"));
    const Outcome run = RunChart(
        {"--tuning", "G,D,G,C", "--book", book, "--roots", "D, Gb", "--chords", "Maj,m,7,m7,Dim7"});
    ASSERT_EQ(run.status, 0) << run.err;
    EXPECT_EQ(QDir(dir.path()).entryList(QDir::NoDotAndDotDot | QDir::AllEntries),
              QStringList{QStringLiteral("book.pdf")});
    // Contents, then each root's five charts two to a landscape page.
    const PdfStructure pdf = ReadStructure(book);
    EXPECT_EQ(pdf.pages, 1 + 2 * 3);
    EXPECT_EQ(pdf.outline,
              (std::vector<std::string>{"D 2", "  D Maj 2", "  D m 2", "  D 7 3", "  D m7 3",
                                        "  D Dim7 4", "Gb 5", "  Gb Maj 5", "  Gb m 5", "  Gb 7 6",
                                        "  Gb m7 6", "  Gb Dim7 7"}));
    EXPECT_EQ(pdf.firstPageLinks, (std::vector<int>{2, 5}));
    // Every chart cell's note is readable.
    EXPECT_GT(ReadableCount(book, 6, {"Gb", "Bb", "Db", "E", "Fb"}), 20);
    const auto contents = Words(book, 1);
    ASSERT_GE(contents.size(), 3u);
    EXPECT_EQ(contents[0].first + " " + contents[1].first, "Chord book");
    // Letter pages, and the notes and degrees in any labels still readable.
    const Outcome letter = RunChart({"--book", book, "--roots", "Bb", "--chords", "Dim7", "--paper",
                                     "letter", "--labels", "both"});
    ASSERT_EQ(letter.status, 0) << letter.err;
    EXPECT_NE(ReadBytes(book.toStdString()).find("/MediaBox [ 0 0 792 612 ]"), std::string::npos);
    EXPECT_GE(ReadableCount(book, 2, {"bb7"}), 3);
    // The fingering book is made as the chord book is, on portrait pages.
    const Outcome fingerings = RunChart({"--book", book, "--voicings", "--roots", "D, Gb",
                                         "--chords", "Maj,m", "--paper", "letter"});
    ASSERT_EQ(fingerings.status, 0) << fingerings.err;
    const PdfStructure diagrams = ReadStructure(book);
    EXPECT_EQ(diagrams.pages, 3);
    EXPECT_EQ(diagrams.outline, (std::vector<std::string>{"D 2", "  D Maj 2", "  D m 2", "Gb 3",
                                                          "  Gb Maj 3", "  Gb m 3"}));
    EXPECT_EQ(diagrams.firstPageLinks, (std::vector<int>{2, 3}));
    EXPECT_NE(ReadBytes(book.toStdString()).find("/MediaBox [ 0 0 612 792 ]"), std::string::npos);
}

TEST(ChartCommand, PdfIsATitledPageOfThePaperAsked) {
    QTemporaryDir dir;
    const QString pdf = dir.filePath(QStringLiteral("chart.pdf"));
    const QStringList chart = {"--root",    "Eb",       "--chord", "7",     "--frets",
                               "Chromatic", "--tuning", "D,A,D,G", "--pdf", pdf};
    const std::pair<QStringList, const char *> cases[] = {
        {{}, "/MediaBox [0 0 842.000000 595.000000]"},
        {{"--paper", "a4"}, "/MediaBox [0 0 842.000000 595.000000]"},
        {{"--paper", "Letter"}, "/MediaBox [0 0 792.000000 612.000000]"}};
    for (const auto &[paper, mediaBox] : cases) {
        ASSERT_EQ(RunChart(chart + paper).status, 0) << mediaBox;
        EXPECT_NE(ReadBytes(pdf.toStdString()).find(mediaBox), std::string::npos);
        const auto words = Words(pdf, 1);
        std::string title;
        for (std::size_t i = 0; i < 6 && i < words.size(); ++i)
            title += (i ? " " : "") + words[i].first;
        EXPECT_EQ(title, "Eb 7: Eb G Bb Db") << mediaBox;
        // The title, six cells and the notes table.
        EXPECT_EQ(ReadableCount(pdf, 1, {"Db"}), 1 + 6 + 1) << mediaBox;
    }
    // Fingering diagrams go on the paper asked for too.
    ASSERT_EQ(RunChart({"--root", "D", "--voicings", "--paper", "letter", "--pdf", pdf}).status, 0);
    EXPECT_NE(ReadBytes(pdf.toStdString()).find("/MediaBox [0 0 792.000000 612.000000]"),
              std::string::npos);
}

TEST(ChartCommand, UnwritablePathExitsOne) {
    QTemporaryDir dir;
    for (const char *format :
         {"--png", "--svg", "--pdf", "--book", "--output", "--wav", "--midi"}) {
        const QString out = dir.filePath(QStringLiteral("missing/folder/out"));
        const Outcome run = RunChart({format, out});
        EXPECT_EQ(run.status, 1) << format;
        EXPECT_NE(run.err.find("cannot write"), std::string::npos) << run.err;
    }
    EXPECT_EQ(QDir(dir.path()).entryList(QDir::NoDotAndDotDot | QDir::AllEntries).size(), 0);
}

TEST(ChartCommand, HelpListsEveryOptionAndTheVersionIsTheProgramsOwn) {
    const std::string help = RunChart({"--help"}).out;
    const std::string examples = help.substr(help.find("Examples:"));
    for (const cli::OptionSpec &entry : cli::OptionTable())
        EXPECT_NE(help.find(std::string(entry.name)), std::string::npos) << entry.name;
    // The newer ones each with an example too.
    for (const char *option : {"--spelling", "--left-handed", "--flip", "--identify ",
                               "--identify-frets", "--describe"}) {
        EXPECT_NE(help.find(std::string("  ") + option), std::string::npos) << option;
        EXPECT_NE(examples.find(option), std::string::npos) << option;
    }
    EXPECT_NE(help.find("notes table is a legend"), std::string::npos);
    EXPECT_EQ(RunChart({"--version"}).out, std::string("varnock-chart ") + kShortVersion + "\n");
}

TEST(ChartCommand, FromSettingsReadsTheSavedInstrumentAndWritesNothing) {
    ScratchHome home;
    const std::string ini =
        "[Settings]\rFrets=3\rStrings=1\r[Strings]\rOne=0\rTwo=7\rThree=0\rFour=5\r";
    WriteBytes(home.IniFile(), ini);
    const Outcome run = RunChart({"--from-settings", "--root", "D", "--chord", "7", "--tsv"});
    ASSERT_EQ(run.status, 0) << run.err;
    EXPECT_EQ(run.out.substr(run.out.find('\n') + 1, 5), "0\t0+\t");
    EXPECT_EQ(std::count(run.out.begin(), run.out.end(), '\n'), 6);
    EXPECT_EQ(ReadBytes(home.IniFile()), ini);
    // Options given still win over the saved ones.
    const Outcome three =
        RunChart({"--from-settings", "--strings", "3", "--tuning", "D,A,D", "--tsv"});
    EXPECT_EQ(std::count(three.out.begin(), three.out.end(), '\n'), 5);
}
