#include "cli/theory.h"

#include "model/chordmodel.h"

#include <algorithm>
#include <bit>
#include <cctype>
#include <charconv>
#include <cstdlib>

namespace varnock::theory {

namespace {

constexpr std::string_view kLetters = "ABCDEFG";
// Semitones above A of the natural notes A..G.
constexpr int kNatural[7] = {0, 2, 3, 5, 7, 8, 10};
constexpr std::string_view kUnicodeSharp = "\u266F";
constexpr std::string_view kUnicodeFlat = "\u266D";

// The degrees a musician names, row by row in the chord popup's order. Only the
// number matters here: it picks the letter; the semitones give the accidental.
const std::vector<std::vector<int>> kDegrees = {
    {1, 3, 5},     {1, 3, 5, 7},  {1, 3, 5, 7}, {1, 3, 5},     {1, 3, 5, 7},  {1, 3, 5},
    {1, 3, 5, 7},  {1, 2, 5},     {1, 4, 5},    {1, 3, 5, 9},  {1, 3, 9},     {1, 3, 5},
    {1, 2, 3, 5},  {1, 5},        {1, 3, 5, 6}, {1, 3, 6, 9},  {1, 6, 7, 9},  {1, 3, 7, 9},
    {1, 5, 7, 11}, {1, 5, 7, 13}, {1, 3, 7, 9}, {1, 5, 7, 11}, {1, 3, 7, 13}, {1, 3, 5, 6},
    {1, 3, 6, 9},  {1, 3, 5, 7},  {1, 3, 7, 9}, {1, 3, 7, 9},  {1, 3, 7, 11}, {1, 3, 7, 13},
    {1, 3, 6, 7},  {1, 4, 5, 7},
};

int Mod12(int n) {
    return (n % 12 + 12) % 12;
}

struct NoteName {
    int letter;     // 0..6 for A..G
    int accidental; // sharps positive, flats negative
};

std::optional<NoteName> ParseName(std::string_view text) {
    if (text.empty())
        return std::nullopt;
    const auto letter =
        kLetters.find(static_cast<char>(std::toupper(static_cast<unsigned char>(text[0]))));
    if (letter == std::string_view::npos)
        return std::nullopt;
    int sharps = 0, flats = 0;
    for (std::size_t i = 1; i < text.size();) {
        if (text[i] == '#' || text[i] == 'x') {
            sharps += text[i] == 'x' ? 2 : 1;
            ++i;
        } else if (text[i] == 'b') {
            ++flats;
            ++i;
        } else if (text.substr(i).starts_with(kUnicodeSharp)) {
            ++sharps;
            i += kUnicodeSharp.size();
        } else if (text.substr(i).starts_with(kUnicodeFlat)) {
            ++flats;
            i += kUnicodeFlat.size();
        } else {
            return std::nullopt;
        }
    }
    // Mixed accidentals ("C#b") are a typo, not a way of writing a note.
    if (sharps > 0 && flats > 0)
        return std::nullopt;
    return NoteName{static_cast<int>(letter), sharps - flats};
}

std::string Join(const std::vector<std::string> &items, std::string_view separator) {
    std::string out;
    for (std::size_t i = 0; i < items.size(); ++i)
        out += (i ? std::string(separator) : "") + items[i];
    return out;
}

// Semitones above the root of each note of a formula such as "4,3,3".
std::vector<int> Offsets(const std::string &formula) {
    std::vector<int> offsets{0};
    for (const std::string &step : Split(formula, ",")) {
        int n = 0;
        const auto [end, error] = std::from_chars(step.data(), step.data() + step.size(), n);
        if (error != std::errc() || end != step.data() + step.size())
            throw BadValue("chord formula \"" + formula + "\" holds \"" + step +
                           "\"; steps are whole numbers separated by commas");
        offsets.push_back(Mod12(offsets.back() + n));
    }
    return offsets;
}

const std::string &Formula(const std::vector<std::string> &formulas, int chordIndex) {
    if (chordIndex < 0 || chordIndex >= static_cast<int>(formulas.size()))
        throw BadValue("chord index " + std::to_string(chordIndex) + " is outside 0.." +
                       std::to_string(formulas.size() - 1));
    return formulas[static_cast<std::size_t>(chordIndex)];
}

std::vector<std::string> ModelFormulas() {
    Module1 m;
    m.Startup(0);
    return m.MajorChordsInt.Items();
}

std::vector<std::string> SpellOffsets(std::string_view rootText, int chordIndex,
                                      const std::vector<int> &offsets) {
    const auto root = ParseName(rootText);
    if (!root)
        throw BadValue("root \"" + std::string(rootText) +
                       "\" is not a note name: a letter A-G then sharps (#) or flats (b)");
    const std::vector<int> &degrees = ChordDegrees(chordIndex);
    if (degrees.size() != offsets.size())
        throw BadValue("chord " + std::to_string(chordIndex) + " has " +
                       std::to_string(offsets.size()) + " notes but " +
                       std::to_string(degrees.size()) + " degrees");
    std::vector<std::string> names{std::string(rootText)};
    for (std::size_t i = 1; i < degrees.size(); ++i) {
        const int letter = (root->letter + degrees[i] - 1) % 7;
        // How far the natural letter sits from where the interval lands, kept
        // to -6..5 so it is the small correction a degree needs (b3, #5, bb7).
        const int delta = Mod12(offsets[i] - (kNatural[letter] - kNatural[root->letter]) + 6) - 6;
        const int accidental = root->accidental + delta;
        names.push_back(kLetters[static_cast<std::size_t>(letter)] +
                        std::string(static_cast<std::size_t>(std::abs(accidental)),
                                    accidental > 0 ? '#' : 'b'));
    }
    return names;
}

// Notes of a chord as a bit set of note indices, so set equality and
// inclusion are one comparison each.
unsigned Mask(const std::vector<int> &notes, int root) {
    unsigned mask = 0;
    for (int n : notes)
        mask |= 1u << Mod12(root + n);
    return mask;
}

// "D", "A and E", "D, F# and A".
std::string InWords(const std::vector<std::string> &items) {
    if (items.size() < 2)
        return Join(items, "");
    return Join(std::vector<std::string>(items.begin(), items.end() - 1), ", ") + " and " +
           items.back();
}

} // namespace

std::optional<int> ParseNote(std::string_view text) {
    const auto name = ParseName(text);
    if (!name)
        return std::nullopt;
    return Mod12(kNatural[name->letter] + name->accidental);
}

std::optional<Spelling> ParseSpelling(std::string_view text) {
    std::string lower(text);
    std::transform(lower.begin(), lower.end(), lower.begin(),
                   [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
    if (lower == "sharps")
        return Spelling::Sharps;
    if (lower == "flats")
        return Spelling::Flats;
    if (lower == "chord")
        return Spelling::Chord;
    return std::nullopt;
}

std::string SharpName(int index) {
    static const char *const names[12] = {"A",  "A#", "B", "C",  "C#", "D",
                                          "D#", "E",  "F", "F#", "G",  "G#"};
    return names[Mod12(index)];
}

std::string FlatName(int index) {
    static const char *const names[12] = {"A",  "Bb", "B", "C",  "Db", "D",
                                          "Eb", "E",  "F", "Gb", "G",  "Ab"};
    return names[Mod12(index)];
}

const std::vector<int> &ChordDegrees(int chordIndex) {
    if (chordIndex < 0 || chordIndex >= kChordTypes)
        throw BadValue("chord index " + std::to_string(chordIndex) + " is outside 0..31");
    return kDegrees[static_cast<std::size_t>(chordIndex)];
}

std::vector<std::string> SpellChord(std::string_view rootText, int chordIndex) {
    static const std::vector<std::string> formulas = ModelFormulas();
    return SpellOffsets(rootText, chordIndex, Offsets(Formula(formulas, chordIndex)));
}

std::string Respell(std::string_view sharpName, Spelling spelling,
                    const std::vector<std::string> &chordSharps,
                    const std::vector<std::string> &chordSpelled) {
    const auto note = ParseNote(sharpName);
    if (!note || spelling == Spelling::Sharps)
        return std::string(sharpName);
    if (spelling == Spelling::Flats)
        return FlatName(*note);
    for (std::size_t i = 0; i < std::min(chordSharps.size(), chordSpelled.size()); ++i)
        if (ParseNote(chordSharps[i]) == note)
            return chordSpelled[i];
    return std::string(sharpName);
}

std::vector<Match> Identify(const std::vector<int> &notes,
                            const std::vector<std::string> &formulas) {
    unsigned wanted = 0;
    std::vector<std::string> names;
    for (int n : notes) {
        if (n < 0 || n > 11)
            throw BadValue("note index " + std::to_string(n) + " is outside 0..11");
        wanted |= 1u << n;
        names.push_back(SharpName(n));
    }
    const int count = std::popcount(wanted);
    if (count < 2 || count > 4)
        throw BadValue("notes \"" + Join(names, ",") + "\" are " + std::to_string(count) +
                       " different notes; a chord here has 2 to 4");
    std::vector<std::vector<int>> offsets;
    for (const std::string &formula : formulas)
        offsets.push_back(Offsets(formula));
    std::vector<Match> exact, wider;
    for (int root = 0; root < 12; ++root)
        for (int chord = 0; chord < static_cast<int>(offsets.size()); ++chord) {
            const unsigned mask = Mask(offsets[static_cast<std::size_t>(chord)], root);
            if (mask == wanted)
                exact.push_back({root, chord, true});
            else if ((mask & wanted) == wanted)
                wider.push_back({root, chord, false});
        }
    exact.insert(exact.end(), wider.begin(), wider.end());
    return exact;
}

std::string FormatMatch(const Match &match, Spelling spelling,
                        const std::vector<std::string> &chordNames,
                        const std::vector<std::string> &formulas) {
    const std::vector<int> offsets = Offsets(Formula(formulas, match.chord));
    const std::string root =
        spelling == Spelling::Flats ? FlatName(match.root) : SharpName(match.root);
    std::vector<std::string> names;
    if (spelling == Spelling::Chord) {
        names = SpellOffsets(root, match.chord, offsets);
    } else {
        for (int n : offsets)
            names.push_back(spelling == Spelling::Flats ? FlatName(match.root + n)
                                                        : SharpName(match.root + n));
    }
    return root + " " + chordNames.at(static_cast<std::size_t>(match.chord)) + ": " +
           Join(names, " ");
}

std::vector<std::optional<int>> ParseFretList(std::string_view text, int strings) {
    if (strings != 3 && strings != 4)
        throw BadValue("the instrument has " + std::to_string(strings) +
                       " strings; fret lists are for 3 or 4");
    std::vector<std::optional<int>> positions;
    for (std::string entry : Split(std::string(text), ",")) {
        // Blanks around an entry are how people type lists; they mean nothing.
        entry.erase(0, entry.find_first_not_of(' '));
        entry.erase(entry.find_last_not_of(' ') + 1);
        if (entry == "x" || entry == "X") {
            positions.push_back(std::nullopt);
            continue;
        }
        int p = 0;
        const auto [end, error] = std::from_chars(entry.data(), entry.data() + entry.size(), p);
        if (error == std::errc::invalid_argument || end != entry.data() + entry.size())
            throw BadValue("position \"" + entry + "\" is not a number or x");
        if (error == std::errc::result_out_of_range || p < 0 || p > kLastPosition)
            throw BadValue("position \"" + entry + "\" is outside 0..22");
        positions.push_back(p);
    }
    if (static_cast<int>(positions.size()) != strings)
        throw BadValue("fret list \"" + std::string(text) + "\" has " +
                       std::to_string(positions.size()) +
                       (positions.size() == 1 ? " position" : " positions") +
                       "; the instrument has " + std::to_string(strings) + " strings");
    return positions;
}

std::vector<int> NotesAtFrets(const std::vector<std::optional<int>> &positions, int mode,
                              const std::vector<int> &openNotes) {
    if (mode < 0 || mode > 5)
        throw BadValue("fret layout " + std::to_string(mode) + " is outside 0..5");
    if (positions.size() != openNotes.size())
        throw BadValue(std::to_string(positions.size()) + " positions for " +
                       std::to_string(openNotes.size()) + " strings");
    Module1 m;
    m.Startup(mode);
    std::vector<int> notes;
    for (std::size_t s = 0; s < positions.size(); ++s) {
        if (!positions[s])
            continue;
        if (*positions[s] < 0 || *positions[s] > kLastPosition)
            throw BadValue("position " + std::to_string(*positions[s]) + " is outside 0..22");
        notes.push_back(Mod12(static_cast<int>(m.Fret_Indices(*positions[s])) + openNotes[s]));
    }
    return notes;
}

std::string Describe(const SheetFacts &facts) {
    const auto strings = static_cast<std::size_t>(std::max(facts.strings, 0));
    if (facts.tuning.size() != strings || facts.cells.size() != strings)
        throw BadValue("a sheet of " + std::to_string(facts.strings) + " strings has " +
                       std::to_string(facts.tuning.size()) + " open notes and " +
                       std::to_string(facts.cells.size()) + " rows");
    std::string out = facts.layoutName + " fretboard, " + std::to_string(facts.strings) +
                      " strings tuned " + Join(facts.tuning, " ") + ".\n";
    out += "Chord: " + facts.chordTitle;
    if (!facts.notes.empty())
        out += ", notes " + InWords(facts.notes) + " (root " + facts.notes[0] + ")";
    out += ".\n";
    for (std::size_t s = 0; s < strings; ++s) {
        const std::vector<std::string> &row = facts.cells[s];
        if (row.size() > facts.fretNames.size())
            throw BadValue("string " + std::to_string(s + 1) + " has " +
                           std::to_string(row.size()) + " cells but there are " +
                           std::to_string(facts.fretNames.size()) + " fret names");
        // Chord notes first, root first; anything else a cell holds after them
        // rather than silently dropped.
        std::vector<std::string> order = facts.notes;
        for (const std::string &cell : row)
            if (!cell.empty() && std::find(order.begin(), order.end(), cell) == order.end())
                order.push_back(cell);
        std::vector<std::string> parts;
        bool any = false;
        for (const std::string &note : order) {
            std::vector<std::string> positions, frets;
            for (std::size_t p = 0; p < row.size(); ++p)
                if (row[p] == note) {
                    positions.push_back(std::to_string(p));
                    frets.push_back(facts.fretNames[p]);
                }
            any = any || !positions.empty();
            const bool one = positions.size() == 1;
            parts.push_back(positions.empty()
                                ? "no " + note
                                : note + (one ? " at position " : " at positions ") +
                                      Join(positions, ", ") + (one ? " (fret " : " (frets ") +
                                      Join(frets, ", ") + ")");
        }
        out += "String " + std::to_string(s + 1) + ", tuned " + facts.tuning[s] + ": " +
               (any ? Join(parts, "; ") : "no chord notes") + ".\n";
    }
    return out;
}

} // namespace varnock::theory
