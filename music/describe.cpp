#include "music/describe.h"

#include "music/errors.h"

#include <algorithm>
#include <string_view>

namespace varnock::music {

namespace {

std::string Join(const std::vector<std::string> &items, std::string_view separator) {
    std::string out;
    for (std::size_t i = 0; i < items.size(); ++i)
        out += (i ? std::string(separator) : "") + items[i];
    return out;
}

// "D", "A and E", "D, F# and A".
std::string InWords(const std::vector<std::string> &items) {
    if (items.size() < 2)
        return Join(items, "");
    return Join(std::vector<std::string>(items.begin(), items.end() - 1), ", ") + " and " +
           items.back();
}

} // namespace

std::string Describe(const SheetFacts &facts) {
    const auto strings = static_cast<std::size_t>(std::max(facts.strings, 0));
    if (facts.tuning.size() != strings || facts.cells.size() != strings)
        throw BadInput("a sheet of " + std::to_string(facts.strings) + " strings has " +
                       std::to_string(facts.tuning.size()) + " open notes and " +
                       std::to_string(facts.cells.size()) + " rows");
    std::string out = facts.layoutName + " fretboard, " + std::to_string(facts.strings) +
                      " strings tuned " + Join(facts.tuning, " ") + ".\n";
    out += facts.kind + ": " + facts.chordTitle;
    if (!facts.notes.empty())
        out += ", notes " + InWords(facts.notes) + " (root " + facts.notes[0] + ")";
    out += ".\n";
    for (std::size_t k = 0; k < strings; ++k) {
        const std::size_t s = facts.lastStringFirst ? strings - 1 - k : k;
        const std::vector<std::string> &row = facts.cells[s];
        if (row.size() > facts.fretNames.size())
            throw BadInput("string " + std::to_string(s + 1) + " has " +
                           std::to_string(row.size()) + " cells but there are " +
                           std::to_string(facts.fretNames.size()) + " fret names");
        // Chord notes first, root first; anything else a cell holds after them
        // rather than silently dropped.
        std::vector<std::string> order = facts.notes;
        for (const std::string &cell : row)
            if (!cell.empty() && std::find(order.begin(), order.end(), cell) == order.end())
                order.push_back(cell);
        std::vector<std::string> parts;
        bool any = false;
        for (const std::string &note : order) {
            std::vector<std::string> positions, frets, diatonic;
            for (std::size_t p = 0; p < row.size(); ++p)
                if (row[p] == note) {
                    positions.push_back(std::to_string(p));
                    frets.push_back(facts.fretNames[p]);
                    if (p < facts.diatonicNames.size())
                        diatonic.push_back(facts.diatonicNames[p]);
                }
            any = any || !positions.empty();
            const bool one = positions.size() == 1;
            parts.push_back(
                positions.empty()
                    ? "no " + note
                    : note + (one ? " at position " : " at positions ") + Join(positions, ", ") +
                          (one ? " (fret " : " (frets ") + Join(frets, ", ") +
                          (diatonic.empty() ? "" : "; diatonic " + Join(diatonic, ", ")) + ")");
        }
        out += "String " + std::to_string(s + 1) + ", tuned " + facts.tuning[s] + ": " +
               (any ? Join(parts, "; ") : "no chord notes") + ".\n";
    }
    return out;
}

} // namespace varnock::music
