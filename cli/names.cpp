#include "cli/names.h"

#include "chart/controller.h"
#include "chart/controls.h"
#include "export/capo.h"
#include "music/catalogue.h"
#include "music/layouts.h"

#include <algorithm>
#include <span>

namespace varnock::cli {

namespace {

namespace cat = catalogue;

std::string Quoted(std::string_view text) {
    std::string quoted = "\"";
    quoted += text;
    quoted += '"';
    return quoted;
}

std::string AcceptedChords() {
    std::vector<std::string> names;
    for (const cat::ChordType &type : cat::kChordTypes)
        names.push_back(Quoted(type.name));
    return Join(names, ", ");
}

std::string NoteRule() {
    return std::string(cat::kNoteNameRule) + ", such as F# or Bb";
}

// How players often write a chord type the menu names otherwise.
constexpr std::pair<std::string_view, std::string_view> kChordAliases[] = {
    {"M", "Maj"},   {"maj", "Maj"},   {"major", "Maj"}, {"M7", "maj7"},   {"Maj7", "maj7"},
    {"M9", "maj9"}, {"M11", "maj11"}, {"M13", "maj13"}, {"min", "m"},     {"minor", "m"},
    {"min7", "m7"}, {"min6", "m6"},   {"min9", "m9"},   {"mM7", "mmaj7"}, {"mM9", "mmaj9"},
    {"o", "Dim"},   {"o7", "Dim7"},   {"+", "Aug"},     {"sus", "Sus4"},  {"7sus", "7sus4"},
    {"add2", "2"},  {"6add9", "6/9"}, {"69", "6/9"},    {"aug", "Aug"},   {"dim", "Dim"},
};

// The chord type a near miss most likely means: a player's usual name for
// it, or the same name in other capitals; nullopt when nothing is near.
std::optional<int> NearChord(const std::string &text) {
    for (const auto &[alias, name] : kChordAliases)
        if (alias == text)
            return cat::FindChordType(name);
    for (int i = 0; i < cat::kChordTypeCount; ++i)
        if (LCase(std::string(cat::kChordTypes[static_cast<std::size_t>(i)].name)) == LCase(text))
            return i;
    return std::nullopt;
}

const cat::NameSystemInfo &Info(NameSystem system) {
    for (const cat::NameSystemInfo &info : cat::kNameSystems)
        if (info.system == system)
            return info;
    return cat::kNameSystems[0];
}

std::string ToEnglish(const std::string &typed, NameSystem system, const char *option) {
    const auto note = cat::ParseWritten(typed, system);
    if (!note)
        throw BadInput(std::string(option) + " \"" + typed + "\" is no " +
                       std::string(Info(system).name) +
                       " note name; accepted: " + std::string(Info(system).rule));
    return cat::Format(*note);
}

std::optional<std::string> ListToEnglish(const std::optional<std::string> &list, NameSystem system,
                                         const char *option) {
    if (!list || list->empty())
        return list;
    std::vector<std::string> names;
    for (const std::string &name : SplitList(*list))
        names.push_back(ToEnglish(name, system, option));
    return Join(names, ",");
}

std::optional<int> FindNote(const std::string &text) {
    return cat::ParseNote(text);
}

// Layout names are long, so any capitalisation will do; a mode number
// reaches the two layouts the program's menu does not offer as well.
int ResolveLayout(const std::string &text) {
    for (int i = 0; i < music::kMenuLayouts; ++i)
        if (LCase(music::LayoutName(i)) == LCase(text))
            return i;
    if (text.size() == 1 && text[0] >= '0' && text[0] < '0' + music::kLayoutCount)
        return text[0] - '0';
    std::vector<std::string> accepted;
    for (int i = 0; i < music::kMenuLayouts; ++i)
        accepted.push_back(Quoted(music::LayoutName(i)));
    accepted.push_back("0.." + std::to_string(music::kLayoutCount - 1));
    throw BadInput("unknown fret layout \"" + text + "\"; accepted: " + Join(accepted, ", "));
}

// The tuning popups run from D, so item i is the note index i + 5.
int ResolveTuningNote(const std::string &text) {
    if (const auto note = FindNote(text))
        return cat::Mod12(*note - 5);
    throw BadInput("unknown tuning note \"" + text + "\"; accepted: " + NoteRule());
}

// Every item when no list is given, else each name resolved.
template <typename ResolveName>
std::vector<int> ResolveList(const char *option, std::size_t count,
                             const std::optional<std::string> &list, ResolveName resolve) {
    std::vector<int> out;
    if (list && list->empty())
        throw BadInput(std::string(option) + " \"\" names nothing; leave it out for all " +
                       std::to_string(count));
    if (!list) {
        for (std::size_t i = 0; i < count; ++i)
            out.push_back(static_cast<int>(i));
        return out;
    }
    for (const std::string &name : SplitList(*list))
        out.push_back(resolve(name));
    return out;
}

} // namespace

namespace {

// "Dm" as a root and a chord type: the longest note name in front, then a
// chord type (or a near miss of one); the hint that says so.
std::optional<std::string> SplitChordName(const std::string &text) {
    for (std::size_t cut = text.size() - std::min<std::size_t>(text.size(), 1); cut > 0; --cut) {
        const std::string note = text.substr(0, cut), rest = text.substr(cut);
        if (!FindNote(note))
            continue;
        auto chord = cat::FindChordType(rest);
        if (!chord)
            chord = NearChord(rest);
        if (chord)
            return "use --root " + note + " --chord " +
                   std::string(cat::kChordTypes[static_cast<std::size_t>(*chord)].name);
    }
    return std::nullopt;
}

} // namespace

int ResolveRoot(const std::string &text) {
    if (const auto note = FindNote(text))
        return *note;
    if (const auto split = SplitChordName(text))
        throw BadInput("root \"" + text + "\" names a chord; " + *split);
    throw BadInput("unknown root \"" + text + "\"; accepted: " + NoteRule());
}

int ResolveChord(const std::string &text) {
    if (const auto chord = cat::FindChordType(text))
        return *chord;
    std::string hint;
    if (const auto near = NearChord(text))
        hint =
            "did you mean " + Quoted(cat::kChordTypes[static_cast<std::size_t>(*near)].name) + "? ";
    else if (const auto split = SplitChordName(text))
        throw BadInput("chord \"" + text + "\" names a root too; " + *split);
    throw BadInput("unknown chord \"" + text + "\"; " + hint + "accepted: " + AcceptedChords());
}

std::vector<int> ResolveRoots(const std::optional<std::string> &list) {
    return ResolveList("--roots", cat::kNotes.size(), list, ResolveRoot);
}

std::vector<int> ResolveChords(const std::optional<std::string> &list) {
    return ResolveList("--chords", cat::kChordTypes.size(), list, ResolveChord);
}

std::vector<int> ResolveNoteList(const std::string &list) {
    const std::vector<std::string> names = SplitList(list);
    if (names.size() < 2 || names.size() > 4)
        throw BadInput("--identify \"" + list + "\" names " + std::to_string(names.size()) +
                       (names.size() == 1 ? " note" : " notes") +
                       "; accepted: 2 to 4 comma-separated notes, such as D,F#,A");
    std::vector<int> notes;
    for (const std::string &name : names) {
        const auto note = FindNote(name);
        if (!note)
            throw BadInput("note \"" + name + "\" is not a note name; accepted: " + NoteRule());
        notes.push_back(*note);
    }
    if (std::count(notes.begin(), notes.end(), notes[0]) == static_cast<long>(notes.size()))
        throw BadInput("--identify \"" + list +
                       "\" names one note only; accepted: 2 to 4 different notes");
    return notes;
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
        const int strings = static_cast<int>(notes.size());
        if (s.strings && *s.strings + 3 != strings)
            throw BadInput("tuning \"" + *o.tuning + "\" names " + std::to_string(strings) +
                           " strings, but --strings is " + std::to_string(*s.strings + 3));
        if (strings == 4)
            s.strings = 1;
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

Limits ResolveLimits(const Options &options, const std::vector<std::string> &fretNames, int capo) {
    Limits limits;
    limits.capo = capo;
    limits.mutedOk = options.mutedOk;
    if (options.reach)
        limits.reach = *options.reach;
    if (options.count)
        limits.count = *options.count;
    if (options.highest) {
        limits.highest = ParsePosition(*options.highest, fretNames, "--highest");
        if (limits.highest < capo)
            throw BadInput("--highest \"" + *options.highest + "\" lies below the capo at " +
                           fretNames.at(static_cast<std::size_t>(capo)) + "; accepted: " +
                           std::to_string(capo) + "..22 or a fret name from there");
    } else {
        const auto twelve = std::find(fretNames.begin(), fretNames.end(), "12");
        limits.highest = twelve == fretNames.end()
                             ? 12
                             : static_cast<int>(std::distance(fretNames.begin(), twelve));
        limits.highest = std::max(limits.highest, std::min(kLastPosition, capo + limits.reach));
    }
    return limits;
}

Options InEnglish(Options o, NameSystem system) {
    if (system == NameSystem::English)
        return o;
    if (o.root)
        o.root = ToEnglish(*o.root, system, "--root");
    o.tuning = ListToEnglish(o.tuning, system, "--tuning");
    o.roots = ListToEnglish(o.roots, system, "--roots");
    o.identify = ListToEnglish(o.identify, system, "--identify");
    return o;
}

} // namespace varnock::cli
