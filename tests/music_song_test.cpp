// Songs on the board: chord names as songs write them, keys and
// transposition, the ChordPro reader, fingerings of a song's chords and
// --suggest's ranking, on songs written for these tests (tests/songs).

#include "music/chordpro.h"
#include "music/errors.h"
#include "music/suggest.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>
#include <sstream>
#include <tuple>

namespace varnock::music {
namespace {

namespace cat = catalogue;

std::string TypeName(int type) {
    return type < 0 ? "?" : std::string(cat::kChordTypes[static_cast<std::size_t>(type)].name);
}

// "root type /bass" of a chord as read, "-" for what is not there.
std::string Reading(const ChordSymbol &c, NameSystem system) {
    return (c.root ? cat::Format(*c.root, system) : "-") + " " + TypeName(c.type) +
           (c.bass ? " /" + cat::Format(*c.bass, system) : "");
}

TEST(ChordSymbols, ReadOntoTheCatalogue) {
    const struct {
        const char *text;
        NameSystem system;
        const char *reading;
    } cases[] = {
        {"C", NameSystem::English, "C Maj"},
        {"Cm", NameSystem::English, "C m"},
        {"Cmin", NameSystem::English, "C m"},
        {"C-", NameSystem::English, "C m"},
        {"C-7", NameSystem::English, "C m7"},
        {"Cmaj7", NameSystem::English, "C maj7"},
        {"CM7", NameSystem::English, "C maj7"},
        {"C\u0394", NameSystem::English, "C maj7"},
        {"C\u03949", NameSystem::English, "C maj9"},
        {"CM", NameSystem::English, "C Maj"},
        {"Cdim", NameSystem::English, "C Dim"},
        {"C\u00B07", NameSystem::English, "C Dim7"},
        {"Caug", NameSystem::English, "C Aug"},
        {"C+", NameSystem::English, "C Aug"},
        {"Csus", NameSystem::English, "C Sus4"},
        {"Csus2", NameSystem::English, "C Sus2"},
        {"C7sus4", NameSystem::English, "C 7sus4"},
        {"Cadd9", NameSystem::English, "C add9"},
        {"C6/9", NameSystem::English, "C 6/9"},
        {"Cm(maj7)", NameSystem::English, "C mmaj7"},
        {"Cm7b5", NameSystem::English, "C ?"},
        {"C7#9", NameSystem::English, "C ?"},
        {"F#m7", NameSystem::English, "F# m7"},
        {"E\u266Dm", NameSystem::English, "Eb m"},
        {"Bbmaj7/D", NameSystem::English, "Bb maj7 /D"},
        {"D/F#", NameSystem::English, "D Maj /F#"},
        {"H7", NameSystem::English, "- ?"},
        {"N.C.", NameSystem::English, "- ?"},
        {"Esus4", NameSystem::German, "E Sus4"},
        {"Esm", NameSystem::German, "Es m"},
        {"Fism", NameSystem::German, "Fis m"},
        {"Hm7/Fis", NameSystem::German, "H m7 /Fis"},
        {"Lam", NameSystem::Latin, "La m"},
        {"Sib7", NameSystem::Latin, "Sib 7"},
    };
    for (const auto &c : cases)
        EXPECT_EQ(Reading(ReadChordSymbol(c.text, c.system), c.system), c.reading) << c.text;
}

TEST(ChordSymbols, MoveAsAMusicianWritesThemInTheNewKey) {
    const struct {
        const char *key;
        int semitones;
        const char *chords; // in the old key
        const char *moved;  // the new key, then the chords
    } cases[] = {
        {"D", 1, "D G A7 Bm F#m", "Eb: Eb Ab Bb7 Cm Gm"},
        {"G", -5, "G C D/F# Em", "D: D G A/C# Bm"},
        {"F", 2, "F Bb C7 Dm", "G: G C D7 Em"},
        {"Am", 3, "Am Dm E7 G#dim", "Cm: Cm Fm G7 Bdim"},
        {"C", 6, "C D/F# Bb", "F#: F# G#/B# E"},
        {"E", 1, "E B7 C#m", "F: F C7 Dm"},
        {"Bb", -1, "Bb Eb F7 Cb", "A: A D E7 Bb"},
        // Chords off the key, written by their sound: named as the degree
        // that distance usually is, never E# or B# off the scale.
        {"Eb", -1, "B F# C# E A", "D: Bb F C Eb G#"},
        {"Eb", 1, "B F# C#", "E: C G D"},
        {"C", 7, "C#dim7 D#dim F#m7b5 Ab", "G: G#dim7 A#dim C#m7b5 Eb"},
        {"C", 6, "Bdim G/B", "F#: E#dim C#/E#"},
        {"Eb", 2, "Gbdim F#dim", "F: Abdim G#dim"},
    };
    for (const auto &c : cases) {
        const Key from = *ReadKey(c.key);
        const Key to = TransposeKey(from, c.semitones);
        std::string moved = WriteKey(to) + ":";
        std::istringstream chords(c.chords);
        for (std::string name; chords >> name;)
            moved += " " + WriteChordSymbol(TransposeChord(ReadChordSymbol(name), from, to));
        EXPECT_EQ(moved, c.moved) << c.key << " " << c.semitones;
    }
    // Among German names, an English "Bb" is no note to move.
    Song german = ReadChordPro("[D]a [Bb]b [Fis]c");
    MoveSong(german, *ReadKey("D"), *ReadKey("E"), NameSystem::German);
    EXPECT_EQ(ChordNames(german), (std::vector<std::string>{"E", "Bb", "Gis"}));
    EXPECT_FALSE(ReadKey("H"));
    EXPECT_FALSE(ReadKey("C7"));
    EXPECT_EQ(ReadKey("Ebmin"), (Key{{4, -1}, true}));
}

// What a reader made of a song, in one line: its facts, each lyric line with
// its chords at their offsets, then the warnings.
std::string Summary(const Song &song) {
    std::string out = song.title + "|" + song.artist + "|" + song.key + "|" + song.capo + "|" +
                      (song.transpose ? std::to_string(*song.transpose) : "") +
                      (song.latin1 ? "|latin1" : "");
    const char *kinds[] = {"", "blank", "comment", "start", "end", "chorus", "tab", "kept"};
    for (const SongLine &line : song.lines) {
        out += "\n" + (line.section.empty() ? "" : line.section + ": ") +
               kinds[static_cast<int>(line.kind)] +
               (line.kind == SongLine::Kind::Lyrics ? "" : " ") + line.text;
        for (const PlacedChord &chord : line.chords)
            out += " [" + std::string(chord.annotation ? "*" : "") + chord.name + "@" +
                   std::to_string(chord.at) + "]";
    }
    for (const std::string &w : song.warnings)
        out += "\n! " + w;
    return out;
}

TEST(ChordPro, ReadAsItsUsersWriteIt) {
    const struct {
        std::string file;
        const char *read;
    } cases[] = {
        {"{t: Short}\n{st: sub}\n{artist: Me}\n{key: G}\n{capo: 2}\n{transpose: -2}\n[G]Hello "
         "[C]world",
         "Short|Me|G|2|-2\nHello world [G@0] [C@6]"},
        {"{title:Long}\r\n{comment: play softly}\r\n{c:short}\r\n# not printed\r\n\r\nla [D]la[A7]",
         "Long||||\ncomment play softly\ncomment short\nkept # not printed\nblank \nla la [D@3] "
         "[A7@5]"},
        {"{soc: Refrain}\nSing [D]on\n{eoc}\n{chorus}\n{start_of_bridge}\nx\n{eob}",
         "||||\nchorus: start Refrain\nchorus: Sing on [D@5]\nchorus: end \nchorus \nbridge: "
         "start \nbridge: x\nbridge: end "},
        {"{sot}\n[D] not a chord |--2--|\n{eot}\n{start_of_verse: label=\"V1\"}\n[*riff]a",
         "||||\ntab: start \ntab: tab [D] not a chord |--2--|\ntab: end \nverse: start "
         "V1\nverse: a "
         "[*riff@0]"},
        {"{define: D base-fret 1 frets 0 0 2}\n{tempo: 90}\n{meta: x y}\n{transpose: two}\n[D]a",
         "||||\nkept {tempo: 90}\nkept {meta: x y}\nkept {transpose: two}\na [D@0]"},
        {"caf\xE9 [D]ol\xE9\n", "|||||latin1\ncaf\xC3\xA9 ol\xC3\xA9 [D@6]"},
        {"\xEF\xBB\xBF\xC3\xA9t\xC3\xA9 [Am]sun [C\nnext",
         "||||\n\xC3\xA9t\xC3\xA9 sun [C [Am@6]\nnext\n! line 1, column 13: unclosed [; the rest "
         "of the line is printed as text"},
        {"{title: broken\n[G]go", "||||\n{title: broken\ngo [G@0]\n! line 1, column 1: unclosed "
                                  "{; the rest of the line is printed as text"},
    };
    for (const auto &c : cases)
        EXPECT_EQ(Summary(ReadChordPro(c.file)), c.read) << c.file;
    EXPECT_THROW(ReadChordPro(std::string("PK\x03\x04\0\0", 6)), BadInput);
}

Song SongFile(const std::string &name) {
    std::ifstream in(std::string(VARNOCK_SOURCE_DIR) + "/tests/songs/" + name);
    std::stringstream bytes;
    bytes << in.rdbuf();
    return ReadChordPro(bytes.str());
}

std::vector<ChordSymbol> Symbols(const Song &song) {
    std::vector<ChordSymbol> chords;
    for (const std::string &name : ChordNames(song))
        chords.push_back(ReadChordSymbol(name));
    return chords;
}

constexpr int kD = 5, kA = 0, kG = 10;

// "D=0,0,2": each chord's fingering within the default limits; "(r)" when
// only past them, "none" when the board has no fingering at all.
std::string Fingerings(const std::vector<ChordSymbol> &chords, int mode) {
    std::string out;
    for (const ChordSymbol &chord : chords) {
        const PlacedShape shape = PlaceChord(BoardFor(mode, {kD, kA, kD}), chord, Limits{});
        out += (out.empty() ? "" : " ") + chord.written + "=";
        if (!shape.fingering)
            out += "none";
        for (std::size_t s = 0; shape.fingering && s < shape.fingering->positions.size(); ++s) {
            const int p = shape.fingering->positions[s];
            out += (s ? "," : "") + (p == kMuted ? std::string("x") : std::to_string(p));
        }
        out += shape.relaxed ? "(r)" : "";
    }
    return out;
}

SuggestRequest Request(const Song &song, int mode, std::vector<std::vector<int>> tunings) {
    SuggestRequest request;
    request.mode = mode;
    request.tunings = std::move(tunings);
    const std::vector<std::string> names = FretNames(mode);
    const int seventh =
        static_cast<int>(std::find(names.begin(), names.end(), "7") - names.begin());
    for (int capo = 0; capo <= seventh; ++capo)
        request.capos.push_back(capo);
    request.chords = Symbols(song);
    request.uses = ChordUses(song);
    return request;
}

// "+2 capo 1 t0 5/5": the best suggestion.
std::string Best(const SuggestRequest &request) {
    const Suggestion s = Suggest(request, 1).front();
    return (s.semitones > 0 ? "+" : "") + std::to_string(s.semitones) + " capo " +
           std::to_string(s.capo) + " t" + std::to_string(s.tuning) + " " +
           std::to_string(s.playable) + "/" + std::to_string(s.known);
}

// Each song on D A D diatonic, without and with 6+: its chords, the
// fingering each gets, and the best key and capo. Where D A D cannot make a
// chord (F, Bb, C7 have notes the board lacks), the table says so.
TEST(Songs, ChordsFingeringsAndBestSuggestion) {
    const struct {
        const char *file, *chords;
        const char *diatonic, *best;
        const char *with6plus, *best6plus;
    } cases[] = {
        {"river-in-d.cho", "D G A", "D=0,0,2 G=3,1,0 A=4,2,1", "0 capo 0 t0 3/3",
         "D=0,0,2 G=3,1,0 A=7,0,9", "0 capo 0 t0 3/3"},
        {"mill-in-g.cho", "G C D", "G=3,1,0 C=6,4,3 D=0,0,2", "-5 capo 0 t0 3/3",
         "G=3,1,0 C=6,4,3 D=0,0,2", "-5 capo 0 t0 3/3"},
        {"harbour-in-f.cho", "F Bb C7", "F=none(r) Bb=none(r) C7=none(r)", "-3 capo 0 t0 3/3",
         "F=none(r) Bb=none(r) C7=none(r)", "-3 capo 0 t0 3/3"},
        {"lament-in-am.cho", "Am Dm E7 C G", "Am=6,0,8 Dm=none(r) E7=none(r) C=6,4,3 G=3,1,0",
         "+2 capo 0 t0 4/5", "Am=6,0,9 Dm=none(r) E7=9,7,0 C=6,4,3 G=3,1,0", "+2 capo 0 t0 4/5"},
        {"odd-chords.cho", "D D/F# G/B Bb Am7b5 A7sus4 C7#9",
         "D=0,0,2 D/F#=2,0,0 G/B=5,6,0 Bb=none(r) Am7b5=none A7sus4=0,0,3 C7#9=none",
         "-5 capo 0 t0 4/5",
         "D=0,0,2 D/F#=2,0,0 G/B=5,6,0 Bb=none(r) Am7b5=none A7sus4=0,0,3 C7#9=none",
         "+2 capo 1 t0 5/5"},
    };
    for (const auto &c : cases) {
        const Song song = SongFile(c.file);
        const std::vector<ChordSymbol> chords = Symbols(song);
        std::string names;
        for (const ChordSymbol &chord : chords)
            names += (names.empty() ? "" : " ") + chord.written;
        EXPECT_EQ(names, c.chords) << c.file;
        EXPECT_EQ(Fingerings(chords, 0), c.diatonic) << c.file;
        EXPECT_EQ(Fingerings(chords, 1), c.with6plus) << c.file;
        EXPECT_EQ(Best(Request(song, 0, {{kD, kA, kD}})), c.best) << c.file;
        EXPECT_EQ(Best(Request(song, 1, {{kD, kA, kD}})), c.best6plus) << c.file;
    }
}

// The ranking worked out the long way, every chord as played, with no cache
// (a chord missing or awkward counts once, its hand every time it is played):
// it must order the options as Suggest does.
TEST(Songs, SuggestAgreesWithBruteForce) {
    for (const char *file : {"lament-in-am.cho", "odd-chords.cho"}) {
        const Song song = SongFile(file);
        const SuggestRequest request = Request(song, 1, {{kD, kA, kD}, {kD, kA, kA}, {kD, kG, kD}});
        std::vector<std::tuple<int, int, int, int, bool, int, bool, int>> brute;
        for (std::size_t t = 0; t < request.tunings.size(); ++t) {
            const Board board = BoardFor(request.mode, request.tunings[t]);
            for (int capo : request.capos) {
                for (int shift = -5; shift <= 6; ++shift) {
                    int missing = 0, awkward = 0, hands = 0;
                    std::vector<std::string> counted;
                    for (const SongLine &line : song.lines) {
                        for (const PlacedChord &placed : line.chords) {
                            ChordSymbol chord = ReadChordSymbol(placed.name);
                            const bool first = std::find(counted.begin(), counted.end(),
                                                         placed.name) == counted.end();
                            counted.push_back(placed.name);
                            if (!chord.Known())
                                continue;
                            chord.root = {chord.root->letter, chord.root->accidental + shift};
                            Limits limits;
                            limits.capo = capo;
                            limits.highest = std::min(capo + 7, kLastPosition);
                            auto found = FindFingerings(board, SymbolTones(chord), limits);
                            const bool easy = !found.fingerings.empty();
                            limits.highest = kLastPosition;
                            limits.mutedOk = true;
                            if (!easy)
                                found = FindFingerings(board, SymbolTones(chord), limits);
                            if (found.fingerings.empty()) {
                                missing += first ? 1 : 0;
                                continue;
                            }
                            hands += found.fingerings.front().hand;
                            awkward += easy || !first ? 0 : 1;
                        }
                    }
                    brute.emplace_back(missing, awkward, hands, capo, shift != 0, std::abs(shift),
                                       shift < 0, static_cast<int>(t));
                }
            }
        }
        std::sort(brute.begin(), brute.end());
        const std::vector<Suggestion> ranked = Suggest(request, 10);
        ASSERT_EQ(ranked.size(), 10u);
        for (std::size_t i = 0; i < ranked.size(); ++i) {
            EXPECT_EQ(ranked[i].capo, std::get<3>(brute[i])) << file << " " << i;
            EXPECT_EQ(ranked[i].tuning, std::get<7>(brute[i])) << file << " " << i;
            EXPECT_EQ(std::abs(ranked[i].semitones), std::get<5>(brute[i])) << file << " " << i;
            EXPECT_EQ(ranked[i].semitones < 0, std::get<6>(brute[i])) << file << " " << i;
        }
    }
}

} // namespace
} // namespace varnock::music
