#include "music/identify.h"

#include "music/catalogue.h"
#include "music/errors.h"
#include "music/layouts.h"
#include "platform/basic.h"

#include <bit>
#include <charconv>

namespace varnock::music {

namespace cat = catalogue;

namespace {

// Notes of a chord as a bit set of note indices, so set equality and
// inclusion are one comparison each.
unsigned Mask(const cat::Offsets &offsets, int root) {
    unsigned mask = 0;
    for (int i = 0; i < offsets.count; ++i)
        mask |= 1u << cat::Mod12(root + offsets.semitones[static_cast<std::size_t>(i)]);
    return mask;
}

} // namespace

std::vector<Match> Identify(const std::vector<int> &notes) {
    unsigned wanted = 0;
    std::vector<std::string> names;
    for (int n : notes) {
        if (n < 0 || n > 11)
            throw BadInput("note index " + std::to_string(n) + " is outside 0..11");
        wanted |= 1u << n;
        names.push_back(cat::SharpName(n));
    }
    const int count = std::popcount(wanted);
    if (count < 2 || count > 4)
        throw BadInput("notes \"" + Join(names, ",") + "\" are " + std::to_string(count) +
                       " different notes; a chord here has 2 to 4");
    std::vector<Match> exact, wider;
    for (int root = 0; root < 12; ++root)
        for (int chord = 0; chord < cat::kChordTypeCount; ++chord) {
            const unsigned mask = Mask(cat::ChordOffsets(chord), root);
            if (mask == wanted)
                exact.push_back({root, chord, true});
            else if ((mask & wanted) == wanted)
                wider.push_back({root, chord, false});
        }
    exact.insert(exact.end(), wider.begin(), wider.end());
    return exact;
}

std::string FormatMatch(const Match &match, Spelling spelling, cat::NameSystem system) {
    if (match.chord < 0 || match.chord >= cat::kChordTypeCount)
        throw BadInput("chord index " + std::to_string(match.chord) + " is outside 0..31");
    const cat::Offsets offsets = cat::ChordOffsets(match.chord);
    const std::string root = spelling == Spelling::Flats    ? cat::FlatName(match.root)
                             : spelling == Spelling::Sharps ? cat::SharpName(match.root)
                                                            : PlainRoot(match.root, match.chord);
    std::vector<std::string> names;
    if (spelling == Spelling::Chord || spelling == Spelling::Musician) {
        names = SpellChord(root, match.chord);
    } else {
        for (int i = 0; i < offsets.count; ++i) {
            const int n = match.root + offsets.semitones[static_cast<std::size_t>(i)];
            names.push_back(spelling == Spelling::Flats ? cat::FlatName(n) : cat::SharpName(n));
        }
    }
    const auto named = [system](const std::string &name) {
        return cat::Translate(name, cat::NameSystem::English, system);
    };
    for (std::string &name : names)
        name = named(name);
    return named(root) + " " +
           std::string(cat::kChordTypes[static_cast<std::size_t>(match.chord)].name) + ": " +
           Join(names, " ");
}

std::vector<std::optional<int>> ParseFretList(std::string_view text, int strings) {
    if (strings != 3 && strings != 4)
        throw BadInput("the instrument has " + std::to_string(strings) +
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
            throw BadInput("position \"" + entry + "\" is not a number or x");
        if (error == std::errc::result_out_of_range || p < 0 || p > kLastPosition)
            throw BadInput("position \"" + entry + "\" is outside 0.." +
                           std::to_string(kLastPosition));
        positions.push_back(p);
    }
    if (static_cast<int>(positions.size()) != strings)
        throw BadInput("fret list \"" + std::string(text) + "\" has " +
                       std::to_string(positions.size()) +
                       (positions.size() == 1 ? " position" : " positions") +
                       "; the instrument has " + std::to_string(strings) + " strings");
    return positions;
}

std::vector<int> NotesAtFrets(const std::vector<std::optional<int>> &positions, int mode,
                              const std::vector<int> &openNotes) {
    if (mode < 0 || mode >= kLayoutCount)
        throw BadInput("fret layout " + std::to_string(mode) + " is outside 0.." +
                       std::to_string(kLayoutCount - 1));
    if (positions.size() != openNotes.size())
        throw BadInput(std::to_string(positions.size()) + " positions for " +
                       std::to_string(openNotes.size()) + " strings");
    const FretLayout &layout = Layout(mode);
    std::vector<int> notes;
    for (std::size_t s = 0; s < positions.size(); ++s) {
        if (!positions[s])
            continue;
        if (*positions[s] < 0 || *positions[s] > kLastPosition)
            throw BadInput("position " + std::to_string(*positions[s]) + " is outside 0.." +
                           std::to_string(kLastPosition));
        notes.push_back(cat::Mod12(FretSemitones(layout, *positions[s]) + openNotes[s]));
    }
    return notes;
}

} // namespace varnock::music
