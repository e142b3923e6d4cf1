#include "cli/spelling.h"

#include "chart/controls.h"
#include "cli/errors.h"
#include "cli/names.h"
#include "model/catalogue.h"

namespace varnock::cli {

Spelling ResolveSpelling(const std::optional<std::string> &text) {
    if (!text)
        return Spelling::Sharps;
    if (const auto spelling = ParseSpelling(*text))
        return *spelling;
    throw BadInput("unknown spelling \"" + *text + "\"; accepted: sharps, flats, chord");
}

std::string SpellingRoot(const std::optional<std::string> &typed) {
    if (!typed || typed->empty())
        return "A";
    return WrittenRoot(*typed);
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

ChartSheet Spell(const ChartSheet &sheet, Spelling spelling, const std::string &root) {
    if (spelling == Spelling::Sharps)
        return sheet;
    // The chord's notes in formula order, as the model named them.
    std::vector<std::string> computed;
    for (const std::string &note : sheet.notes)
        if (!note.empty())
            computed.push_back(note);
    std::vector<std::string> spelled;
    if (spelling == Spelling::Chord && sheet.chordType >= 0)
        spelled = SpellChord(
            catalogue::ParseNote(root) == sheet.root ? root : catalogue::SharpName(sheet.root),
            static_cast<int>(sheet.chordType));
    const auto respell = [&](const std::string &name) {
        return Respell(name, spelling, computed, spelled);
    };
    ChartSheet out = sheet;
    // Row 0 of the chart holds fret names, never notes.
    for (std::size_t r = 1; r < out.rows.size(); ++r)
        for (std::string &cell : out.rows[r])
            cell = respell(cell);
    for (auto &row : out.notesRows)
        for (std::string &cell : row)
            cell = respell(cell);
    for (std::string &note : out.notes)
        note = respell(note);
    return out;
}

} // namespace varnock::cli
