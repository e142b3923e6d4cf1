#include "export/songtext.h"

#include "music/degrees.h"
#include "music/layouts.h"
#include "platform/basic.h"

#include <algorithm>

namespace varnock::output {

using namespace music;

namespace cat = catalogue;

namespace {

// Characters, not bytes: what a fixed-width line lines up by.
std::size_t Characters(std::string_view text) {
    std::size_t n = 0;
    for (char c : text)
        n += (static_cast<unsigned char>(c) & 0xC0) != 0x80 ? 1 : 0;
    return n;
}

std::string PadTo(std::string text, std::size_t width) {
    const std::size_t n = Characters(text);
    return n < width ? text + std::string(width - n, ' ') : text + " ";
}

// The chord list's first column: the longest name and a blank, 8 at least.
std::size_t NameColumn(const std::vector<SongChord> &chords) {
    std::size_t width = 8;
    for (const SongChord &chord : chords)
        width = std::max(width, Characters(chord.symbol.written) + 1);
    return width;
}

} // namespace

std::string SongBoard::Describe() const {
    std::string out = LayoutName(mode) + ", " + std::to_string(openNotes.size()) + " strings " +
                      Join(stringNames, " ");
    if (capo > 0)
        out += ", capo at " + fretNames.at(static_cast<std::size_t>(capo));
    return out;
}

std::vector<SongChord> PlaceSongChords(const Song &song, const SongBoard &board) {
    Board frets = BoardFor(board.mode, board.openNotes);
    std::vector<SongChord> chords;
    for (const std::string &name : ChordNames(song)) {
        SongChord chord;
        chord.symbol = ReadChordSymbol(name, board.system);
        chord.tones = SymbolTones(chord.symbol);
        if (chord.tones.empty()) {
            chord.note = "not a chord type Varnock knows: shown as written";
            // Written in another name system, it says which.
            if (const auto *other = catalogue::OtherSystem(
                    board.system, [&](NameSystem s) { return ReadChordSymbol(name, s).Known(); }))
                chord.note = "not a chord in " +
                             std::string(catalogue::SystemInfo(board.system).name) + " names; in " +
                             std::string(other->name) + " names it is one (--names " +
                             std::string(other->name) + ")";
            chords.push_back(std::move(chord));
            continue;
        }
        chord.shape = PlaceChord(frets, chord.symbol, board.limits, board.fretNames);
        std::vector<std::string> notes;
        for (const std::string &note :
             SpellChord(cat::Format(*chord.symbol.root), chord.symbol.type))
            notes.push_back(cat::Translate(note, NameSystem::English, board.system));
        if (chord.shape.fingering) {
            chord.voicing =
                Describe(*chord.shape.fingering, chord.tones, notes, board.fretNames, board.capo);
            if (chord.shape.relaxed)
                chord.note = "past the limits: " + chord.shape.reason;
        } else if (!chord.shape.missing.empty()) {
            std::vector<std::string> missing;
            for (int pitch : chord.shape.missing)
                for (std::size_t t = 0; t < chord.tones.size(); ++t)
                    if (chord.tones[t].pitch == pitch)
                        missing.push_back(notes.at(t));
            chord.note = "not on this board: no string has " + Join(missing, " or ");
        } else {
            chord.note = "not on this board: " + chord.shape.reason;
        }
        chords.push_back(std::move(chord));
    }
    return chords;
}

std::string SongChordLine(const SongChord &chord, std::size_t width) {
    std::string line = PadTo(chord.symbol.written, width);
    if (chord.shape.fingering)
        line += VoicingLine(chord.voicing) + (chord.note.empty() ? "" : " (" + chord.note + ")");
    else
        line += chord.note;
    return line;
}

std::pair<std::string, std::string> ChordsOverWords(const SongLine &line) {
    std::string chords, words;
    std::size_t used = 0; // characters of `chords`
    std::size_t from = 0; // bytes of the text in `words`
    for (const PlacedChord &chord : line.chords) {
        words += line.text.substr(from, chord.at - from);
        from = chord.at;
        std::size_t column = Characters(words);
        // The name before needs the room: the words make way, a word broken
        // with dashes so it still reads as one.
        if (used > 0 && column < used + 1) {
            const bool inWord = !words.empty() && words.back() != ' ' && from < line.text.size() &&
                                line.text[from] != ' ';
            words.append(used + 1 - column, inWord ? '-' : ' ');
            column = used + 1;
        }
        chords.append(column - used, ' ').append(chord.name);
        used = column + Characters(chord.name);
    }
    return {chords, words + line.text.substr(from)};
}

std::string SectionHeading(const SongLine &start) {
    if (!start.text.empty())
        return start.text;
    std::string name = start.section;
    if (!name.empty())
        name[0] = static_cast<char>(std::toupper(static_cast<unsigned char>(name[0])));
    return name;
}

std::string SongText(const Song &song, const std::vector<SongChord> &chords,
                     const SongBoard &board) {
    std::string out = song.title.empty() ? "Untitled song" : song.title;
    if (!song.artist.empty())
        out += ", " + song.artist;
    out += "\n";
    for (const std::string &subtitle : song.subtitles)
        out += subtitle + "\n";
    out += (song.key.empty() ? "" : "Key " + song.key + "; ") + board.Describe() + "\n\nChords:\n";
    for (const SongChord &chord : chords)
        out += "  " + SongChordLine(chord, NameColumn(chords)) + "\n";
    for (const SongLine &line : SungLines(song)) {
        const std::string indent = line.section == "chorus" ? "  " : "";
        switch (line.kind) {
        case SongLine::Kind::Blank:
            out += "\n";
            break;
        case SongLine::Kind::Comment:
            out += indent + "(" + line.text + ")\n";
            break;
        case SongLine::Kind::SectionStart:
            out += "\n[" + SectionHeading(line) + "]\n";
            break;
        case SongLine::Kind::SectionEnd:
        case SongLine::Kind::Kept:
            break;
        case SongLine::Kind::ChorusRecall:
            out += "\n[" + (line.text.empty() ? std::string("Chorus") : line.text) + "]\n";
            break;
        case SongLine::Kind::Tab:
            out += line.text + "\n";
            break;
        case SongLine::Kind::Lyrics: {
            const auto [chords, words] = ChordsOverWords(line);
            if (!line.chords.empty())
                out += indent + chords + "\n";
            // A line of chords alone has no words under them.
            if (line.chords.empty() || line.text.find_first_not_of(' ') != std::string::npos)
                out += indent + words + "\n";
        } break;
        }
    }
    // Blank lines run together where sections meet.
    for (std::size_t at; (at = out.find("\n\n\n")) != std::string::npos;)
        out.erase(at, 1);
    return out;
}

std::string SuggestText(const SuggestTable &table) {
    std::string out = "Keys, capos and tunings for " +
                      (table.title.empty() ? std::string("the song") : "\"" + table.title + "\"") +
                      ", best first (reach " + std::to_string(table.reach) + "):\n";
    std::vector<std::vector<std::string>> rows = {
        {"key", "capo", "tuning", "playable", "not playable"}};
    for (std::size_t i = 0; i < table.suggestions.size(); ++i) {
        const Suggestion &s = table.suggestions[i];
        rows.push_back({table.keys.at(i),
                        s.capo == 0 ? "-" : table.capoNames.at(static_cast<std::size_t>(s.capo)),
                        table.tuningNames.at(static_cast<std::size_t>(s.tuning)),
                        std::to_string(s.playable) + "/" + std::to_string(s.known),
                        table.notPlayable.at(i)});
    }
    std::vector<std::size_t> widths(rows.front().size(), 0);
    for (const auto &row : rows)
        for (std::size_t c = 0; c < row.size(); ++c)
            widths[c] = std::max(widths[c], Characters(row[c]) + 1);
    for (const auto &row : rows) {
        std::string line = " ";
        for (std::size_t c = 0; c < row.size(); ++c)
            line += " " + (c + 1 < row.size() ? PadTo(row[c], widths[c]) : row[c]);
        while (!line.empty() && line.back() == ' ')
            line.pop_back();
        out += line + "\n";
    }
    if (table.suggestions.empty())
        return out;
    out += "\nFingerings of the first: key " + table.keys.front() + ", " + table.firstBoard + "\n";
    for (const SongChord &chord : table.firstChords)
        out += "  " + SongChordLine(chord, NameColumn(table.firstChords)) + "\n";
    return out;
}

namespace {

// ChordPro's frets: counted from the nut, shifted to a base fret when the
// hand sits higher than a diagram's few rows.
std::string Define(const SongChord &chord) {
    constexpr int kRows = 5;
    const std::vector<int> &positions = chord.shape.fingering->positions;
    int low = kLastPosition + 1, high = 0;
    for (int p : positions) {
        if (p > 0) {
            low = std::min(low, p);
            high = std::max(high, p);
        }
    }
    const int base = high > kRows ? low : 1;
    std::string frets;
    for (int p : positions) {
        frets += frets.empty() ? "" : " ";
        frets += p == kMuted ? "x" : p == 0 ? "0" : std::to_string(p - base + 1);
    }
    return "{define: " + chord.symbol.written + " base-fret " + std::to_string(base) + " frets " +
           frets + "}\n";
}

std::string WithChords(const SongLine &line) {
    std::string out;
    std::size_t from = 0;
    for (const PlacedChord &chord : line.chords) {
        out += line.text.substr(from, chord.at - from);
        // Piece by piece: GCC 12 warns of an overlapping copy otherwise.
        out += chord.annotation ? "[*" : "[";
        out += chord.name;
        out += ']';
        from = chord.at;
    }
    return out + line.text.substr(from);
}

} // namespace

std::string ChordProText(const Song &song, const std::vector<SongChord> &chords,
                         const SongBoard &board) {
    std::string out;
    if (!song.title.empty())
        out += "{title: " + song.title + "}\n";
    for (const std::string &subtitle : song.subtitles)
        out += "{subtitle: " + subtitle + "}\n";
    if (!song.artist.empty())
        out += "{artist: " + song.artist + "}\n";
    if (!song.key.empty())
        out += "{key: " + song.key + "}\n";
    if (board.capo > 0)
        out += "{capo: " + board.fretNames.at(static_cast<std::size_t>(board.capo)) + "}\n";
    out += "# Fingerings for " + board.Describe() + ", written by varnock-chart\n";
    for (const SongChord &chord : chords)
        if (chord.shape.fingering)
            out += Define(chord);
    // The file's own definitions, for chords it fingers differently, stay
    // only where no fingering of ours replaces them.
    for (const std::string &define : song.defines) {
        const std::string name = define.substr(0, define.find(' '));
        const bool ours = std::any_of(chords.begin(), chords.end(), [&](const SongChord &c) {
            return c.shape.fingering && c.symbol.written == name;
        });
        if (!ours)
            out += "{define: " + define + "}\n";
    }
    out += "\n";
    for (const SongLine &line : song.lines) {
        switch (line.kind) {
        case SongLine::Kind::Blank:
            out += "\n";
            break;
        case SongLine::Kind::Comment:
            out.append("{").append(line.written.empty() ? "comment" : line.written);
            out.append(": ").append(line.text).append("}\n");
            break;
        case SongLine::Kind::SectionStart:
            out +=
                "{start_of_" + line.section + (line.text.empty() ? "" : ": " + line.text) + "}\n";
            break;
        case SongLine::Kind::SectionEnd:
            out += "{end_of_" + line.section + "}\n";
            break;
        case SongLine::Kind::ChorusRecall:
            out += "{chorus" + (line.text.empty() ? "" : ": " + line.text) + "}\n";
            break;
        case SongLine::Kind::Tab:
            out += line.text + "\n";
            break;
        case SongLine::Kind::Kept:
            out.append(line.text).append("\n");
            break;
        case SongLine::Kind::Lyrics:
            out += WithChords(line) + "\n";
            break;
        }
    }
    return out;
}

} // namespace varnock::output
