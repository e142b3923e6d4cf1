#include "cli/names.h"

#include "chart/controller.h"
#include "chart/controls.h"

#include <cctype>
#include <span>

namespace varnock::chart {

namespace {

using Items = std::span<const char *const>;

[[noreturn]] void Reject(const std::string &what, const std::string &value,
                         const std::vector<std::string> &accepted) {
    throw BadInput("unknown " + what + " \"" + value + "\"; accepted: " + Join(accepted, ", "));
}

std::string Lower(std::string s) {
    for (char &c : s)
        c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
    return s;
}

std::vector<std::string> Quoted(Items items) {
    std::vector<std::string> quoted;
    for (const char *item : items) {
        // Appended piece by piece: GCC 12 takes "literal" + std::string&&
        // for an overlapping copy at -O2 and warns.
        std::string name = "\"";
        name += item;
        name += '"';
        quoted.push_back(std::move(name));
    }
    return quoted;
}

// The names a root item answers to: "F# / Gb" answers to itself, "F#" and
// "Gb".
std::vector<std::string> NoteNames(const std::string &item) {
    std::vector<std::string> names = {item};
    std::string::size_type start = 0;
    for (;;) {
        const auto slash = item.find(" / ", start);
        names.push_back(item.substr(start, slash - start));
        if (slash == std::string::npos)
            return names;
        start = slash + 3;
    }
}

// The first letter may be typed in lower case ("f#", "gb").
std::optional<int> FindNote(std::string text) {
    if (!text.empty())
        text[0] = static_cast<char>(std::toupper(static_cast<unsigned char>(text[0])));
    for (std::size_t i = 0; i < items::kRoots.size(); ++i)
        for (const std::string &name : NoteNames(items::kRoots[i]))
            if (name == text)
                return static_cast<int>(i);
    return std::nullopt;
}

int ResolveItem(Items items, const std::string &what, const std::string &text) {
    for (std::size_t i = 0; i < items.size(); ++i)
        if (items[i] == text)
            return static_cast<int>(i);
    // No two chord names differ only in case, so "dim7" or "Maj7" can only
    // mean one of them.
    for (std::size_t i = 0; i < items.size(); ++i)
        if (Lower(items[i]) == Lower(text))
            return static_cast<int>(i);
    Reject(what, text, Quoted(items));
}

// Layout names are long, so any capitalisation will do; a mode number
// reaches the two layouts the program's menu does not offer as well.
int ResolveLayout(const std::string &text) {
    for (std::size_t i = 0; i < items::kLayouts.size(); ++i)
        if (Lower(items::kLayouts[i]) == Lower(text))
            return static_cast<int>(i);
    if (text.size() == 1 && text[0] >= '0' && text[0] < '0' + kModes)
        return text[0] - '0';
    std::vector<std::string> accepted = Quoted(items::kLayouts);
    accepted.push_back("0.." + std::to_string(kModes - 1));
    Reject("fret layout", text, accepted);
}

// The tuning popups hold sharps only; a flat is found through the root names.
int ResolveTuningNote(const std::string &text) {
    if (const auto root = FindNote(text)) {
        const std::string sharp = NoteNames(items::kRoots[static_cast<std::size_t>(*root)])[1];
        for (std::size_t i = 0; i < items::kTuning.size(); ++i)
            if (items::kTuning[i] == sharp)
                return static_cast<int>(i);
    }
    Reject("tuning note", text,
           std::vector<std::string>(items::kTuning.begin(), items::kTuning.end()));
}

// Every item when no list is given, else each name resolved.
template <typename ResolveName>
std::vector<int> ResolveList(Items items, const std::optional<std::string> &list,
                             ResolveName resolve) {
    std::vector<int> out;
    if (!list || list->empty()) {
        for (std::size_t i = 0; i < items.size(); ++i)
            out.push_back(static_cast<int>(i));
        return out;
    }
    for (const std::string &name : SplitList(*list))
        out.push_back(resolve(name));
    return out;
}

} // namespace

std::string Join(const std::vector<std::string> &parts, const std::string &separator) {
    std::string out;
    for (std::size_t i = 0; i < parts.size(); ++i)
        out += (i ? separator : "") + parts[i];
    return out;
}

std::vector<std::string> SplitList(const std::string &text) {
    std::vector<std::string> parts;
    std::string::size_type start = 0;
    for (;;) {
        const auto comma = text.find(',', start);
        std::string part = text.substr(start, comma - start);
        // Spaces around list entries are only typing comfort.
        part.erase(0, part.find_first_not_of(' '));
        part.erase(part.find_last_not_of(' ') + 1);
        parts.push_back(part);
        if (comma == std::string::npos)
            return parts;
        start = comma + 1;
    }
}

int ResolveRoot(const std::string &text) {
    if (const auto index = FindNote(text))
        return *index;
    Reject("root", text, Quoted(items::kRoots));
}

int ResolveChord(const std::string &text) {
    return ResolveItem(items::kChords, "chord", text);
}

std::vector<int> ResolveRoots(const std::optional<std::string> &list) {
    return ResolveList(items::kRoots, list, ResolveRoot);
}

std::vector<int> ResolveChords(const std::optional<std::string> &list) {
    return ResolveList(items::kChords, list, ResolveChord);
}

Selection Resolve(const Options &o) {
    Selection s;
    if (o.frets)
        s.frets = ResolveLayout(*o.frets);
    if (o.strings) {
        if (*o.strings != "3" && *o.strings != "4")
            throw BadInput("unknown string count \"" + *o.strings + "\"; accepted: 3, 4");
        s.strings = *o.strings == "4" ? 1 : 0;
    }
    if (o.tuning) {
        const std::vector<std::string> notes = SplitList(*o.tuning);
        if (notes.size() < 3 || notes.size() > 4)
            throw BadInput("tuning \"" + *o.tuning +
                           "\" needs 3 or 4 comma-separated notes, such as D,A,D or D,A,D,G");
        for (const std::string &note : notes)
            s.tuning.push_back(ResolveTuningNote(note));
        if (notes.size() == 4 && !s.strings)
            s.strings = 1;
        if (notes.size() == 3 && s.strings == 1)
            throw BadInput("tuning \"" + *o.tuning + "\" names 3 strings, but --strings is 4");
    }
    if (o.root)
        s.root = ResolveRoot(*o.root);
    if (o.chord)
        s.chord = ResolveChord(*o.chord);
    return s;
}

void Apply(ChartController &chart, const Selection &s) {
    if (s.frets) {
        // The mode number is all the recompute reads, so the layouts without
        // a menu item need no item to be drawn.
        chart.PopupMenu9->IndexBeyondItems = true;
        chart.PopupMenu9->SetListIndex(*s.frets);
        chart.PopupMenu9->IndexBeyondItems = false;
    }
    if (s.strings)
        chart.PopupMenu10->SetListIndex(*s.strings);
    const auto tunings = chart.TuningPopups();
    for (std::size_t i = 0; i < s.tuning.size(); ++i)
        tunings[i]->SetListIndex(s.tuning[i]);
    if (s.root)
        chart.PopupMenu1->SetListIndex(*s.root);
    if (s.chord)
        chart.PopupMenu2->SetListIndex(*s.chord);
}

std::string LayoutName(Int mode) {
    if (mode >= 0 && mode < static_cast<Int>(items::kLayouts.size()))
        return items::kLayouts[static_cast<std::size_t>(mode)];
    return "Layout " + std::to_string(mode);
}

} // namespace varnock::chart
