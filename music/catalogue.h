#pragma once

// The music the program knows, each fact written once: the letters and the
// twelve note names (the model's sharps and their flats), the accidentals a
// player may type, and the 32 chord types as display name, formula and the
// degree of every chord tone. The model's arrays, the chord popup and every
// name the export command reads or writes come from here. No Qt.
//
// A note index counts semitones above A, 0..11, as in the chord model.

#include <array>
#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace varnock::catalogue {

// --- Notes ------------------------------------------------------------------

inline constexpr int kNoteCount = 12;

// The natural notes: letter and semitones above A.
inline constexpr std::string_view kLetters = "ABCDEFG";
inline constexpr std::array<int, 7> kNaturals = {0, 2, 3, 5, 7, 8, 10};
// The major scale: semitones above the root of degrees 1..7, against which
// every degree label ("b3", "#4", "bb7") is counted.
inline constexpr std::array<int, 7> kMajorScale = {0, 2, 4, 5, 7, 9, 11};

// Each note index's two names. The sharp is the model's name, which is also
// the key it compares notes by, so it is spelled exactly so.
struct NoteNames {
    std::string_view sharp, flat;
};
inline constexpr std::array<NoteNames, kNoteCount> kNotes = {{
    {"A", "A"},
    {"A#", "Bb"},
    {"B", "B"},
    {"C", "C"},
    {"C#", "Db"},
    {"D", "D"},
    {"D#", "Eb"},
    {"E", "E"},
    {"F", "F"},
    {"F#", "Gb"},
    {"G", "G"},
    {"G#", "Ab"},
}};

// What may follow a letter, any number of times, sharps or flats but not both.
struct Accidental {
    std::string_view text;
    int semitones;
};
inline constexpr std::array<Accidental, 7> kAccidentals = {{
    {"#", 1},
    {"\u266F", 1},     // ♯
    {"x", 2},          // double sharp as typed
    {"\U0001D12A", 2}, // 𝄪
    {"b", -1},
    {"\u266D", -1},     // ♭
    {"\U0001D12B", -2}, // 𝄫
}};

// What a player may type for a note, told in the messages that refuse one.
inline constexpr std::string_view kNoteNameRule =
    "a letter A-G then sharps (#, \u266F, x for two) or flats (b, \u266D)";

constexpr int Mod12(int n) {
    return (n % 12 + 12) % 12;
}

// A note as written: its letter and how far the accidentals move it.
struct WrittenNote {
    int letter = 0;     // 0..6 for A..G
    int accidental = 0; // sharps positive, flats negative
    constexpr int Index() const {
        return Mod12(kNaturals[static_cast<std::size_t>(letter)] + accidental);
    }
    constexpr bool operator==(const WrittenNote &) const = default;
};

// The note names players grew up with. English: C D E F G A B with sharps and
// flats (the program's own). German: H for B and B for Bb, sharps and flats
// as endings (Fis, Es, As, Heses). Latin: Do Re Mi Fa Sol La Si, then sharps
// and flats as in English.
enum class NameSystem { English, German, Latin };

struct NameSystemInfo {
    NameSystem system;
    std::string_view name;    // as --names takes it
    std::string_view example; // one octave from C, as the help shows it
    std::string_view rule;    // what a player may type, for messages
};
inline constexpr std::array<NameSystemInfo, 3> kNameSystems = {{
    {NameSystem::English, "english", "C C# D Eb E F F# G Ab A Bb B", kNoteNameRule},
    {NameSystem::German, "german", "C Cis D Es E F Fis G As A B H",
     "C D E F G A H, then is for a sharp, es for a flat (Fis, Es, As), B for Bb"},
    {NameSystem::Latin, "latin", "Do Do# Re Mib Mi Fa Fa# Sol Lab La Sib Si",
     "Do Re Mi Fa Sol La Si, then sharps (#, \u266F, x for two) or flats (b, \u266D)"},
}};

constexpr const NameSystemInfo &SystemInfo(NameSystem system) {
    return kNameSystems[static_cast<std::size_t>(system)];
}
// The first system but `system` whose names `reads` takes (a name written
// in another system than the one chosen); nullptr for none.
template <typename Reads> const NameSystemInfo *OtherSystem(NameSystem system, Reads reads) {
    for (const NameSystemInfo &other : kNameSystems)
        if (other.system != system && reads(other.system))
            return &other;
    return nullptr;
}

// The letter (0..6 for A..G) each Latin syllable stands for, in letter order.
inline constexpr std::array<std::string_view, 7> kSyllables = {"La", "Si", "Do", "Re",
                                                               "Mi", "Fa", "Sol"};

