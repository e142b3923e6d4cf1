#include "chart/chartsheet.h"

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

} // namespace varnock
