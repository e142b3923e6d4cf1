#include "export/chartdoc.h"

#include "export/capo.h"
#include "music/catalogue.h"
#include "music/describe.h"
#include "music/layouts.h"
#include "platform/basic.h"

#include <algorithm>

namespace varnock::output {

using namespace music;

std::vector<std::vector<std::string>> ChartRows(const ChartSheet &sheet) {
    std::vector<std::vector<std::string>> rows{sheet.ShownHeadings()};
    rows.insert(rows.end(), sheet.rows.begin(), sheet.rows.end());
    return rows;
}

std::vector<std::vector<std::string>> Oriented(std::vector<std::vector<std::string>> rows,
                                               ChartOrientation orientation) {
    if (orientation.leftHanded)
        for (auto &row : rows)
            std::reverse(row.begin(), row.end());
    if (orientation.flipped && rows.size() > 2)
        std::reverse(rows.begin() + 2, rows.end());
    return rows;
}

std::string ChartText(const ChartSheet &sheet, ChartOrientation orientation) {
    // Each string row headed by the string's name, on the open-string side.
    auto named = ChartRows(sheet);
    for (std::size_t r = 0; r < named.size(); ++r)
        named[r].insert(named[r].begin(), r >= 2 && r - 2 < sheet.stringNames.size()
                                              ? sheet.stringNames[r - 2]
                                              : std::string());
    const auto rows = Oriented(std::move(named), orientation);
    std::vector<std::size_t> width(rows.empty() ? 0 : rows[0].size(), 0);
    for (const auto &row : rows)
        for (std::size_t c = 0; c < row.size(); ++c)
            width[c] = std::max(width[c], row[c].size());
    std::string out = ChartTitle(sheet) + "\n";
    for (const auto &row : rows) {
        std::string line;
        for (std::size_t c = 0; c < row.size(); ++c) {
            line += row[c];
            if (c + 1 < row.size())
                line += std::string(width[c] - row[c].size() + 1, ' ');
        }
        line.erase(line.find_last_not_of(' ') + 1);
        out += line + "\n";
    }
    out += "Notes: " + Join(sheet.ChordNotes(), " ") + "\n";
    if (!sheet.degrees.empty())
        out += "Degrees: " + Join(sheet.degrees, " ") + "\n";
    return out;
}

std::string ChartTsv(const ChartSheet &sheet) {
    std::string out;
    for (const auto &row : ChartRows(sheet))
        out += Join(row, "\t") + "\n";
    return out;
}

std::string DescribeText(const ChartSheet &sheet, Spelling spelling, bool lastStringFirst,
                         catalogue::NameSystem names) {
    SheetFacts facts;
    facts.layoutName = LayoutName(sheet.mode);
    facts.strings = static_cast<int>(sheet.StringCount());
    facts.notes = sheet.ChordNotes();
    for (std::size_t s = 0; s < sheet.openNotes.size(); ++s)
        facts.tuning.push_back(s < sheet.stringNames.size()
                                   ? sheet.stringNames[s]
                                   : SpellNote(sheet.openNotes[s], spelling, facts.notes));
    facts.chordTitle =
        (facts.notes.empty() ? sheet.rootItem : facts.notes[0]) + " " + sheet.chordItem;
    // Frets by the names the layout gives them, as every option takes them.
    facts.fretNames = FretNames(static_cast<int>(sheet.mode));
    facts.diatonicNames = DiatonicNames(static_cast<int>(sheet.mode));
    facts.cells.assign(sheet.rows.begin() + 1, sheet.rows.end());
    // Under a capo, position 0 stands for the capo's own column: its notes
    // are named once, there.
    if (sheet.capo > 0)
        for (auto &row : facts.cells)
            row.at(static_cast<std::size_t>(sheet.capo)).clear();
    facts.lastStringFirst = lastStringFirst;
    if (sheet.chordType < 0 && !sheet.extraNotes.empty())
        facts.kind = "Scale";
    const auto name = [names](std::string &note) {
        note = catalogue::Translate(note, catalogue::NameSystem::English, names);
    };
    std::for_each(facts.tuning.begin(), facts.tuning.end(), name);
    std::for_each(facts.notes.begin(), facts.notes.end(), name);
    for (auto &row : facts.cells)
        std::for_each(row.begin(), row.end(), name);
    const auto blank = facts.chordTitle.find(' ');
    std::string root = facts.chordTitle.substr(0, blank);
    name(root);
    facts.chordTitle = root + facts.chordTitle.substr(blank);
    return Describe(facts);
}

std::string ChordTitle(const ChartSheet &sheet) {
    const std::vector<std::string> notes = sheet.ChordNotes();
    return (notes.empty() ? sheet.rootItem : notes[0]) + " " + sheet.chordItem;
}

std::string InstrumentTitle(const ChartSheet &sheet) {
    return LayoutName(static_cast<int>(sheet.mode)) + ", " + std::to_string(sheet.StringCount()) +
           " strings " + Join(sheet.stringNames, " ") +
           (sheet.capo > 0 ? ", capo at " + FretNames(static_cast<int>(sheet.mode))
                                                .at(static_cast<std::size_t>(sheet.capo))
                           : "");
}

std::string ChartTitle(const ChartSheet &sheet) {
    const std::vector<std::string> notes = sheet.ChordNotes();
    return ChordTitle(sheet) + (notes.empty() ? "" : ": " + Join(notes, " ")) + " - " +
           InstrumentTitle(sheet);
}

} // namespace varnock::output