namespace detail {
constexpr char Upper(char c) {
    return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c;
}
constexpr bool StartsNoCase(std::string_view text, std::string_view prefix) {
    if (text.size() < prefix.size())
        return false;
    for (std::size_t i = 0; i < prefix.size(); ++i)
        if (Upper(text[i]) != Upper(prefix[i]))
            return false;
    return true;
}
// Sharps or flats after the letter; German also takes "is" and "es" endings.
// nullopt for anything else or for both directions at once ("C#b" is a typo).
constexpr std::optional<int> ReadAccidentals(std::string_view rest, bool endings) {
    int up = 0, down = 0;
    for (std::size_t i = 0; i < rest.size();) {
        bool known = false;
        if (endings && (StartsNoCase(rest.substr(i), "is") || StartsNoCase(rest.substr(i), "es"))) {
            (Upper(rest[i]) == 'I' ? up : down) += Upper(rest[i]) == 'I' ? 1 : -1;
            i += 2;
            known = true;
        }
        for (const Accidental &a : kAccidentals) {
            if (!known && rest.substr(i).starts_with(a.text)) {
                (a.semitones > 0 ? up : down) += a.semitones;
                i += a.text.size();
                known = true;
            }
        }
        if (!known)
            return std::nullopt;
    }
    if (up != 0 && down != 0)
        return std::nullopt;
    return up + down;
}
} // namespace detail

// A note in the chosen system: English a letter A-G in either case, then any
// number of accidentals of one direction; German its letters and endings
// (also "#" and "b" after the letter); Latin a syllable in any case, then
// accidentals. Also a menu item's "F# / Gb" when both halves name one note.
// nullopt for anything else ("", "H" in English, "C#b", " C", "C#m").
constexpr std::optional<WrittenNote> ParseWritten(std::string_view text,
                                                  NameSystem system = NameSystem::English) {
    if (const auto slash = text.find(" / "); slash != std::string_view::npos) {
        const auto first = ParseWritten(text.substr(0, slash), system);
        const auto second = ParseWritten(text.substr(slash + 3), system);
        if (!first || !second || first->Index() != second->Index())
            return std::nullopt;
        return first;
    }
    if (text.empty())
        return std::nullopt;
    int letter = -1;
    std::size_t length = 1;
    int shift = 0;
    if (system == NameSystem::Latin) {
        for (std::size_t l = 0; l < kSyllables.size(); ++l)
            if (detail::StartsNoCase(text, kSyllables[l])) {
                letter = static_cast<int>(l);
                length = kSyllables[l].size();
            }
    } else if (system == NameSystem::German) {
        const char c = detail::Upper(text[0]);
        if (c == 'H') {
            letter = 1;
        } else if (c == 'B') {
            // B is already the flat of H and takes no ending of its own.
            if (text.size() > 1)
                return std::nullopt;
            letter = 1;
            shift = -1;
        } else if (c >= 'A' && c <= 'G') {
            letter = c - 'A';
            // As and Es: the flat ending without its "e".
            if ((c == 'A' || c == 'E') && text.size() > 1 && detail::Upper(text[1]) == 'S') {
                length = 2;
                shift = -1;
            }
        }
    } else {
        const auto at = kLetters.find(detail::Upper(text[0]));
        letter = at == std::string_view::npos ? -1 : static_cast<int>(at);
    }
    if (letter < 0)
        return std::nullopt;
    const auto accidental =
        detail::ReadAccidentals(text.substr(length), system == NameSystem::German);
    if (!accidental || (shift < 0 && *accidental > 0))
        return std::nullopt;
    return WrittenNote{letter, *accidental + shift};
}

// The note index a name stands for; nullopt where ParseWritten refuses it.
constexpr std::optional<int> ParseNote(std::string_view text,
                                       NameSystem system = NameSystem::English) {
    const auto written = ParseWritten(text, system);
    if (!written)
        return std::nullopt;
    return written->Index();
}

// The system of a --names value in any case; nullopt for none.
std::optional<NameSystem> FindNameSystem(std::string_view name);

// A note written in one system, written in another ("F#" in German is
// "Fis"); the text unchanged when it is no note name in `from`.
std::string Translate(std::string_view text, NameSystem from, NameSystem to);

// "C##", "Ebb": the letter and one '#' or 'b' per semitone; German "Cisis",
// "Heses", Latin "Do##", "Mibb".
std::string Format(const WrittenNote &note, NameSystem system = NameSystem::English);

// The model's name and the flat name of a note index, taken mod 12.
std::string SharpName(int index);
std::string FlatName(int index);
// The root menu's item: both names where the note has two ("A# / Bb").
std::string RootItem(int index);

// --- Chord types --------------------------------------------------------------

inline constexpr int kChordTypeCount = 32;
inline constexpr int kMaxChordNotes = 4;

// A chord type: its name in the chord popup, its formula (steps in semitones,
// each counted from the previous note, the first from the root) and the
// degree of each of its notes in formula order ("R", "b3", "#5", "bb7", "9"):
// the number picks the letter, the accidental says where the tone lies against
// the major scale. Empty past the last note.
struct ChordType {
    std::string_view name;
    std::string_view formula;
    std::array<std::string_view, kMaxChordNotes> degrees;
};

