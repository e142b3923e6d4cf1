#include "music/degrees.h"

#include "music/catalogue.h"
#include "music/errors.h"
#include "platform/basic.h"

#include <algorithm>
#include <array>
#include <cstdlib>

namespace varnock::music {

namespace cat = catalogue;

std::string WrittenRoot(std::string_view typed) {
    std::string root(typed.substr(0, typed.find(" / ")));
    if (!root.empty())
        root[0] = static_cast<char>(std::toupper(static_cast<unsigned char>(root[0])));
    return root;
}

namespace {

// The note `semitones` above a written root on the letter `number` degrees up.
cat::WrittenNote Above(const cat::WrittenNote &root, int number, int semitones) {
    const int letter = (root.letter + number - 1) % 7;
    const int natural = cat::kNaturals[static_cast<std::size_t>(letter)] -
                        cat::kNaturals[static_cast<std::size_t>(root.letter)];
    // How far the natural letter sits from where the interval lands, kept
    // to -6..5 so it is the small correction a degree needs (b3, #5, bb7).
    const int delta = cat::Mod12(semitones - natural + 6) - 6;
    return {letter, root.accidental + delta};
}

int Accidentals(const std::vector<std::string> &names) {
    int count = 0;
    for (const std::string &name : names)
        count += std::abs(cat::ParseWritten(name)->accidental);
    return count;
}

int ScaleAccidentals(const cat::WrittenNote &root) {
    int count = 0;
    for (int degree = 1; degree <= 7; ++degree)
        count += std::abs(
            Above(root, degree, cat::kMajorScale[static_cast<std::size_t>(degree - 1)]).accidental);
    return count;
}

bool EndsFlat(const std::string &name) {
    const auto written = cat::ParseWritten(name);
    return written && written->accidental < 0;
}

} // namespace

std::string PlainRoot(int note, int chordIndex) {
    const std::string sharp = cat::SharpName(note), flat = cat::FlatName(note);
    if (sharp == flat)
        return sharp;
    const int bySharp = Accidentals(SpellChord(sharp, chordIndex));
    const int byFlat = Accidentals(SpellChord(flat, chordIndex));
    if (bySharp != byFlat)
        return byFlat < bySharp ? flat : sharp;
    return ScaleAccidentals(*cat::ParseWritten(flat)) < ScaleAccidentals(*cat::ParseWritten(sharp))
               ? flat
               : sharp;
}

bool FitsTyped(std::string_view root, int chordIndex, const std::vector<std::string> &typed) {
    const std::vector<std::string> spelled = SpellChord(root, chordIndex);
    for (const std::string &name : typed) {
        const auto written = cat::ParseWritten(WrittenRoot(name));
        if (!written)
            continue;
        for (const std::string &note : spelled)
            if (cat::ParseNote(note) == written->Index() && *cat::ParseWritten(note) != *written)
                return false;
    }
    return true;
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
        names.push_back(cat::Format(
            Above(*root, cat::ParseDegree(type.degrees[i]).number, offsets.semitones[i])));
    }
    return names;
}

std::string SpellNote(int note, Spelling spelling, const std::vector<std::string> &chordNotes) {
    for (const std::string &name : chordNotes)
        if (cat::ParseNote(name) == note)
            return name;
    const bool flat =
        spelling == Spelling::Flats ||
        (spelling == Spelling::Musician && !chordNotes.empty() && EndsFlat(chordNotes[0]));
    return flat ? cat::FlatName(note) : cat::SharpName(note);
}

} // namespace varnock::music
