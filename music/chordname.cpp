#include "music/chordname.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <cstdlib>
#include <utility>

namespace varnock::music {

namespace cat = catalogue;

namespace {

bool StartsNoCase(std::string_view text, std::string_view word) {
    if (text.size() < word.size())
        return false;
    for (std::size_t i = 0; i < word.size(); ++i)
        if (std::tolower(static_cast<unsigned char>(text[i])) != word[i])
            return false;
    return true;
}

bool IsDigit(char c) {
    return c >= '0' && c <= '9';
}

// The quality in one notation: "m" for minor, "maj" for a major seventh's
// family, "dim", "aug", "sus", "add" in lower case, "b" and "#" for altered
// tones. The case of a lone M or m is what tells them apart.
std::string Normalise(std::string_view q) {
    std::string out;
    for (std::size_t i = 0; i < q.size();) {
        const std::string_view rest = q.substr(i);
        auto take = [&](std::size_t length, std::string_view as) {
            out += as;
            i += length;
        };
        if (rest[0] == ' ' || rest[0] == '(' || rest[0] == ')') {
            ++i;
        } else if (StartsNoCase(rest, "major")) {
            take(5, "maj");
        } else if (StartsNoCase(rest, "maj")) {
            take(3, "maj");
        } else if (StartsNoCase(rest, "minor")) {
            take(5, "m");
        } else if (StartsNoCase(rest, "min")) {
            take(3, "m");
        } else if (StartsNoCase(rest, "mi") && (rest.size() == 2 || IsDigit(rest[2]))) {
            take(2, "m");
        } else if (rest.starts_with("ma") && rest.size() > 2 && IsDigit(rest[2])) {
            take(2, "maj");
        } else if (StartsNoCase(rest, "dim")) {
            take(3, "dim");
        } else if (StartsNoCase(rest, "aug")) {
            take(3, "aug");
        } else if (StartsNoCase(rest, "sus")) {
            take(3, "sus");
        } else if (StartsNoCase(rest, "add")) {
            take(3, "add");
        } else if (rest.starts_with("\u0394") || rest.starts_with("\u25B3") || rest[0] == '^') {
            // A triangle alone is the major seventh; before a number, its family.
            const std::size_t length = rest[0] == '^' ? 1 : rest.starts_with("\u0394") ? 2 : 3;
            take(length, rest.size() > length && IsDigit(rest[length]) ? "maj" : "maj7");
        } else if (rest.starts_with("\u00B0") || rest[0] == 'o') {
            take(rest[0] == 'o' ? 1 : 2, "dim");
        } else if (rest.starts_with("\u00F8") || rest.starts_with("\u00D8")) {
            take(2, "m7b5");
            if (i < q.size() && q[i] == '7')
                ++i;
        } else if (rest.starts_with("\u266D")) {
            take(3, "b");
        } else if (rest.starts_with("\u266F")) {
            take(3, "#");
        } else if (rest[0] == 'M') {
            take(1, "maj");
        } else if (rest[0] == '-') {
            // At the start a minor; before a number a flattened tone (m7-5).
            take(1, out.empty() ? "m" : "b");
        } else if (rest[0] == '+' && rest.size() > 1 && IsDigit(rest[1]) && !out.empty()) {
            take(1, "#");
        } else {
            take(1, rest.substr(0, 1));
        }
    }
    return out;
}

// Other ways of writing a quality the table below holds.
constexpr std::array<std::pair<std::string_view, std::string_view>, 13> kAliases = {{
    {"maj", ""},
    {"sus", "sus4"},
    {"7sus", "7sus4"},
    {"69", "6/9"},
    {"6add9", "6/9"},
    {"m69", "m6/9"},
    {"madd2", "madd9"},
    {"7add6", "7/6"},
    {"+", "aug"},
    {"#5", "aug"},
    {"aug5", "aug"},
    {"mmaj", "mmaj7"},
    {"majadd9", "add9"},
}};

// Each quality in the one notation, and the catalogue's name of its type.
constexpr std::array<std::pair<std::string_view, std::string_view>, 33> kQualities = {{
    {"", "Maj"},        {"7", "7"},         {"maj7", "maj7"},   {"m", "m"},
    {"m7", "m7"},       {"dim", "Dim"},     {"dim7", "Dim7"},   {"sus2", "Sus2"},
    {"sus4", "Sus4"},   {"add9", "add9"},   {"madd9", "madd9"}, {"aug", "Aug"},
    {"2", "2"},         {"add2", "2"},      {"5", "5"},         {"6", "6"},
    {"6/9", "6/9"},     {"9/6", "9/6"},     {"9", "9"},         {"11", "11"},
    {"13", "13"},       {"maj9", "maj9"},   {"maj11", "maj11"}, {"maj13", "maj13"},
    {"m6", "m6"},       {"m6/9", "maj6/9"}, {"mmaj7", "mmaj7"}, {"mmaj9", "mmaj9"},
    {"m9", "m9"},       {"m11", "m11"},     {"m13", "m13"},     {"7/6", "7/6"},
    {"7sus4", "7sus4"},
}};

// The note `semitones` above `note` on the letter `steps` letters up.
WrittenNote Move(const WrittenNote &note, int steps, int semitones) {
    const int letter = (note.letter + steps % 7 + 7) % 7;
    const int target = cat::Mod12(note.Index() + semitones);
    const int accidental =
        cat::Mod12(target - cat::kNaturals[static_cast<std::size_t>(letter)] + 6) - 6;
    return {letter, accidental};
}

// A note with at most one accidental: as it is, or its sharp or flat name.
WrittenNote Plain(const WrittenNote &note, bool flats) {
    if (std::abs(note.accidental) <= 1)
        return note;
    const cat::NoteNames &names = cat::kNotes[static_cast<std::size_t>(note.Index())];
    return *cat::ParseWritten(flats ? names.flat : names.sharp);
}

// The note `above` semitones over the major tonic `tonic`, named as the
// degree players mean by that distance, whatever the old key's name for it
// was (a B chord in Eb is its flat sixth): the flat side (b2, b3, b6, b7) but
// for a diminished chord's leading root (#1, #2, #5, #6) unless written on
// the flat side (`written`, its letters above the tonic), and #4. A degree
// off the scale is named plainly: F, not E#.
WrittenNote Degree(const WrittenNote &tonic, int above, int written, bool leading, bool flats) {
    constexpr std::array<int, 12> flatSide = {0, 1, 1, 2, 2, 3, 3, 4, 5, 5, 6, 6};
    constexpr std::array<int, 12> sharpSide = {0, 0, 1, 1, 2, 3, 3, 4, 4, 5, 5, 6};
    constexpr std::array<int, 7> scale = {0, 2, 4, 5, 7, 9, 11};
    const auto at = static_cast<std::size_t>(above);
    // A diminished chord goes where its written name leads: Gb° down, F#° up.
    const int steps = leading && written != flatSide[at] ? sharpSide[at] : flatSide[at];
    const WrittenNote note = Move(tonic, steps, above);
    const bool natural = std::find(cat::kNaturals.begin(), cat::kNaturals.end(), note.Index()) !=
                         cat::kNaturals.end();
    if (scale[static_cast<std::size_t>(steps)] == above || !natural || note.accidental == 0)
        return Plain(note, flats);
    const cat::NoteNames &names = cat::kNotes[static_cast<std::size_t>(note.Index())];
    return *cat::ParseWritten(flats ? names.flat : names.sharp);
}

// The tonic of the major key with the key's signature.
WrittenNote RelativeMajor(const Key &key) {
    return key.minor ? Move(key.tonic, 2, 3) : key.tonic;
}

} // namespace

std::optional<int> QualityType(std::string_view quality) {
    std::string q = Normalise(quality);
    for (const auto &[alias, meant] : kAliases)
        if (q == alias)
            q = meant;
    for (const auto &[canonical, name] : kQualities)
        if (q == canonical)
            return cat::FindChordType(name);
    return std::nullopt;
}

ChordSymbol ReadChordSymbol(std::string_view text, NameSystem system) {
    ChordSymbol chord;
    chord.written = std::string(text);
    std::string_view body = text;
    if (const auto slash = body.rfind('/'); slash != std::string_view::npos) {
        if (const auto bass = cat::ParseWritten(body.substr(slash + 1), system)) {
            chord.bass = bass;
            body = body.substr(0, slash);
        }
    }
    // Every length of note name the text starts with, longest first.
    std::vector<std::size_t> lengths;
    for (std::size_t n = std::min<std::size_t>(body.size(), 12); n > 0; --n)
        if (cat::ParseWritten(body.substr(0, n), system))
            lengths.push_back(n);
    if (lengths.empty()) {
        chord.bass.reset();
        return chord;
    }
    std::size_t chosen = lengths.front();
    for (std::size_t n : lengths) {
        if (QualityType(body.substr(n))) {
            chosen = n;
            break;
        }
    }
    chord.root = cat::ParseWritten(body.substr(0, chosen), system);
    chord.quality = std::string(body.substr(chosen));
    chord.type = QualityType(chord.quality).value_or(-1);
    return chord;
}

std::string WriteChordSymbol(const ChordSymbol &chord, NameSystem system) {
    if (!chord.root)
        return chord.written;
    std::string out = cat::Format(*chord.root, system) + chord.quality;
    if (chord.bass) {
        // Piece by piece: GCC 12 warns of an overlapping copy otherwise.
        out += '/';
        out += cat::Format(*chord.bass, system);
    }
    return out;
}

std::vector<int> ChordPitches(const ChordSymbol &chord) {
    if (!chord.Known())
        return {};
    const cat::Offsets offsets = cat::ChordOffsets(chord.type);
    std::vector<int> pitches;
    for (int i = 0; i < offsets.count; ++i)
        pitches.push_back(
            cat::Mod12(chord.root->Index() + offsets.semitones[static_cast<std::size_t>(i)]));
    return pitches;
}

std::optional<Key> ReadKey(std::string_view text, NameSystem system) {
    const ChordSymbol chord = ReadChordSymbol(text, system);
    if (!chord.root || chord.bass)
        return std::nullopt;
    if (chord.quality.empty())
        return Key{*chord.root, false};
    const std::string q = Normalise(chord.quality);
    if (q == "m")
        return Key{*chord.root, true};
    if (q == "maj")
        return Key{*chord.root, false};
    return std::nullopt;
}

std::string WriteKey(const Key &key, NameSystem system) {
    return cat::Format(key.tonic, system) + (key.minor ? "m" : "");
}

int Signature(const Key &key) {
    // Each letter's place on the circle of fifths from C, for A..G.
    constexpr std::array<int, 7> fifths = {3, 5, 0, 2, 4, -1, 1};
    return fifths[static_cast<std::size_t>(key.tonic.letter)] + 7 * key.tonic.accidental -
           (key.minor ? 3 : 0);
}

Key TransposeKey(const Key &key, int semitones) {
    const cat::NoteNames &names =
        cat::kNotes[static_cast<std::size_t>(cat::Mod12(key.tonic.Index() + semitones))];
    const Key sharp{*cat::ParseWritten(names.sharp), key.minor};
    const Key flat{*cat::ParseWritten(names.flat), key.minor};
    return std::abs(Signature(flat)) < std::abs(Signature(sharp)) ? flat : sharp;
}

std::optional<Key> GuessKey(const std::vector<ChordSymbol> &chords) {
    for (const ChordSymbol &chord : chords) {
        if (!chord.root)
            continue;
        bool minor = false;
        if (chord.type >= 0) {
            const auto &degrees = cat::kChordTypes[static_cast<std::size_t>(chord.type)].degrees;
            const auto has = [&](std::string_view d) {
                return std::find(degrees.begin(), degrees.end(), d) != degrees.end();
            };
            minor = has("b3") && !has("b5");
        }
        return Key{*chord.root, minor};
    }
    return std::nullopt;
}

ChordSymbol TransposeChord(const ChordSymbol &chord, const Key &from, const Key &to) {
    if (!chord.root)
        return chord;
    const WrittenNote a = RelativeMajor(from), b = RelativeMajor(to);
    const bool flats = Signature(to) < 0;
    // A diminished chord leads up a semitone: its root is a raised degree.
    bool leading = false;
    if (chord.type >= 0) {
        const auto &degrees = cat::kChordTypes[static_cast<std::size_t>(chord.type)].degrees;
        leading = std::find(degrees.begin(), degrees.end(), "b3") != degrees.end() &&
                  std::find(degrees.begin(), degrees.end(), "b5") != degrees.end();
    }
    ChordSymbol moved = chord;
    moved.root = Degree(b, cat::Mod12(chord.root->Index() - a.Index()),
                        (chord.root->letter - a.letter + 7) % 7, leading, flats);
    if (chord.bass) {
        // The bass keeps its interval to the root: D/F# moves to G#/B#.
        const WrittenNote bass = Move(*moved.root, chord.bass->letter - chord.root->letter,
                                      chord.bass->Index() - chord.root->Index());
        moved.bass = Plain(bass, flats);
    }
    moved.written = WriteChordSymbol(moved);
    return moved;
}

} // namespace varnock::music
