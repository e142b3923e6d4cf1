#include "cli/lookup.h"

#include "chart/controller.h"
#include "chart/controls.h"
#include "cli/names.h"
#include "cli/spelling.h"

#include <algorithm>

namespace varnock::chart {

namespace {

const std::vector<std::string> &Formulas() {
    static const std::vector<std::string> formulas = [] {
        Module1 m;
        m.Startup(0);
        return m.MajorChordsInt.Items();
    }();
    return formulas;
}

std::vector<int> Distinct(const std::vector<int> &notes) {
    std::vector<int> distinct;
    for (const int n : notes)
        if (std::find(distinct.begin(), distinct.end(), n) == distinct.end())
            distinct.push_back(n);
    return distinct;
}

std::vector<std::string> Names(const std::vector<int> &notes, theory::Spelling spelling) {
    std::vector<std::string> names;
    for (const int n : notes)
        names.push_back(SpellNote(n, spelling, {}));
    return names;
}

} // namespace

std::vector<int> ParseNoteList(const std::string &list) {
    const std::vector<std::string> names = SplitList(list);
    if (names.size() < 2 || names.size() > 4)
        throw BadInput("--identify \"" + list + "\" names " + std::to_string(names.size()) +
                       (names.size() == 1 ? " note" : " notes") +
                       "; accepted: 2 to 4 comma-separated notes, such as D,F#,A");
    std::vector<int> notes;
    for (const std::string &name : names) {
        const auto note = theory::ParseNote(name);
        if (!note)
            throw BadInput("note \"" + name +
                           "\" is not a note name; accepted: a letter A-G then sharps (#) or "
                           "flats (b), such as F# or Bb");
        notes.push_back(*note);
    }
    if (Distinct(notes).size() < 2)
        throw BadInput("--identify \"" + list +
                       "\" names one note only; accepted: 2 to 4 different notes");
    return notes;
}

std::string IdentifyText(const std::vector<int> &notes, theory::Spelling spelling,
                         const std::vector<std::string> &typed) {
    const std::vector<std::string> chordNames(items::kChords.begin(), items::kChords.end());
    std::vector<theory::Match> matches;
    try {
        matches = theory::Identify(notes, Formulas());
    } catch (const theory::BadValue &e) {
        throw BadInput(e.what());
    }
    if (matches.empty())
        return "No chord type holds the notes " + Join(Names(Distinct(notes), spelling), " ") +
               ".\n";
    std::string out;
    for (const theory::Match &match : matches) {
        // "Bb,D,F" is Bb Maj: Bb D F, not the sharp root's A# C## E#.
        const auto root = std::find_if(typed.begin(), typed.end(), [&](const std::string &name) {
            return theory::ParseNote(name) == match.root;
        });
        if (spelling == theory::Spelling::Chord && root != typed.end()) {
            const std::string name = SpellingRoot(*root);
            out += name + " " + chordNames[static_cast<std::size_t>(match.chord)] + ": " +
                   Join(theory::SpellChord(name, match.chord), " ") + "\n";
        } else
            out += theory::FormatMatch(match, spelling, chordNames, Formulas()) + "\n";
    }
    return out;
}

std::string IdentifyFretsText(const ChartController &chart, const std::string &list,
                              theory::Spelling spelling) {
    const Int strings = chart.StringCount();
    std::vector<int> open;
    const auto tunings = chart.TuningPopups();
    for (Int i = 0; i < strings; ++i) {
        const PopupMenu &popup = *tunings[static_cast<std::size_t>(i)];
        open.push_back(theory::ParseNote(popup.List(popup.ListIndex())).value_or(0));
    }
    std::vector<int> sounding;
    try {
        sounding = theory::NotesAtFrets(theory::ParseFretList(list, static_cast<int>(strings)),
                                        static_cast<int>(chart.PopupMenu9->ListIndex()), open);
    } catch (const theory::BadValue &e) {
        throw BadInput("--identify-frets: " + std::string(e.what()));
    }
    const std::vector<int> notes = Distinct(sounding);
    std::string out =
        "Notes: " + (notes.empty() ? "none" : Join(Names(notes, spelling), " ")) + "\n";
    if (notes.size() < 2)
        return out + "A chord needs two different notes or more.\n";
    return out + IdentifyText(notes, spelling);
}

} // namespace varnock::chart
