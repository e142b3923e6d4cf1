#include "chart/chartsheet.h"

namespace varnock {

std::vector<std::string> ChartSheet::ChordNotes() const {
    std::vector<std::string> names;
    for (const auto &row : notesRows)
        for (const std::string &cell : row)
            if (!cell.empty())
                names.push_back(cell);
    return names;
}

} // namespace varnock
