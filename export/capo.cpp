#include "export/capo.h"

#include "music/errors.h"
#include "music/layouts.h"
#include "platform/basic.h"

namespace varnock::output {

using namespace music;

namespace {

std::string Trimmed(std::string text) {
    text.erase(0, text.find_first_not_of(' '));
    text.erase(text.find_last_not_of(' ') + 1);
    return text;
}

} // namespace

std::string FretsFrom(const std::vector<std::string> &fretNames, int first) {
    return AcceptedFrets({fretNames.begin() + first, fretNames.end()});
}

std::string AcceptedFrets(const std::vector<std::string> &fretNames) {
    // The plain numbers run without a gap from 0; name their ends, then the rest.
    std::string numbers, others;
    for (const std::string &name : fretNames) {
        if (name.find_first_not_of("0123456789") == std::string::npos)
            numbers = numbers.empty() ? name + ".." + name
                                      : numbers.substr(0, numbers.find("..") + 2) + name;
        else
            others += ", " + name;
    }
    return numbers + others;
}

int ParsePosition(const std::string &typed, const std::vector<std::string> &fretNames,
                  const std::string &option) {
    const std::string text = Trimmed(typed);
    for (std::size_t p = 0; p < fretNames.size(); ++p)
        if (fretNames[p] == text)
            return static_cast<int>(p);
    throw BadInput(option + " \"" + typed +
                   "\" is not accepted; a fret of the layout: " + AcceptedFrets(fretNames));
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
                           fretNames.at(static_cast<std::size_t>(capo)) +
                           "; accepted: 0 (the capo), " + FretsFrom(fretNames, capo) + " or x");
        out.push_back(std::to_string(p));
    }
    return Join(out, ",");
}

} // namespace varnock::output
