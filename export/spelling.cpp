#include "export/spelling.h"

#include "chart/controls.h"
#include "music/catalogue.h"
#include "music/errors.h"
#include "music/layouts.h"
#include "platform/basic.h"

#include <algorithm>
#include <array>

namespace varnock::output {

using namespace music;

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
    // A string is named as tuned, never as the chord spells its note: an A
    // string stays A in Gb m, whose third is Bbb.
    const std::vector<std::string> chordNotes = out.ChordNotes();
    const auto rootWritten =
        chordNotes.empty() ? std::nullopt : catalogue::ParseWritten(chordNotes[0]);
    const bool flat = spelling == Spelling::Flats || (spelling == Spelling::Musician &&
                                                      rootWritten && rootWritten->accidental < 0);
    for (std::size_t s = 0; s < out.stringNames.size() && s < out.openNotes.size(); ++s) {
        const int open = out.openNotes[s];
        if (spelling == Spelling::Musician && s < tuning.size() &&
            catalogue::ParseNote(WrittenRoot(tuning[s])) == open)
            out.stringNames[s] = Plain(tuning[s]);
        else
            out.stringNames[s] = flat ? catalogue::FlatName(open) : catalogue::SharpName(open);
    }
    return out;
}

Labels ResolveLabels(const std::optional<std::string> &text) {
    if (!text)
        return Labels::Notes;
    const std::string lower = LCase(*text);
    if (lower == "notes")
        return Labels::Notes;
    if (lower == "degrees")
        return Labels::Degrees;
    if (lower == "both")
        return Labels::Both;
    throw BadInput("unknown labels \"" + *text + "\"; accepted: notes, degrees, both");
}

namespace {

// The degree of each of the four note slots; empty where the chord ends.
std::array<std::string, 4> Degrees(const ChartSheet &sheet) {
    std::array<std::string, 4> degrees;
    if (sheet.chordType < 0 || sheet.chordType >= catalogue::kChordTypeCount)
        return degrees;
    const auto &type = catalogue::kChordTypes[static_cast<std::size_t>(sheet.chordType)];
    for (std::size_t i = 0; i < degrees.size(); ++i)
        if (!sheet.notes[i].empty())
            degrees[i] = std::string(type.degrees[i]);
    return degrees;
}

} // namespace

ChartSheet WithDegrees(const ChartSheet &sheet) {
    if (sheet.chordType < 0 || sheet.notesRows.empty())
        return sheet;
    ChartSheet out = sheet;
    const std::array<std::string, 4> degrees = Degrees(sheet);
    std::vector<std::string> row;
    for (const std::string &name : sheet.notesRows[0]) {
        std::string degree;
        for (std::size_t i = 0; i < degrees.size(); ++i)
            if (!name.empty() && name == sheet.notes[i])
                degree = degrees[i];
        row.push_back(degree);
    }
    out.notesRows.resize(1);
    out.notesRows.push_back(std::move(row));
    out.degrees.clear();
    for (const std::string &degree : degrees)
        if (!degree.empty())
            out.degrees.push_back(degree);
    return out;
}

ChartSheet Label(const ChartSheet &sheet, Labels labels) {
    // The chart's cells, chord or scale, as the colours' keys name them.
    const std::vector<std::string> names = sheet.ColourKeys();
    if (labels == Labels::Notes || sheet.degrees.size() != names.size())
        return sheet;
    std::vector<std::string> keys;
    for (std::size_t i = 0; i < names.size(); ++i)
        keys.push_back(labels == Labels::Degrees ? sheet.degrees[i]
                                                 : names[i] + " " + sheet.degrees[i]);
    ChartSheet out = sheet;
    for (std::size_t r = 1; r < out.rows.size(); ++r)
        for (std::string &cell : out.rows[r]) {
            const auto found = std::find(names.begin(), names.end(), cell);
            if (!cell.empty() && found != names.end())
                cell = keys[static_cast<std::size_t>(found - names.begin())];
        }
    std::size_t next = 0;
    for (std::string &note : out.notes)
        if (!note.empty())
            note = keys[next++];
    for (std::string &note : out.extraNotes)
        note = keys[next++];
    return out;
}

} // namespace varnock::output
