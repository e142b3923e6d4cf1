#include "export/song.h"

#include "export/capo.h"
#include "export/songsheet.h"
#include "export/songtext.h"
#include "music/chordpro.h"
#include "music/errors.h"
#include "music/suggest.h"
#include "platform/basic.h"

#include <algorithm>
#include <charconv>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>

namespace varnock::output {

namespace cat = catalogue;

namespace {

Song ReadSong(const std::string &path) {
    std::string bytes;
    std::error_code folder;
    std::ifstream in(path, std::ios::binary);
    if (!std::filesystem::is_directory(path, folder) && in)
        bytes.assign(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
    if (std::filesystem::is_directory(path, folder) || (!in && !in.eof()))
        throw BadInput("--song \"" + path + "\" cannot be read; a ChordPro file (.cho, .pro)");
    Song song;
    try {
        song = ReadChordPro(bytes);
    } catch (const BadInput &e) {
        throw BadInput("--song \"" + path + "\": " + e.what());
    }
    if (song.lines.empty() && song.title.empty())
        throw BadInput("--song \"" + path +
                       "\" is an empty song; a ChordPro song has lyrics "
                       "with [chords] in them");
    if (ChordNames(song).empty())
        throw BadInput("--song \"" + path +
                       "\" has no chords; a ChordPro song writes them in "
                       "brackets where they fall: [G]Amazing [C]grace");
    return song;
}

int Semitones(const std::string &text) {
    int n = 0;
    const char *first = text.data() + (text.starts_with("+") ? 1 : 0);
    const auto [end, error] = std::from_chars(first, text.data() + text.size(), n);
    if (text.empty() || error != std::errc() || end != text.data() + text.size() || n < -11 ||
        n > 11)
        throw BadInput("--transpose \"" + text +
                       "\" is not accepted; semitones -11..11 (-2 is "
                       "two down, 3 three up)");
    return n;
}

Key TypedKey(const std::string &text, NameSystem names) {
    const auto key = ReadKey(text, names);
    if (key)
        return *key;
    std::string hint;
    if (const auto *other =
            cat::OtherSystem(names, [&](NameSystem s) { return ReadKey(text, s).has_value(); }))
        hint.append("did you mean --names ").append(other->name).append("? ");
    throw BadInput("--key \"" + text + "\" is no key; " + hint + "a note name, then m for minor: " +
                   std::string(cat::SystemInfo(names).rule) + " (G, Em, F#m, Bb)");
}

// The song's key: its {key}, else what its first chord says.
Key SongKey(const Song &song, NameSystem names) {
    if (const auto key = ReadKey(song.key, names))
        return *key;
    std::vector<ChordSymbol> chords;
    for (const std::string &name : ChordNames(song))
        chords.push_back(ReadChordSymbol(name, names));
    return GuessKey(chords).value_or(Key{*cat::ParseWritten("C"), false});
}

// Moves the song as asked; the command's options win over its {transpose}.
// Returns the key it is in now.
Key MoveAsAsked(Song &song, const Asked &asked, NameSystem names) {
    const Key from = SongKey(song, names);
    std::optional<Key> to;
    if (asked.key) {
        to = TypedKey(*asked.key, names);
        // D# major is written Eb: a key of more than six sharps or flats by
        // its usual name.
        if (std::abs(Signature(*to)) > 6)
            to = TransposeKey(*to, 0);
        // A song moves its tonic; major stays major and minor minor.
        if (to->minor != from.minor)
            throw BadInput("--key \"" + *asked.key + "\" is " + (to->minor ? "minor" : "major") +
                           " but the song is in " + WriteKey(from, names) + "; accepted: a " +
                           (from.minor ? "minor" : "major") + " key, such as " +
                           WriteKey({to->tonic, from.minor}, names));
    } else if (asked.transpose)
        to = TransposeKey(from, Semitones(*asked.transpose));
    else if (song.transpose && *song.transpose % 12 != 0)
        to = TransposeKey(from, *song.transpose);
    song.transpose.reset();
    if (!to)
        return from;
    MoveSong(song, from, *to, names);
    // Moved to a key asked for, it is in that key whatever the file said.
    if (asked.key)
        song.key = WriteKey(*to, names);
    return *to;
}

std::vector<std::vector<int>> Tunings(const Asked &asked, const ChartSheet &sheet, NameSystem names,
                                      std::vector<std::string> &tuningNames) {
    std::vector<std::vector<int>> tunings = {sheet.openNotes};
    std::vector<std::string> own;
    for (int note : sheet.openNotes)
        own.push_back(cat::Translate(cat::SharpName(note), NameSystem::English, names));
    tuningNames = {Join(own, " ")};
    if (!asked.tunings)
        return tunings;
    for (const std::string &entry : Split(*asked.tunings, ";")) {
        std::vector<int> tuning;
        std::vector<std::string> written;
        for (const std::string &note : SplitList(entry)) {
            const auto pitch = cat::ParseNote(note, names);
            if (!pitch)
                throw BadInput("--tunings entry \"" + entry + "\": \"" + note +
                               "\" is not a note name; " +
                               std::string(cat::SystemInfo(names).rule));
            tuning.push_back(*pitch);
            written.push_back(note);
        }
        if (tuning.size() != sheet.openNotes.size())
            throw BadInput("--tunings entry \"" + entry + "\" names " +
                           std::to_string(tuning.size()) + " notes; this instrument has " +
                           std::to_string(sheet.openNotes.size()) +
                           " strings (--strings), tunings separated by \";\": D,A,D;D,A,A");
        if (std::find(tunings.begin(), tunings.end(), tuning) == tunings.end()) {
            tunings.push_back(tuning);
            tuningNames.push_back(Join(written, " "));
        }
    }
    return tunings;
}

std::string SuggestAnswer(const Song &song, const Asked &asked, SongBoard board,
                          const ChartSheet &sheet, const Key &key) {
    std::vector<std::string> tuningNames;
    const auto tunings = Tunings(asked, sheet, board.system, tuningNames);
    SuggestRequest request;
    request.mode = board.mode;
    request.tunings = tunings;
    request.reach = board.limits.reach;
    // Capo positions up to the layout's seventh fret.
    const auto seventh = std::find(board.fretNames.begin(), board.fretNames.end(), "7");
    for (int p = 0; p <= static_cast<int>(seventh - board.fretNames.begin()) && p < kPositions; ++p)
        request.capos.push_back(p);
    SuggestTable table;
    table.title = song.title;
    table.tuningNames = tuningNames;
    table.reach = board.limits.reach;
    table.capoNames = board.fretNames;
    for (const std::string &name : ChordNames(song))
        request.chords.push_back(ReadChordSymbol(name, board.system));
    request.uses = ChordUses(song);
    table.suggestions = Suggest(request, 10);
    for (const Suggestion &s : table.suggestions) {
        const Key to = TransposeKey(key, s.semitones);
        table.keys.push_back(WriteKey(to, board.system));
        // The chords it cannot play, named in the key it moves to.
        std::vector<std::string> missing;
        for (std::size_t c : s.unplayable) {
            const std::string name =
                WriteChordSymbol(TransposeChord(request.chords[c], key, to), board.system);
            // Two names of the song can move to one.
            if (std::find(missing.begin(), missing.end(), name) == missing.end())
                missing.push_back(name);
        }
        table.notPlayable.push_back(Join(missing, " "));
    }
    if (!table.suggestions.empty()) {
        const Suggestion &first = table.suggestions.front();
        Song moved = song;
        MoveSong(moved, key, TransposeKey(key, first.semitones), board.system);
        board.openNotes = tunings[static_cast<std::size_t>(first.tuning)];
        board.stringNames = Split(tuningNames[static_cast<std::size_t>(first.tuning)], " ");
        board.capo = first.capo;
        board.limits.capo = first.capo;
        board.limits.highest = std::max(board.limits.highest,
                                        std::min(kLastPosition, first.capo + board.limits.reach));
        table.firstChords = PlaceSongChords(moved, board);
        table.firstBoard = board.Describe();
    }
    return SuggestText(table);
}

} // namespace

std::string RunSong(const Asked &asked, const ChartSheet &sheet,
                    const std::vector<std::string> &fretNames) {
    const NameSystem names = asked.names;
    Song song = ReadSong(*asked.song);
    const Key key = MoveAsAsked(song, asked, names);

    SongBoard board;
    board.mode = static_cast<int>(sheet.mode);
    board.openNotes = sheet.openNotes;
    for (int note : sheet.openNotes)
        board.stringNames.push_back(
            cat::Translate(cat::SharpName(note), NameSystem::English, names));
    board.fretNames = fretNames;
    board.system = names;
    board.leftHanded = asked.leftHanded;
    if (asked.capo)
        board.capo = ParsePosition(*asked.capo, fretNames, "--capo");
    else if (!song.capo.empty() && song.capo != "0") {
        // A capo written for another board is told, not obeyed: the song
        // still plays, and --capo places one.
        try {
            board.capo = ParsePosition(song.capo, fretNames, "{capo} in the song");
        } catch (const BadInput &e) {
            song.warnings.push_back(std::string(e.what()) +
                                    "; played without a capo (--capo sets one)");
        }
    }
    board.limits = ResolveLimits(asked, fretNames, board.capo);

    // The file's own faults are told once every value has been accepted, so
    // a refusal stays one line.
    const auto warn = [&] {
        for (const std::string &warning : song.warnings)
            std::cerr << "varnock-chart: " << *asked.song << ": " << warning << "\n";
    };
    if (asked.suggest) {
        const std::string table = SuggestAnswer(song, asked, board, sheet, key);
        warn();
        if (!asked.output)
            return table;
        WriteTextFile(*asked.output, table);
        return "";
    }
    const std::vector<SongChord> chords = PlaceSongChords(song, board);
    warn();
    if (asked.pdf)
        WriteSongSheet(*asked.pdf, song, chords, board, asked.paper);
    if (asked.chordpro)
        WriteTextFile(*asked.chordpro, ChordProText(song, chords, board));
    const std::string text = SongText(song, chords, board);
    if (asked.output)
        WriteTextFile(*asked.output, text);
    else if (asked.text || !(asked.pdf || asked.chordpro))
        return text;
    return "";
}

} // namespace varnock::output
