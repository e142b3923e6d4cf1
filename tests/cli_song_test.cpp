// --song end to end: what the command prints for the test songs, the
// ChordPro it writes back, the song sheet read back with poppler, and the
// one-line refusals.

#include "support.h"

#include <QProcess>
#include <gtest/gtest.h>

#include <regex>

namespace {

using testsupport::Outcome;
using testsupport::ReadBytes;
using testsupport::RunChart;
using testsupport::TempDir;
using testsupport::WriteBytes;

QString SongPath(const char *name) {
    return QStringLiteral(VARNOCK_SOURCE_DIR "/tests/songs/") + QString::fromUtf8(name);
}

// Each line of `expected` appears in the output, in this order.
void ExpectInOrder(const std::string &output, const std::vector<std::string> &expected,
                   const std::string &context) {
    std::size_t from = 0;
    for (const std::string &line : expected) {
        const std::size_t at = output.find(line + "\n", from);
        ASSERT_NE(at, std::string::npos) << context << ": missing \"" << line << "\" in\n"
                                         << output;
        from = at + line.size();
    }
}

TEST(SongCommand, PrintsChordsFingeringsAndLyrics) {
    const struct {
        const char *song;
        QStringList args;
        std::vector<std::string> lines;
    } cases[] = {
        {"river-in-d.cho",
         {},
         {"Down by the River, The Varnock Players", "Key D; Diatonic, 3 strings D A D",
          "  D       0 0 2 | D A F# | R 5 3", "  G       3 1 0 | G B D | R 3 5",
          "  A       4 2 1 | A C# E | R 3 5", "[Verse 1]", "D                     G          D",
          "Down by the river the water runs low,", "[Chorus]", "  A                   D",
          "  the river knows the way to go.", "(Repeat the chorus after each verse)",
          // {chorus} sings the chorus again.
          "[Chorus]", "  So sing it slow and sing it low,", "  the river knows the way to go."}},
        {"harbour-in-f.cho",
         {},
         {"  F       not on this board: no string has F", "  Bb      not on this board: no "
                                                          "string has Bb or F"}},
        {"harbour-in-f.cho",
         {"--transpose", "-3"},
         {"Key D; Diatonic, 3 strings D A D", "  D       0 0 2 | D A F# | R 5 3",
          "  G       3 1 0 | G B D | R 3 5", "D                         G          D"}},
        {"river-in-d.cho",
         {"--key", "Eb", "--frets", "Chromatic"},
         {"Key Eb; Chromatic, 3 strings D A D", "Eb                    Ab         Eb"}},
        {"lament-in-am.cho",
         {"--frets", "Diatonic with 6+"},
         {"  Dm      not on this board: no string has F", "  E7      8 6+ 0 | E G# D | R 3 b7 | "
                                                          "without 5"}},
        {"odd-chords.cho",
         {},
         {"  D/F#    2 0 0 | F# A D | 3 5 R", "  G/B     5 6 0 | B G D | 3 R 5",
          "  Am7b5   not a chord type Varnock knows: shown as written"}},
        {"mill-in-g.cho", {"--capo", "2"}, {"Key G; Diatonic, 3 strings D A D, capo at 2"}},
        // A key of more than six sharps by its usual name.
        {"river-in-d.cho", {"--key", "D#"}, {"Key Eb; Diatonic, 3 strings D A D"}},
        {"river-in-d.cho",
         {"--names", "latin"},
         {"  D       not a chord in latin names; in english names it is one (--names english)"}},
    };
    for (const auto &c : cases) {
        const Outcome run = RunChart(QStringList{"--song", SongPath(c.song)} + c.args);
        ASSERT_EQ(run.status, 0) << c.song << run.err;
        ExpectInOrder(run.out, c.lines, c.song + c.args.join(' ').toStdString());
    }
}

TEST(SongCommand, SuggestsKeyCapoAndTuning) {
    const struct {
        const char *song;
        QStringList args;
        std::vector<std::string> lines;
    } cases[] = {
        {"harbour-in-f.cho",
         {},
         {"  key  capo  tuning  playable  not playable", "  D    -     D A D   3/3",
          "Fingerings of the first: key D, Diatonic, 3 strings D A D",
          "  D       0 0 2 | D A F# | R 5 3"}},
        {"lament-in-am.cho",
         {"--frets", "Diatonic with 6+", "--tunings", "D,A,D;D,G,D"},
         {"  key  capo  tuning  playable  not playable"}},
    };
    for (const auto &c : cases) {
        const Outcome run = RunChart(QStringList{"--song", SongPath(c.song), "--suggest"} + c.args);
        ASSERT_EQ(run.status, 0) << c.song << run.err;
        ExpectInOrder(run.out, c.lines, c.song);
    }
}

TEST(SongCommand, WritesChordProWithOurFingerings) {
    TempDir dir;
    const QString out = QString::fromStdString((dir.Path() / "g.cho").string());
    ASSERT_EQ(
        RunChart({"--song", SongPath("mill-in-g.cho"), "--capo", "2", "--chordpro", out}).status,
        0);
    const std::string written = ReadBytes(dir.Path() / "g.cho");
    ExpectInOrder(written,
                  {"{title: The Old Mill Wheel}", "{capo: 2}",
                   "{define: G base-fret 1 frets 3 3 5}",
                   // A directive for other programs stays where it stood.
                   "[G]grinding the barley to [D]flour on the [G]ground.", "{new_page}",
                   "# the chorus twice at the end", "{ci: all together}", "{start_of_chorus}",
                   "[C]Turn, wheel, [G]turn, for the [D]miller must [G]eat,"},
                  "chordpro");
    // Read back, it is the same song with the same chords.
    const Outcome again = RunChart({"--song", out, "--capo", "2"});
    const Outcome first = RunChart({"--song", SongPath("mill-in-g.cho"), "--capo", "2"});
    EXPECT_EQ(again.out, first.out);
}

// pdftotext's words with where they start and their baseline, page 1.
struct Word {
    std::string text;
    double x, y;
};
std::vector<Word> Words(const QString &pdf) {
    QProcess run;
    run.start(QStringLiteral("pdftotext"), {QStringLiteral("-bbox"), pdf, QStringLiteral("-")});
    EXPECT_TRUE(run.waitForFinished(10000)) << "pdftotext (poppler-utils) is needed";
    const std::string html = run.readAllStandardOutput().toStdString();
    const std::regex word(
        R"re(xMin="([\d.]+)" yMin="[\d.]+" xMax="[\d.]+" yMax="([\d.]+)">([^<]*)</word>)re");
    std::vector<Word> words;
    for (auto it = std::sregex_iterator(html.begin(), html.end(), word);
         it != std::sregex_iterator(); ++it)
        words.push_back({(*it)[3], std::stod((*it)[1]), std::stod((*it)[2])});
    return words;
}

TEST(SongCommand, SheetHasEveryLineWithChordsAboveTheirSyllables) {
    TempDir dir;
    for (const char *paper : {"a4", "letter"}) {
        const QString pdf = QString::fromStdString((dir.Path() / paper).string() + ".pdf");
        const Outcome run = RunChart({"--song", SongPath("river-in-d.cho"), "--pdf", pdf, "--paper",
                                      paper, "--left-handed", "--capo", "1"});
        ASSERT_EQ(run.status, 0) << run.err;
        EXPECT_TRUE(run.out.empty());
        QProcess layout, check;
        layout.start(QStringLiteral("pdftotext"), {QStringLiteral("-layout"), pdf, "-"});
        ASSERT_TRUE(layout.waitForFinished(10000));
        const std::string text = layout.readAllStandardOutput().toStdString();
        for (const char *line :
             {"Down by the River", "Down by the river the water runs low,",
              "the swallows are calling and soon they will go.", "So sing it slow and sing it low,",
              "the river knows the way to go.", "Repeat the chorus after each verse"})
            EXPECT_NE(text.find(line), std::string::npos) << paper << ": " << line << "\n" << text;
        check.start(QStringLiteral("qpdf"), {QStringLiteral("--check"), pdf});
        ASSERT_TRUE(check.waitForFinished(10000)) << "qpdf is needed";
        EXPECT_EQ(check.exitCode(), 0) << check.readAllStandardOutput().toStdString();

        // Each chord starts where its word starts, on the line above it.
        const std::vector<Word> words = Words(pdf);
        const std::pair<const char *, const char *> placed[] = {
            {"G", "water"}, {"A", "soon"}, {"G", "sing"}, {"A", "the"}};
        for (const auto &[chord, syllable] : placed) {
            bool found = false;
            for (const Word &w : words)
                for (const Word &c : words)
                    found = found || (w.text == syllable && c.text == chord &&
                                      std::abs(c.x - w.x) < 0.5 && w.y > c.y && w.y - c.y < 30);
            EXPECT_TRUE(found) << paper << ": " << chord << " over " << syllable;
        }
        // The diagrams' captions: each chord's name and its frets by name.
        for (const char *caption : {"D", "G", "A", "capo"})
            EXPECT_TRUE(std::any_of(words.begin(), words.end(), [&](const Word &w) {
                return w.text == caption;
            })) << caption;
    }
}

TEST(SongCommand, ListsThePlayedChordsInOneColumn) {
    TempDir dir;
    WriteBytes(dir.Path() / "pause.cho",
               "{title: Pause}\n[D]one [N.C.]two [Dm(maj7)]three\n[C] [D]\n[G]end\n");
    const Outcome run =
        RunChart({"--song", QString::fromStdString((dir.Path() / "pause.cho").string())});
    ASSERT_EQ(run.status, 0) << run.err;
    // "N.C." is no chord to finger: it stands over its words only. A line of
    // chords alone has no blank line of words under it.
    ExpectInOrder(run.out,
                  {"  D        0 0 2 | D A F# | R 5 3",
                   "  Dm(maj7) not on this board: no string has F",
                   "  C        6 4 3 | C E G | R 3 5", "D   N.C. Dm(maj7)", "one two  three", "C D",
                   "G", "end"},
                  "pause");
    EXPECT_EQ(run.out.find("N.C."), run.out.rfind("N.C.")) << run.out;
}

TEST(SongCommand, FollowsItsOwnTransposeUnlessTold) {
    TempDir dir;
    WriteBytes(dir.Path() / "up.cho", "{title: Up}\n{key: C}\n{transpose: 2}\n[C]one [G]two\n");
    const QString song = QString::fromStdString((dir.Path() / "up.cho").string());
    ExpectInOrder(RunChart({"--song", song}).out, {"Key D; Diatonic, 3 strings D A D", "D   A"},
                  "its own");
    ExpectInOrder(RunChart({"--song", song, "--transpose", "0"}).out,
                  {"Key C; Diatonic, 3 strings D A D", "C   G"}, "told");
}

TEST(SongCommand, CrowdedChordNamesPushTheirWordsAlong) {
    TempDir dir;
    WriteBytes(dir.Path() / "crowd.cho", "{title: Crowd}\n[Ebmaj7]One [Cm7b5]two [Gb/Bb]three\n");
    const QString song = QString::fromStdString((dir.Path() / "crowd.cho").string());
    const QString pdf = QString::fromStdString((dir.Path() / "crowd.pdf").string());
    const Outcome text = RunChart({"--song", song});
    ExpectInOrder(text.out, {"Ebmaj7 Cm7b5 Gb/Bb", "One    two   three"}, "text");
    ASSERT_EQ(RunChart({"--song", song, "--pdf", pdf}).status, 0);
    const std::vector<Word> words = Words(pdf);
    for (const auto &[chord, syllable] :
         {std::pair{"Ebmaj7", "One"}, std::pair{"Cm7b5", "two"}, std::pair{"Gb/Bb", "three"}}) {
        bool found = false;
        for (const Word &w : words)
            for (const Word &c : words)
                found = found || (w.text == syllable && c.text == chord &&
                                  std::abs(c.x - w.x) < 0.5 && w.y > c.y && w.y - c.y < 30);
        EXPECT_TRUE(found) << chord << " over " << syllable;
    }
}

// The text of each page of a PDF, as pdftotext reads it (pages split at form feeds).
std::vector<std::string> Pages(const QString &pdf) {
    QProcess run;
    run.start(QStringLiteral("pdftotext"), {QStringLiteral("-layout"), pdf, QStringLiteral("-")});
    EXPECT_TRUE(run.waitForFinished(10000)) << "pdftotext (poppler-utils) is needed";
    std::vector<std::string> pages(1);
    for (const char c : run.readAllStandardOutput().toStdString())
        if (c == '\f')
            pages.emplace_back();
        else
            pages.back().push_back(c);
    pages.pop_back(); // after the last form feed
    return pages;
}

TEST(SongCommand, SheetKeepsVersesWholeAndObeysNewPage) {
    TempDir dir;
    std::string song = "{title: Long}\n";
    for (int v = 1; v <= 30; ++v) {
        const std::string n = std::to_string(v);
        song += "{comment: Verse " + n + "}\n[D]Line " + n + " a goes [G]on\n[D]Line " + n +
                " b [A7]ends\n\n" + (v == 2 ? "{new_page}\n" : "");
    }
    WriteBytes(dir.Path() / "long.cho", song);
    const QString pdf = QString::fromStdString((dir.Path() / "long.pdf").string());
    ASSERT_EQ(RunChart({"--song", QString::fromStdString((dir.Path() / "long.cho").string()),
                        "--pdf", pdf})
                  .status,
              0);
    const std::vector<std::string> pages = Pages(pdf);
    ASSERT_GE(pages.size(), 3u);
    // {new_page} after the second verse.
    EXPECT_NE(pages[0].find("Line 2 b"), std::string::npos);
    EXPECT_NE(pages[1].find("Verse 3"), std::string::npos);
    EXPECT_EQ(pages[1].find("Verse 3"), pages[1].find("Verse")) << pages[1];
    // Every page ends with a verse's last line: no verse split, no heading alone.
    for (const std::string &page : pages) {
        const auto last = page.find_last_not_of(" \n");
        const auto start = page.rfind('\n', last) + 1;
        EXPECT_NE(page.substr(start, last + 1 - start).find(" b ends"), std::string::npos) << page;
    }
}

TEST(SongCommand, RefusesWhatIsNoSong) {
    TempDir dir;
    WriteBytes(dir.Path() / "zip.cho", std::string("PK\x03\x04\0\0\0", 7));
    WriteBytes(dir.Path() / "empty.cho", "");
    WriteBytes(dir.Path() / "words.cho", "{title: Words}\nno chords here\n");
    WriteBytes(dir.Path() / "open.cho", "{title: Open}\n[G]one [C two\n");
    WriteBytes(dir.Path() / "capo.cho", "{title: Capo}\n{capo: 6+}\n[D]one [A]two\n");
    const auto file = [&](const char *name) {
        return QString::fromStdString((dir.Path() / name).string());
    };
    const struct {
        QStringList args;
        int status;
        const char *message;
    } cases[] = {
        {{"--song", file("zip.cho")}, 2, "not a text file"},
        {{"--song", file(".")}, 2, "cannot be read; a ChordPro file"},
        {{"--song", file("empty.cho")}, 2, "is an empty song"},
        {{"--song", file("words.cho")}, 2, "has no chords"},
        {{"--song", file("open.cho")}, 0, "line 2, column 8: unclosed ["},
        {{"--song", file("open.cho"), "--key", "H"},
         2,
         "--key \"H\" is no key; did you mean --names german?"},
        {{"--song", file("open.cho"), "--transpose", "12"}, 2, "semitones -11..11"},
        {{"--song", file("open.cho"), "--suggest", "--tunings", "D,A"},
         2,
         "--tunings entry \"D,A\" names 2 notes; this instrument has 3 strings"},
        {{"--transpose", "2"}, 2, "--transpose goes with --song only"},
        {{"--song", SongPath("river-in-d.cho"), "--key", "Bm"},
         2,
         "--key \"Bm\" is minor but the song is in D; accepted: a major key, such as B"},
        // A capo the board lacks is told, and the song played without it.
        {{"--song", file("capo.cho")}, 0, "{capo} in the song \"6+\" is not accepted"},
        {{"--song", file("open.cho"), "--root", "D"}, 2, "does not combine with --root"},
        // The diagrams of the sheet are mirrored; the text has none.
        {{"--song", file("open.cho"), "--left-handed"},
         2,
         "option --left-handed changes nothing in the song as text; leave it out"},
        {{"--song", file("open.cho"), "--left-handed", "--pdf", file("l.pdf")}, 0, ""},
        {{"--song", file("open.cho"), "--suggest", "--paper", "letter"},
         2,
         "option --paper changes nothing in --suggest"},
    };
    for (const auto &c : cases) {
        const Outcome run = RunChart(c.args);
        EXPECT_EQ(run.status, c.status) << c.args.join(' ').toStdString() << run.err;
        EXPECT_NE(run.err.find(c.message), std::string::npos)
            << c.args.join(' ').toStdString() << ": " << run.err;
    }
}

} // namespace
