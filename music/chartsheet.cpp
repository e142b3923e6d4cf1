#include "music/chartsheet.h"

#include "music/catalogue.h"

#include <algorithm>

namespace varnock {

std::vector<std::string> ChartSheet::ChordNotes() const {
    std::vector<std::string> names;
    const std::size_t rows =
        chordType < 0 ? notesRows.size() : std::min<std::size_t>(1, notesRows.size());
    for (std::size_t r = 0; r < rows; ++r)
        for (const std::string &cell : notesRows[r])
            if (!cell.empty())
                names.push_back(cell);
    return names;
}

std::vector<std::string> ChartSheet::ColourKeys() const {
    std::vector<std::string> keys;
    for (const std::string &note : notes)
        if (!note.empty())
            keys.push_back(note);
    keys.insert(keys.end(), extraNotes.begin(), extraNotes.end());
    return keys;
}

std::vector<std::string> ChartSheet::ShownHeadings() const {
    std::vector<std::string> shown = headings;
    if (capo > 0 && static_cast<std::size_t>(capo) < shown.size())
        shown[static_cast<std::size_t>(capo)] = "capo";
    return shown;
}

ChartSheet ComputeSheet(const music::Instrument &instrument, int root, int chordType) {
    namespace cat = catalogue;
    const music::FretLayout &layout = instrument.Frets();
    ChartSheet sheet;
    sheet.mode = instrument.layout;
    for (int c = 0; c < music::kPositions; ++c)
        sheet.headings.emplace_back(music::HeadingName(layout, c).View());
    // The label row starts at "0" whatever the layout names its frets.
    std::vector<std::string> labels{"0"};
    for (int c = 1; c < music::kPositions; ++c)
        labels.emplace_back(music::LabelName(layout, c).View());
    sheet.rows.push_back(std::move(labels));

    // The chord's notes in formula order, by the model's sharp names; the
    // slots past the chord stay empty.
    const cat::Offsets offsets = cat::ChordOffsets(chordType);
    std::vector<int> pitches;
    for (int i = 0; i < offsets.count; ++i) {
        pitches.push_back(cat::Mod12(root + offsets.semitones[static_cast<std::size_t>(i)]));
        sheet.notes[static_cast<std::size_t>(i)] = cat::SharpName(pitches.back());
    }
    for (int s = 0; s < instrument.Strings(); ++s) {
        std::vector<std::string> row;
        std::vector<ChartCell> cells;
        for (int p = 0; p < music::kPositions; ++p) {
            ChartCell cell{instrument.PitchAt(s, p), -1};
            for (std::size_t t = 0; t < pitches.size(); ++t)
                if (pitches[t] == cell.pitch)
                    cell.tone = static_cast<int>(t);
            row.push_back(cell.tone < 0 ? "" : cat::SharpName(cell.pitch));
            cells.push_back(cell);
        }
        sheet.rows.push_back(std::move(row));
        sheet.cells.push_back(std::move(cells));
        const int open = instrument.openNotes[static_cast<std::size_t>(s)];
        sheet.openNotes.push_back(open);
        sheet.stringNames.push_back(cat::SharpName(open));
    }
    sheet.notesHeadings.assign(kNotesTableHeadings.begin(), kNotesTableHeadings.end());
    sheet.notesRows.emplace_back(sheet.notes.begin(), sheet.notes.end());
    sheet.root = root;
    sheet.chordType = chordType;
    sheet.rootItem = cat::RootItem(root);
    sheet.chordItem = std::string(cat::kChordTypes.at(static_cast<std::size_t>(chordType)).name);
    return WithCapo(sheet, instrument.capo);
}

ChartSheet WithCapo(const ChartSheet &sheet, int capo) {
    ChartSheet out = sheet;
    out.capo = capo;
    if (capo <= 0)
        return out;
    const auto at = static_cast<std::size_t>(capo);
    for (std::size_t s = 0; s < out.cells.size(); ++s) {
        std::vector<std::string> &row = out.rows.at(s + 1);
        std::vector<ChartCell> &cells = out.cells[s];
        row[0] = row.at(at);
        cells[0] = cells.at(at);
        for (std::size_t p = 1; p < at; ++p) {
            row[p].clear();
            cells[p].tone = -1;
        }
    }
    return out;
}

ChartSheet Renamed(const ChartSheet &sheet, const std::vector<std::string> &names,
                   bool notesTable) {
    ChartSheet out = sheet;
    const auto name = [&](int tone) {
        return tone >= 0 && static_cast<std::size_t>(tone) < names.size()
                   ? names[static_cast<std::size_t>(tone)]
                   : std::string();
    };
    for (std::size_t s = 0; s < out.cells.size(); ++s)
        for (std::size_t p = 0; p < out.cells[s].size(); ++p)
            out.rows.at(s + 1).at(p) = name(out.cells[s][p].tone);
    // The colour keys in order: the note slots the chord reaches, then a
    // scale's further notes; the notes table names them in the same order.
    std::vector<std::string *> keys;
    for (std::string &note : out.notes)
        if (!note.empty())
            keys.push_back(&note);
    for (std::string &note : out.extraNotes)
        keys.push_back(&note);
    for (std::size_t k = 0; k < keys.size(); ++k)
        *keys[k] = name(static_cast<int>(k));
    if (!notesTable || out.notesRows.empty())
        return out;
    if (out.extraNotes.empty() && out.chordType >= 0) {
        // A chord's first row holds its note slots; a second, its degrees.
        out.notesRows[0].assign(out.notes.begin(), out.notes.end());
    } else {
        // A scale's notes, four to a row.
        constexpr std::size_t kColumns = 4;
        for (std::size_t k = 0; k < keys.size() && k / kColumns < out.notesRows.size(); ++k)
            out.notesRows[k / kColumns].at(k % kColumns) = name(static_cast<int>(k));
    }
    return out;
}

} // namespace varnock
