#include "cli/capo.h"

#include "cli/errors.h"
#include "cli/names.h"

#include <charconv>

namespace varnock::cli {

namespace {

constexpr int kLastPosition = 22;

std::string Trimmed(std::string text) {
    text.erase(0, text.find_first_not_of(' '));
    text.erase(text.find_last_not_of(' ') + 1);
    return text;
}

} // namespace

std::vector<std::string> FretNames(const ChartSheet &sheet) {
    std::vector<std::string> names;
    const std::vector<std::string> &labels = sheet.rows.at(0);
    for (std::size_t p = 0; p < sheet.headings.size(); ++p)
        names.push_back(p < labels.size() && !labels[p].empty() ? labels[p] : sheet.headings[p]);
    return names;
}

int ParsePosition(const std::string &typed, const std::vector<std::string> &fretNames,
                  const std::string &option) {
    const std::string text = Trimmed(typed);
    int p = -1;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), p);
    if (!text.empty() && error == std::errc() && end == text.data() + text.size()) {
        if (p >= 0 && p <= kLastPosition)
            return p;
    } else {
        for (std::size_t i = 0; i < fretNames.size(); ++i)
            if (fretNames[i] == text)
                return static_cast<int>(i);
    }
    std::string names;
    for (const std::string &name : fretNames)
        if (name.find('+') != std::string::npos)
            names += (names.empty() ? "" : ", ") + name;
    throw BadInput(option + " \"" + typed +
                   "\" is not accepted; a position 0..22 or a fret name of the layout" +
                   (names.empty() ? "" : " (" + names + ")"));
}

ChartSheet WithCapo(const ChartSheet &sheet, int capo) {
    ChartSheet out = sheet;
    if (capo <= 0)
        return out;
    // The heading, not the label: the fret keeps its name.
    if (static_cast<std::size_t>(capo) < out.headings.size())
        out.headings[static_cast<std::size_t>(capo)] = "capo";
    for (std::size_t s = 1; s < out.rows.size(); ++s) {
        std::vector<std::string> &row = out.rows[s];
        if (static_cast<std::size_t>(capo) >= row.size())
            continue;
        row[0] = row[static_cast<std::size_t>(capo)];
        for (int p = 1; p < capo; ++p)
            row[static_cast<std::size_t>(p)].clear();
    }
    return out;
}

std::string FretListFromCapo(const std::string &list, const std::vector<std::string> &fretNames,
                             int capo) {
    std::vector<std::string> out;
    for (const std::string &entry : SplitList(list)) {
        if (entry == "x" || entry == "X" || entry.empty()) {
            out.push_back(entry);
            continue;
        }
        int p = ParsePosition(entry, fretNames, "position");
        if (p == 0)
            p = capo;
        else if (p < capo)
            throw BadInput("position \"" + entry + "\" lies below the capo at " +
                           std::to_string(capo) + "; accepted: 0 (the capo), " +
                           std::to_string(capo) + "..22 or x");
        out.push_back(std::to_string(p));
    }
    return Join(out, ",");
}

} // namespace varnock::cli
