#include "cli/names.h"

#include "music/catalogue.h"
#include "music/chordname.h"
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

std::string Accepted(const Choices &choices) {
    if (!choices.accepted.empty())
        return choices.accepted;
    // Quoted where a word holds more than letters, so "6/9" and "Diatonic with 6+" read whole.
    const bool quote = std::any_of(choices.words.begin(), choices.words.end(), [](const Word &c) {
        return c.word.find_first_not_of("abcdefghijklmnopqrstuvwxyz-") != std::string::npos;
    });
    std::vector<std::string> words;
    for (const Word &choice : choices.words)
        words.push_back(quote ? Quoted(choice.word) : choice.word);
    return "accepted: " + Join(words, ", ");
}

std::string ExplainChord(const std::string &typed) {
    const auto split = ChordNameOptions(typed, NameSystem::English);
    return split ? "chord \"" + typed + "\" names a root too; " + *split : "";
}

int MeantChord(const std::string &typed) {
    // Nothing typed is no chord, though a song's "D" is D major.
    return typed.empty() ? -1 : QualityType(typed).value_or(-1);
}

std::string ExplainScale(const std::string &typed) {
    if (typed.empty() || typed.find_first_not_of("0123456789") != std::string::npos)
        return "";
    return "--scale \"" + typed + "\" names no scale: the PNG's pixel scale moved to " +
           "--pixel-scale " + typed;
}

// A string's open note.
int ResolveTuningNote(const std::string &text) {
    return ReadNote(text, NameSystem::English, "tuning note").Index();
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
    for (const std::string &name : SplitList(*list)) {
        const int item = resolve(name);
        // Asked twice, it would stand twice in the book.
        if (std::find(out.begin(), out.end(), item) != out.end())
            throw BadInput(std::string(option) + " \"" + *list + "\" names \"" + name +
                           "\" a second time; accepted: each once");
        out.push_back(item);
    }
    return out;
}

// A Choices built once from a table of the catalogue's.
template <typename Build> const Choices &Once(Build build) {
    static const Choices choices = build();
    return choices;
}

} // namespace

const Word &ReadChoice(const Choices &choices, const std::string &typed) {
    WordMatch match = MatchWord(choices.words, typed);
    const int meant = choices.meant ? choices.meant(typed) : -1;
    if (meant >= 0 && !(match.taken && (match.taken->word == typed || match.taken->value == meant)))
        match = {nullptr, {&choices.words[static_cast<std::size_t>(meant)]}};
    if (match.taken)
        return *match.taken;
    if (choices.explain)
        if (std::string why = choices.explain(typed); !why.empty())
            throw BadInput(why);
    std::string hint;
    for (std::size_t i = 0; i < match.meant.size(); ++i)
        hint += (i == 0                       ? "did you mean "
                 : i + 1 < match.meant.size() ? ", "
                                              : " or ") +
                Quoted(match.meant[i]->word);
    throw BadInput("unknown " + choices.noun + " " + Quoted(typed) + "; " +
                   (hint.empty() ? "" : hint + "? ") + Accepted(choices));
}

const Choices &LayoutChoices() {
    return Once([] {
        Choices c{"fret layout", {}};
        for (int mode = 0; mode < music::kMenuLayouts; ++mode)
            c.words.push_back({music::LayoutName(mode), mode});
        // The mode number reaches the layouts the program's menu lacks as well.
        for (int mode = 0; mode < music::kLayoutCount; ++mode)
            c.words.push_back({std::to_string(mode), mode});
        return c;
    });
}

const Choices &StringChoices() {
    return Once([] { return Choices{"string count", {{"3", 3}, {"4", 4}}}; });
}

const Choices &ChordChoices() {
    return Once([] {
        // Players' usual names ("M7", "min", "sus") are answered with the
        // type they mean, read as songs write chords.
        Choices c{"chord", {}, ExplainChord, {}, MeantChord};
        for (int i = 0; i < cat::kChordTypeCount; ++i)
            c.words.push_back({std::string(cat::kChordTypes[static_cast<std::size_t>(i)].name), i});
        return c;
    });
}

const Choices &ScaleChoices() {
    return Once([] {
        Choices c{"scale", {}, ExplainScale};
        for (const Scale &scale : Scales()) {
            c.words.push_back({scale.name, static_cast<int>(c.words.size())});
            c.words.back().also = scale.aliases;
        }
        return c;
    });
}

const Choices &NameChoices() {
    return Once([] {
        Choices c{"note names", {}};
        for (const cat::NameSystemInfo &info : cat::kNameSystems)
            c.words.push_back({std::string(info.name), static_cast<int>(info.system)});
        return c;
    });
}

const Choices &SpellingChoices() {
    return Once([] {
        return Choices{"spelling",
                       {{"musician", int(Spelling::Musician)},
                        {"sharps", int(Spelling::Sharps)},
                        {"flats", int(Spelling::Flats)},
                        {"chord", int(Spelling::Chord)}}};
    });
}

const Choices &LabelChoices() {
    return Once([] {
        return Choices{"labels",
                       {{"notes", int(Labels::Notes)},
                        {"degrees", int(Labels::Degrees)},
                        {"both", int(Labels::Both)}}};
    });
}

const Choices &PaletteChoices() {
    return Once([] {
        return Choices{"palette",
                       {{"window", int(Palette::Window)},
                        {"colour-blind",
                         int(Palette::ColourBlind),
                         {"color-blind", "colourblind", "colorblind"}}}};
    });
}

const Choices &PaperChoices() {
    return Once([] {
        return Choices{"paper", {{"a4", int(Paper::A4)}, {"letter", int(Paper::Letter)}}};
    });
}

const Choices &NoteChoices() {
    return Once([] {
        Choices c{"note", {}};
        for (std::size_t i = 0; i < cat::kNotes.size(); ++i) {
            const cat::NoteNames &note = cat::kNotes[i];
            c.words.push_back({std::string(note.sharp), static_cast<int>(i)});
            if (note.flat != note.sharp)
                c.words.push_back({std::string(note.flat), static_cast<int>(i)});
        }
        return c;
    });
}

int ResolveRoot(const std::string &text) {
    return ReadNote(text, NameSystem::English, "root").Index();
}

int ResolveChord(const std::string &text) {
    return ReadChoice(ChordChoices(), text).value;
}

std::vector<int> ResolveRoots(const std::optional<std::string> &list) {
    return ResolveList("--roots", cat::kNotes.size(), list, ResolveRoot);
}

std::vector<int> ResolveChords(const std::optional<std::string> &list) {
    return ResolveList("--chords", cat::kChordTypes.size(), list, ResolveChord);
}

Selection Resolve(const Options &o) {
    Selection s;
    s.frets = o.frets;
    if (o.strings)
        s.strings = *o.strings - 3;
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
        // A tuning names every string, whatever a saved selection says.
        s.strings = strings - 3;
    }
    if (o.root)
        s.root = ResolveRoot(*o.root);
    s.chord = o.chord;
    return s;
}

} // namespace varnock::cli
