#include "cli/spelling.h"

#include "chart/controls.h"
#include "cli/errors.h"
#include "cli/names.h"
#include "model/catalogue.h"

namespace varnock::cli {

Spelling ResolveSpelling(const std::optional<std::string> &text) {
    if (!text)
        return Spelling::Musician;
    if (const auto spelling = ParseSpelling(*text))
        return *spelling;
    throw BadInput("unknown spelling \"" + *text + "\"; accepted: musician, sharps, flats, chord");
}

std::string SpellingRoot(const std::optional<std::string> &typed) {
    if (!typed || typed->empty())
        return "";
    return WrittenRoot(*typed);
}

std::vector<std::string> SpellingRoots(const std::optional<std::string> &list) {
    std::vector<std::string> roots;
    if (!list || list->empty())
        return std::vector<std::string>(items::kRoots.size());
    for (const std::string &name : SplitList(*list))
        roots.push_back(SpellingRoot(name));
    return roots;
}

namespace {

// A name as a musician writes it down: "B♭" and "Cx" as "Bb" and "C##".
std::string Plain(const std::string &typed) {
    const auto written = catalogue::ParseWritten(WrittenRoot(typed));
    return written ? catalogue::Format(*written) : typed;
}

} // namespace

ChartSheet Spell(const ChartSheet &sheet, Spelling spelling, const std::string &typedRoot,
                 const std::vector<std::string> &tuning) {
    const std::string root = spelling == Spelling::Musician ? Plain(typedRoot) : typedRoot;
    if (spelling == Spelling::Sharps)
        return sheet;
    // The chord's notes in formula order, as the model named them.
    std::vector<std::string> computed;
    for (const std::string &note : sheet.notes)
        if (!note.empty())
            computed.push_back(note);
    std::vector<std::string> spelled;
    if (spelling != Spelling::Flats && sheet.chordType >= 0) {
        const int chord = static_cast<int>(sheet.chordType);
        spelled = SpellChord(
            catalogue::ParseNote(root) == sheet.root ? root : PlainRoot(sheet.root, chord), chord);
    }
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
    const std::vector<std::string> chordNotes = out.ChordNotes();
    for (std::size_t s = 0; s < out.stringNames.size() && s < out.openNotes.size(); ++s) {
        const int open = out.openNotes[s];
        if (spelling == Spelling::Musician && s < tuning.size() &&
            catalogue::ParseNote(WrittenRoot(tuning[s])) == open)
            out.stringNames[s] = Plain(tuning[s]);
        else
            out.stringNames[s] = SpellNote(open, spelling, chordNotes);
    }
    return out;
}

} // namespace varnock::cli
