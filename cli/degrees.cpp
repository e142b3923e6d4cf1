#include "cli/degrees.h"

#include "cli/errors.h"
#include "model/catalogue.h"

#include <algorithm>
#include <cctype>

namespace varnock::cli {

namespace cat = catalogue;

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

std::string WrittenRoot(std::string_view typed) {
    std::string root(typed.substr(0, typed.find(" / ")));
    if (!root.empty())
        root[0] = static_cast<char>(std::toupper(static_cast<unsigned char>(root[0])));
    return root;
}

std::vector<std::string> SpellChord(std::string_view rootText, int chordIndex) {
    const auto root = cat::ParseWritten(rootText);
    if (!root)
        throw BadInput("root \"" + std::string(rootText) +
                       "\" is not a note name: " + std::string(cat::kNoteNameRule));
    if (chordIndex < 0 || chordIndex >= cat::kChordTypeCount)
        throw BadInput("chord index " + std::to_string(chordIndex) + " is outside 0..31");
    const cat::ChordType &type = cat::kChordTypes[static_cast<std::size_t>(chordIndex)];
    const cat::Offsets offsets = cat::ChordOffsets(chordIndex);
    std::vector<std::string> names{std::string(rootText)};
    for (std::size_t i = 1; i < static_cast<std::size_t>(offsets.count); ++i) {
        const int letter = (root->letter + cat::ParseDegree(type.degrees[i]).number - 1) % 7;
        const int natural = cat::kNaturals[static_cast<std::size_t>(letter)] -
                            cat::kNaturals[static_cast<std::size_t>(root->letter)];
        // How far the natural letter sits from where the interval lands, kept
        // to -6..5 so it is the small correction a degree needs (b3, #5, bb7).
        const int delta = cat::Mod12(offsets.semitones[i] - natural + 6) - 6;
        names.push_back(cat::Format({letter, root->accidental + delta}));
    }
    return names;
}

std::string Respell(std::string_view sharpName, Spelling spelling,
                    const std::vector<std::string> &chordSharps,
                    const std::vector<std::string> &chordSpelled) {
    const auto note = cat::ParseNote(sharpName);
    if (!note || spelling == Spelling::Sharps)
        return std::string(sharpName);
    if (spelling == Spelling::Flats)
        return cat::FlatName(*note);
    for (std::size_t i = 0; i < std::min(chordSharps.size(), chordSpelled.size()); ++i)
        if (cat::ParseNote(chordSharps[i]) == note)
            return chordSpelled[i];
    return std::string(sharpName);
}

std::string SpellNote(int note, Spelling spelling, const std::vector<std::string> &chordNotes) {
    for (const std::string &name : chordNotes)
        if (cat::ParseNote(name) == note)
            return name;
    return spelling == Spelling::Flats ? cat::FlatName(note) : cat::SharpName(note);
}

} // namespace varnock::cli
