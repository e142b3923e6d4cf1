#include "export/lookup.h"

#include "export/spelling.h"
#include "music/catalogue.h"
#include "music/errors.h"
#include "music/identify.h"
#include "music/layouts.h"
#include "platform/basic.h"

#include <algorithm>

namespace varnock::output {

using namespace music;

namespace {

std::vector<int> Distinct(const std::vector<int> &notes) {
    std::vector<int> distinct;
    for (const int n : notes)
        if (std::find(distinct.begin(), distinct.end(), n) == distinct.end())
            distinct.push_back(n);
    return distinct;
}

std::string Named(const std::string &name, catalogue::NameSystem system) {
    return catalogue::Translate(name, catalogue::NameSystem::English, system);
}

std::vector<std::string> Named(std::vector<std::string> names, catalogue::NameSystem system) {
    for (std::string &name : names)
        name = Named(name, system);
    return names;
}

std::vector<std::string> Names(const std::vector<int> &notes, Spelling spelling) {
    std::vector<std::string> names;
    for (const int n : notes)
        names.push_back(SpellNote(n, spelling, {}));
    return names;
}

} // namespace

std::string IdentifyText(const std::vector<int> &notes, Spelling spelling,
                         const std::vector<std::string> &typed, catalogue::NameSystem system) {
    const std::vector<Match> matches = Identify(notes);
    if (matches.empty())
        return "No chord type holds the notes " +
               Join(Named(Names(Distinct(notes), spelling), system), " ") + ".\n";
    std::string out;
    for (const Match &match : matches) {
        // A typed root stays as typed where the chord spelled from it names
        // the typed notes as typed: "A#,Cx,E#" is A# Maj, "A#,D,F,A" Bb maj7.
        const auto root = std::find_if(typed.begin(), typed.end(), [&](const std::string &name) {
            return catalogue::ParseNote(name) == match.root &&
                   FitsTyped(SpellingRoot(name), match.chord, typed);
        });
        if ((spelling == Spelling::Chord || spelling == Spelling::Musician) &&
            root != typed.end()) {
            const std::string name = SpellingRoot(*root);
            out += Named(name, system) + " " +
                   std::string(catalogue::kChordTypes[static_cast<std::size_t>(match.chord)].name) +
                   ": " + Join(Named(SpellChord(name, match.chord), system), " ") + "\n";
        } else
            out += FormatMatch(match, spelling, system) + "\n";
    }
    return out;
}

std::string IdentifyFretsText(const ChartSheet &sheet, const std::string &list, Spelling spelling,
                              catalogue::NameSystem system) {
    std::vector<int> sounding;
    try {
        sounding = NotesAtFrets(ParseFretList(list, static_cast<int>(sheet.StringCount())),
                                static_cast<int>(sheet.mode), sheet.openNotes);
    } catch (const BadInput &e) {
        throw BadInput("--identify-frets: " + std::string(e.what()));
    }
    const std::vector<int> notes = Distinct(sounding);
    // Spelled by degree, the notes are named as the first chord they make
    // spells them, as --voicings names that chord's notes.
    std::vector<std::string> names = Names(notes, spelling);
    const std::vector<Match> matches = notes.size() < 2 ? std::vector<Match>{} : Identify(notes);
    if ((spelling == Spelling::Chord || spelling == Spelling::Musician) && !matches.empty()) {
        const std::vector<std::string> chord =
            SpellChord(PlainRoot(matches[0].root, matches[0].chord), matches[0].chord);
        for (std::size_t i = 0; i < notes.size(); ++i)
            for (const std::string &name : chord)
                if (catalogue::ParseNote(name) == notes[i])
                    names[i] = name;
    }
    std::string out = "Notes: " + (notes.empty() ? "none" : Join(Named(names, system), " ")) + "\n";
    if (notes.size() < 2)
        return out + "A chord needs two different notes or more.\n";
    return out + IdentifyText(notes, spelling, {}, system);
}

} // namespace varnock::output