// The order is the chord popup's and the model's formulas'; it is not sorted.
// Some pairs stand as the program has always had them though a musician would
// write them otherwise ("maj6/9" on the minor third, "9/6" sixth first).
inline constexpr std::array<ChordType, kChordTypeCount> kChordTypes = {{
    {"Maj", "4,3", {"R", "3", "5"}},
    {"7", "4,3,3", {"R", "3", "5", "b7"}},
    {"maj7", "4,3,4", {"R", "3", "5", "7"}},
    {"m", "3,4", {"R", "b3", "5"}},
    {"m7", "3,4,3", {"R", "b3", "5", "b7"}},
    {"Dim", "3,3", {"R", "b3", "b5"}},
    {"Dim7", "3,3,3", {"R", "b3", "b5", "bb7"}},
    {"Sus2", "2,5", {"R", "2", "5"}},
    {"Sus4", "5,2", {"R", "4", "5"}},
    {"add9", "4,3,7", {"R", "3", "5", "9"}},
    {"madd9", "3,11", {"R", "b3", "9"}},
    {"Aug", "4,4", {"R", "3", "#5"}},
    {"2", "2,2,3", {"R", "2", "3", "5"}},
    {"5", "7", {"R", "5"}},
    {"6", "4,3,2", {"R", "3", "5", "6"}},
    {"6/9", "4,5,5", {"R", "3", "6", "9"}},
    {"9/6", "9,1,4", {"R", "6", "b7", "9"}},
    {"9", "4,6,4", {"R", "3", "b7", "9"}},
    {"11", "7,3,7", {"R", "5", "b7", "11"}},
    {"13", "7,3,11", {"R", "5", "b7", "13"}},
    {"maj9", "4,7,3", {"R", "3", "7", "9"}},
    {"maj11", "7,4,6", {"R", "5", "7", "11"}},
    {"maj13", "4,7,10", {"R", "3", "7", "13"}},
    {"m6", "3,4,2", {"R", "b3", "5", "6"}},
    {"maj6/9", "3,6,5", {"R", "b3", "6", "9"}},
    {"mmaj7", "3,4,4", {"R", "b3", "5", "7"}},
    {"mmaj9", "3,8,3", {"R", "b3", "7", "9"}},
    {"m9", "3,7,4", {"R", "b3", "b7", "9"}},
    {"m11", "3,7,7", {"R", "b3", "b7", "11"}},
    {"m13", "3,7,11", {"R", "b3", "b7", "13"}},
    {"7/6", "4,5,1", {"R", "3", "6", "b7"}},
    {"7sus4", "5,2,3", {"R", "4", "5", "b7"}},
}};

// The notes of a chord type as semitones above the root, mod 12, in formula
// order; `count` of them are used.
struct Offsets {
    std::array<int, kMaxChordNotes> semitones{};
    int count = 0;
};

// Reads a formula of one to three whole steps joined by ","; count 0 for one
// that is malformed (empty step, sign, blank) or longer.
constexpr Offsets FormulaOffsets(std::string_view formula) {
    Offsets out;
    out.count = 1;
    int sum = 0, step = 0;
    bool digits = false;
    for (std::size_t i = 0; i <= formula.size(); ++i) {
        if (i == formula.size() || formula[i] == ',') {
            if (!digits || out.count == kMaxChordNotes)
                return {};
            sum += step;
            out.semitones[static_cast<std::size_t>(out.count++)] = Mod12(sum);
            step = 0;
            digits = false;
        } else if (formula[i] >= '0' && formula[i] <= '9') {
            step = step * 10 + (formula[i] - '0');
            digits = true;
        } else {
            return {};
        }
    }
    return out;
}

// A degree's number ("R" is 1, "b7" is 7), and its tone in semitones above
// the root, mod 12, counted from the major scale; 0 number for a label that is none.
struct Degree {
    int number = 0;
    int semitones = 0;
};
constexpr Degree ParseDegree(std::string_view label) {
    if (label == "R")
        return {1, 0};
    int shift = 0;
    std::size_t i = 0;
    for (; i < label.size() && (label[i] == 'b' || label[i] == '#'); ++i)
        shift += label[i] == '#' ? 1 : -1;
    int number = 0;
    for (; i < label.size(); ++i) {
        if (label[i] < '0' || label[i] > '9')
            return {};
        number = number * 10 + (label[i] - '0');
    }
    if (number < 1 || number > 13)
        return {};
    return {number, Mod12(kMajorScale[static_cast<std::size_t>((number - 1) % 7)] + shift)};
}

// The chord type of a display name, matched exactly (case counts: "M" is not
// "m"); nullopt for none.
std::optional<int> FindChordType(std::string_view name);

// The semitone offsets of chord type `index` (0..31), from its formula.
Offsets ChordOffsets(int index);

} // namespace varnock::catalogue
