#include "cli/spelling.h"

#include "chart/controller.h"
#include "chart/controls.h"
#include "cli/names.h"

#include <cctype>

namespace varnock::chart {

theory::Spelling ResolveSpelling(const std::optional<std::string> &text) {
    if (!text)
        return theory::Spelling::Sharps;
    if (const auto spelling = theory::ParseSpelling(*text))
        return *spelling;
    throw BadInput("unknown spelling \"" + *text + "\"; accepted: sharps, flats, chord");
}

std::string SpellingRoot(const std::optional<std::string> &typed) {
    if (!typed || typed->empty())
        return "A";
    std::string root = typed->substr(0, typed->find(" / "));
    root[0] = static_cast<char>(std::toupper(static_cast<unsigned char>(root[0])));
    return root;
}

std::vector<std::string> SpellingRoots(const std::optional<std::string> &list) {
    std::vector<std::string> roots;
    if (!list || list->empty()) {
        for (const char *item : items::kRoots)
            roots.push_back(SpellingRoot(item));
        return roots;
    }
    for (const std::string &name : SplitList(*list))
        roots.push_back(SpellingRoot(name));
    return roots;
}

void ApplySpelling(ChartController &chart, theory::Spelling spelling, const std::string &root) {
    if (spelling == theory::Spelling::Sharps)
        return;
    ChordModel &model = chart.Model;
    // The chord's notes in formula order, as the model named them (or as a
    // previous call renamed them: only their pitch counts).
    std::vector<std::string> computed;
    for (const std::string *note : {&model.Note1, &model.Note2, &model.Note3, &model.Note4})
        if (!note->empty())
            computed.push_back(*note);
    std::vector<std::string> spelled;
    if (spelling == theory::Spelling::Chord && model.ModeSelectOther < 0) {
        const int selected = static_cast<int>(chart.PopupMenu1->ListIndex());
        spelled = theory::SpellChord(
            theory::ParseNote(root) == selected ? root : theory::SharpName(selected),
            static_cast<int>(chart.PopupMenu2->ListIndex()));
    }
    const auto respell = [&](const std::string &name) {
        return theory::Respell(name, spelling, computed, spelled);
    };
    // Row 0 of the chart holds fret names, never notes.
    Listbox &cells = *chart.Listbox1;
    for (Int r = 1; r < cells.ListCount(); ++r)
        for (Int c = 0; c < cells.ColumnCount(); ++c)
            cells.SetCell(r, c, respell(cells.Cell(r, c)));
    Listbox &notes = *chart.Listbox2;
    for (Int r = 0; r < notes.ListCount(); ++r)
        for (Int c = 0; c < notes.ColumnCount(); ++c)
            notes.SetCell(r, c, respell(notes.Cell(r, c)));
    for (std::string *note : {&model.Note1, &model.Note2, &model.Note3, &model.Note4})
        *note = respell(*note);
}

std::string SpellNote(int note, theory::Spelling spelling,
                      const std::vector<std::string> &chordNotes) {
    for (const std::string &name : chordNotes)
        if (theory::ParseNote(name) == note)
            return name;
    return spelling == theory::Spelling::Flats ? theory::FlatName(note) : theory::SharpName(note);
}

} // namespace varnock::chart
