#include "export/spelling.h"

#include "music/catalogue.h"
#include "music/errors.h"
#include "music/layouts.h"
#include "platform/basic.h"

#include <algorithm>
#include <array>

namespace varnock::output {

using namespace music;

std::string SpellingRoot(const std::optional<std::string> &typed) {
    if (!typed || typed->empty())
        return "";
    return WrittenRoot(*typed);
}

std::vector<std::string> SpellingRoots(const std::optional<std::string> &list) {
    std::vector<std::string> roots;
    if (!list || list->empty())
        return std::vector<std::string>(catalogue::kNotes.size());
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
    // Each tone of the chord by the name the spelling gives it.
    std::vector<std::string> names;
    if (sheet.chordType >= 0) {
        const int chord = static_cast<int>(sheet.chordType);
        if (spelling == Spelling::Flats) {
            const catalogue::Offsets offsets = catalogue::ChordOffsets(chord);
            for (int i = 0; i < offsets.count; ++i)
                names.push_back(catalogue::FlatName(
                    sheet.root + offsets.semitones[static_cast<std::size_t>(i)]));
        } else {
            names = SpellChord(
                catalogue::ParseNote(root) == sheet.root ? root : PlainRoot(sheet.root, chord),
                chord);
        }
    }
    ChartSheet out = Renamed(sheet, names);
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
    // The notes table keeps the names.
    return Renamed(sheet, keys, false);
}

} // namespace varnock::output
