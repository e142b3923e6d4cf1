#include "chart/chartsheet.h"

namespace varnock {

std::vector<std::string> ChartSheet::ChordNotes() const {
    std::vector<std::string> names;
    if (!notesRows.empty())
        for (const std::string &cell : notesRows[0])
            if (!cell.empty())
                names.push_back(cell);
    // A scale's further notes stand in a second row; a chord's second row,
    // where there is one, holds degrees.
    names.insert(names.end(), extraNotes.begin(), extraNotes.end());
    return names;
}

} // namespace varnock
