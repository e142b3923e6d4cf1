#include "chart/chartsheet.h"

namespace varnock {

std::vector<std::string> ChartSheet::ChordNotes() const {
    std::vector<std::string> names;
    if (!notesRows.empty())
        for (const std::string &cell : notesRows[0])
            if (!cell.empty())
                names.push_back(cell);
    return names;
}

} // namespace varnock
