#include "export/notenames.h"

#include "music/chordname.h"
#include "music/errors.h"
#include "music/layouts.h"
#include "platform/basic.h"

#include <algorithm>

namespace varnock::output {

using namespace music;

namespace cat = catalogue;

namespace {

std::string Name(const std::string &text, NameSystem system) {
    return cat::Translate(text, NameSystem::English, system);
}

// Each blank-separated word that is a note; a trailing '.' stays.
std::string NameWords(const std::string &words, NameSystem system) {
    std::string out;
    std::size_t start = 0;
    while (start <= words.size()) {
        auto end = words.find(' ', start);
        if (end == std::string::npos)
            end = words.size();
        std::string word = words.substr(start, end - start);
        const bool stop = word.ends_with('.');
        if (stop)
            word.pop_back();
        // Piece by piece: GCC 12 warns of an overlapping copy otherwise.
        if (start)
            out += ' ';
        out += Name(word, system);
        if (stop)
            out += '.';
        start = end + 1;
    }
    return out;
}

std::optional<std::string> ListToEnglish(const std::optional<std::string> &list, NameSystem system,
                                         const std::string &noun) {
    if (!list || list->empty())
        return list;
    std::vector<std::string> names;
    for (const std::string &name : SplitList(*list))
        names.push_back(cat::Format(ReadNote(name, system, noun)));
    return Join(names, ",");
}

} // namespace

std::optional<std::string> ChordNameOptions(const std::string &typed, NameSystem system) {
    const ChordSymbol chord = ReadChordSymbol(typed, system);
    if (!chord.Known())
        return std::nullopt;
    std::string options = "use --root " + cat::Format(*chord.root, system) + " --chord ";
    return options.append(cat::kChordTypes[static_cast<std::size_t>(chord.type)].name);
}

cat::WrittenNote ReadNote(const std::string &typed, NameSystem system, const std::string &noun) {
    if (const auto note = cat::ParseWritten(typed, system))
        return *note;
    if (const auto note = cat::ParseWritten(FoldWord(typed), system))
        return *note;
    if (const auto split = ChordNameOptions(typed, system); split && noun == "root")
        throw BadInput("root \"" + typed + "\" names a chord; " + *split);
    std::string hint;
    if (const auto *other = cat::OtherSystem(system, [&](NameSystem s) {
            return cat::ParseWritten(FoldWord(typed), s).has_value();
        }))
        hint = "did you mean --names " + std::string(other->name) + "? ";
    const cat::NameSystemInfo &info = cat::SystemInfo(system);
    const std::string in =
        system == NameSystem::English ? "" : " in " + std::string(info.name) + " names";
    throw BadInput("unknown " + noun + " \"" + typed + "\"" + in + "; " + hint +
                   "accepted: " + std::string(info.rule));
}

std::vector<int> ReadNoteList(const std::string &list) {
    const std::vector<std::string> names = SplitList(list);
    if (names.size() < 2 || names.size() > 4)
        throw BadInput("--identify \"" + list + "\" names " + std::to_string(names.size()) +
                       (names.size() == 1 ? " note" : " notes") +
                       "; accepted: 2 to 4 comma-separated notes, such as D,F#,A");
    std::vector<int> notes;
    for (const std::string &name : names)
        notes.push_back(ReadNote(name, NameSystem::English, "note").Index());
    if (std::count(notes.begin(), notes.end(), notes[0]) == static_cast<long>(notes.size()))
        throw BadInput("--identify \"" + list +
                       "\" names one note only; accepted: 2 to 4 different notes");
    return notes;
}

void ToEnglish(Asked &asked) {
    if (asked.names == NameSystem::English)
        return;
    if (asked.root)
        asked.root = cat::Format(ReadNote(*asked.root, asked.names, "root"));
    asked.tuning = ListToEnglish(asked.tuning, asked.names, "tuning note");
    asked.roots = ListToEnglish(asked.roots, asked.names, "root");
    asked.identify = ListToEnglish(asked.identify, asked.names, "note");
}

ChartSheet Named(const ChartSheet &sheet, NameSystem system) {
    if (system == NameSystem::English)
        return sheet;
    ChartSheet out = sheet;
    // Row 0 of the chart holds fret names, never notes.
    for (std::size_t r = 1; r < out.rows.size(); ++r)
        for (std::string &cell : out.rows[r])
            cell = Name(cell, system);
    for (auto &row : out.notesRows)
        for (std::string &cell : row)
            cell = Name(cell, system);
    for (std::string &note : out.notes)
        note = Name(note, system);
    for (std::string &note : out.extraNotes)
        note = Name(note, system);
    for (std::string &name : out.stringNames)
        name = Name(name, system);
    out.rootItem = Name(out.rootItem.substr(0, out.rootItem.find(" / ")), system);
    return out;
}

Book Named(Book book, NameSystem system) {
    if (system == NameSystem::English)
        return book;
    for (BookPart &part : book.parts) {
        part.name = Name(part.name, system);
        for (BookChart &chart : part.charts) {
            chart.title = NameWords(chart.title.substr(0, chart.title.find(' ')), system) +
                          chart.title.substr(std::min(chart.title.find(' '), chart.title.size()));
            chart.sheet = Named(chart.sheet, system);
        }
    }
    return book;
}

} // namespace varnock::output
