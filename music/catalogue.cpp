#include "music/catalogue.h"

namespace varnock::catalogue {

namespace {

// Every name of the note table stands for its own index, and every degree
// lies where its chord type's formula puts the tone: a slip in either table
// fails the build instead of misnaming a note.
constexpr bool NotesAgree() {
    for (std::size_t i = 0; i < kNotes.size(); ++i) {
        if (ParseNote(kNotes[i].sharp) != static_cast<int>(i) ||
            ParseNote(kNotes[i].flat) != static_cast<int>(i))
            return false;
        // The sharp is the natural where there is one, else a single sharp.
        const auto sharp = ParseWritten(kNotes[i].sharp);
        const auto flat = ParseWritten(kNotes[i].flat);
        if (sharp->accidental < 0 || sharp->accidental > 1 || flat->accidental > 0 ||
            flat->accidental < -1 || (sharp->accidental == 0) != (flat->accidental == 0))
            return false;
    }
    return true;
}
static_assert(NotesAgree(), "a note name does not stand for its index");

// Each system's help line names the twelve notes in order from C.
constexpr bool SystemsAgree() {
    for (const NameSystemInfo &info : kNameSystems) {
        std::string_view line = info.example;
        for (int n = 3; n < 15; ++n) {
            const auto blank = line.find(' ');
            if (ParseNote(line.substr(0, blank), info.system) != Mod12(n))
                return false;
            line = blank == std::string_view::npos ? std::string_view() : line.substr(blank + 1);
        }
        if (!line.empty())
            return false;
    }
    return true;
}
static_assert(SystemsAgree(), "a name system's example does not name the twelve notes");

constexpr bool ChordTypesAgree() {
    for (std::size_t t = 0; t < kChordTypes.size(); ++t) {
        const ChordType &type = kChordTypes[t];
        const Offsets offsets = FormulaOffsets(type.formula);
        if (offsets.count < 2 || type.degrees[0] != "R")
            return false;
        for (std::size_t i = 0; i < type.degrees.size(); ++i) {
            const bool used = static_cast<int>(i) < offsets.count;
            if (type.degrees[i].empty() == used)
                return false;
            if (used && ParseDegree(type.degrees[i]).number == 0)
                return false;
            if (used && ParseDegree(type.degrees[i]).semitones != offsets.semitones[i])
                return false;
        }
        for (std::size_t u = 0; u < t; ++u)
            if (kChordTypes[u].name == type.name)
                return false;
    }
    return true;
}
static_assert(ChordTypesAgree(), "a chord type's degrees do not match its formula");

} // namespace

std::string Format(const WrittenNote &note, NameSystem system) {
    const auto letter = static_cast<std::size_t>(note.letter);
    const auto count =
        static_cast<std::size_t>(note.accidental < 0 ? -note.accidental : note.accidental);
    if (system == NameSystem::German) {
        // H and its flat B; As, Es, Ases, Eses drop the "e" of the first ending.
        if (letter == 1 && note.accidental == -1)
            return "B";
        std::string name(1, letter == 1 ? 'H' : kLetters[letter]);
        std::string endings;
        for (std::size_t i = 0; i < count; ++i)
            endings += note.accidental > 0 ? "is" : "es";
        if ((letter == 0 || letter == 4) && note.accidental < 0)
            endings.erase(0, 1);
        return name + endings;
    }
    std::string name = system == NameSystem::Latin ? std::string(kSyllables[letter])
                                                   : std::string(1, kLetters[letter]);
    name.append(count, note.accidental > 0 ? '#' : 'b');
    return name;
}

std::optional<NameSystem> FindNameSystem(std::string_view name) {
    for (const NameSystemInfo &info : kNameSystems) {
        bool same = info.name.size() == name.size();
        for (std::size_t i = 0; same && i < name.size(); ++i)
            same = detail::Upper(info.name[i]) == detail::Upper(name[i]);
        if (same)
            return info.system;
    }
    return std::nullopt;
}

std::string Translate(std::string_view text, NameSystem from, NameSystem to) {
    const auto note = ParseWritten(text, from);
    if (!note || from == to)
        return std::string(text);
    return Format(*note, to);
}

std::string SharpName(int index) {
    return std::string(kNotes[static_cast<std::size_t>(Mod12(index))].sharp);
}

std::string FlatName(int index) {
    return std::string(kNotes[static_cast<std::size_t>(Mod12(index))].flat);
}

std::optional<int> FindChordType(std::string_view name) {
    for (std::size_t i = 0; i < kChordTypes.size(); ++i)
        if (kChordTypes[i].name == name)
            return static_cast<int>(i);
    return std::nullopt;
}

Offsets ChordOffsets(int index) {
    return FormulaOffsets(kChordTypes.at(static_cast<std::size_t>(index)).formula);
}

std::string RootItem(int index) {
    const NoteNames &note = kNotes[static_cast<std::size_t>(Mod12(index))];
    std::string item(note.sharp);
    if (note.flat != note.sharp)
        item += " / " + std::string(note.flat);
    return item;
}

} // namespace varnock::catalogue
