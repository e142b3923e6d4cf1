#include "music/chordpro.h"

#include "music/errors.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <charconv>

namespace varnock::music {

namespace {

// The length of the UTF-8 sequence starting at `i`, 0 when there is none.
std::size_t SequenceLength(std::string_view s, std::size_t i) {
    const auto c = static_cast<unsigned char>(s[i]);
    std::size_t n = c < 0x80             ? 1
                    : (c & 0xE0) == 0xC0 ? 2
                    : (c & 0xF0) == 0xE0 ? 3
                    : (c & 0xF8) == 0xF0 ? 4
                                         : 0;
    if (n == 0 || i + n > s.size() || (n == 2 && c < 0xC2))
        return 0;
    for (std::size_t k = 1; k < n; ++k)
        if ((static_cast<unsigned char>(s[i + k]) & 0xC0) != 0x80)
            return 0;
    return n;
}

bool IsUtf8(std::string_view s) {
    for (std::size_t i = 0; i < s.size();) {
        const std::size_t n = SequenceLength(s, i);
        if (n == 0)
            return false;
        i += n;
    }
    return true;
}

std::string FromLatin1(std::string_view s) {
    std::string out;
    out.reserve(s.size() + s.size() / 8);
    for (char ch : s) {
        const auto c = static_cast<unsigned char>(ch);
        if (c < 0x80) {
            out += ch;
        } else {
            out += static_cast<char>(0xC0 | (c >> 6));
            out += static_cast<char>(0x80 | (c & 0x3F));
        }
    }
    return out;
}

// Characters before byte `at`, plus one: the column a player's editor shows.
std::size_t Column(std::string_view line, std::size_t at) {
    std::size_t column = 1;
    for (std::size_t i = 0; i < at && i < line.size(); ++i)
        column += (static_cast<unsigned char>(line[i]) & 0xC0) != 0x80 ? 1 : 0;
    return column;
}

std::string_view Trim(std::string_view s) {
    while (!s.empty() && (s.front() == ' ' || s.front() == '\t'))
        s.remove_prefix(1);
    while (!s.empty() && (s.back() == ' ' || s.back() == '\t'))
        s.remove_suffix(1);
    return s;
}

std::string Lower(std::string_view s) {
    std::string out(s);
    for (char &c : out)
        if (c >= 'A' && c <= 'Z')
            c = static_cast<char>(c - 'A' + 'a');
    return out;
}

// A label given as `label="Verse 1"` or as plain text.
std::string Label(std::string_view value) {
    if (value.starts_with("label=")) {
        value.remove_prefix(6);
        if (value.size() >= 2 && (value.front() == '"' || value.front() == '\'') &&
            value.back() == value.front())
            value = value.substr(1, value.size() - 2);
    }
    return std::string(value);
}

// Long and short names of the sections a song has; any other start_of_X
// opens a section named X.
struct SectionName {
    std::string_view name, start, end;
};
constexpr std::array<SectionName, 5> kSections = {{
    {"chorus", "soc", "eoc"},
    {"verse", "sov", "eov"},
    {"bridge", "sob", "eob"},
    {"tab", "sot", "eot"},
    {"grid", "sog", "eog"},
}};

class Reader {
  public:
    Song song;

    void Line(std::string_view raw, int number) {
        if (inTab_) {
            const std::string name = DirectiveName(Trim(raw));
            if (name != "end_of_tab" && name != "eot") {
                Add(SongLine::Kind::Tab, std::string(raw));
                return;
            }
        }
        const std::string_view line = Trim(raw);
        if (line.empty()) {
            Add(SongLine::Kind::Blank, "");
            return;
        }
        if (line.front() == '#') {
            Add(SongLine::Kind::Kept, std::string(line));
            return;
        }
        if (line.front() == '{') {
            const std::size_t close = line.find('}');
            if (close == std::string_view::npos) {
                Warn(number, raw, static_cast<std::size_t>(line.data() - raw.data()), "{");
                Add(SongLine::Kind::Lyrics, std::string(raw));
                return;
            }
            Directive(line.substr(1, close - 1), line.substr(0, close + 1));
            return;
        }
        Lyrics(raw, number);
    }

  private:
    bool inTab_ = false;
    std::string section_;

    void Add(SongLine::Kind kind, std::string text, std::vector<PlacedChord> chords = {}) {
        song.lines.push_back({kind, std::move(text), std::move(chords), section_, {}});
    }

    void Warn(int number, std::string_view raw, std::size_t at, std::string_view what) {
        song.warnings.push_back("line " + std::to_string(number) + ", column " +
                                std::to_string(Column(raw, at)) + ": unclosed " +
                                std::string(what) + "; the rest of the line is printed as text");
    }

    static std::string DirectiveName(std::string_view line) {
        if (!line.starts_with("{"))
            return {};
        line.remove_prefix(1);
        const std::size_t end = line.find_first_of(": \t}");
        return Lower(line.substr(0, end));
    }

    void Directive(std::string_view body, std::string_view written) {
        const std::size_t end = body.find_first_of(": \t");
        const std::string name = Lower(Trim(body.substr(0, end)));
        std::string_view value = end == std::string_view::npos ? "" : body.substr(end);
        value = Trim(value);
        if (value.starts_with(":"))
            value = Trim(value.substr(1));
        const std::string text(value);

        if (name == "title" || name == "t") {
            song.title = text;
        } else if (name == "subtitle" || name == "st") {
            song.subtitles.push_back(text);
        } else if (name == "artist") {
            song.artist = text;
        } else if (name == "key") {
            song.key = text;
        } else if (name == "capo") {
            song.capo = text;
        } else if (name == "transpose") {
            int semitones = 0;
            const char *first = text.data() + (text.starts_with("+") ? 1 : 0);
            const auto [ptr, ec] = std::from_chars(first, text.data() + text.size(), semitones);
            if (ec == std::errc() && ptr == text.data() + text.size())
                song.transpose = semitones;
            else
                Add(SongLine::Kind::Kept, std::string(written));
        } else if (name == "comment" || name == "c" || name == "comment_italic" || name == "ci" ||
                   name == "comment_box" || name == "cb" || name == "highlight") {
            Add(SongLine::Kind::Comment, text);
            song.lines.back().written = name;
        } else if (name == "define") {
            song.defines.push_back(text);
        } else if (name == "chorus") {
            Add(SongLine::Kind::ChorusRecall, Label(text));
        } else if (!Section(name, text)) {
            // Other programs' directives mean something where they stand.
            Add(SongLine::Kind::Kept, std::string(written));
        }
    }

    bool Section(const std::string &name, const std::string &value) {
        std::string opened, closed;
        for (const SectionName &s : kSections) {
            if (name == s.start)
                opened = s.name;
            if (name == s.end)
                closed = s.name;
        }
        if (name.starts_with("start_of_") && name.size() > 9)
            opened = name.substr(9);
        if (name.starts_with("end_of_") && name.size() > 7)
            closed = name.substr(7);
        if (!opened.empty()) {
            section_ = opened;
            inTab_ = opened == "tab";
            Add(SongLine::Kind::SectionStart, Label(value));
            return true;
        }
        if (!closed.empty()) {
            Add(SongLine::Kind::SectionEnd, "");
            section_.clear();
            inTab_ = false;
            return true;
        }
        return false;
    }

    void Lyrics(std::string_view raw, int number) {
        std::string text;
        std::vector<PlacedChord> chords;
        for (std::size_t i = 0; i < raw.size();) {
            if (raw[i] != '[') {
                const std::size_t next = std::min(raw.find('[', i), raw.size());
                text.append(raw.substr(i, next - i));
                i = next;
                continue;
            }
            const std::size_t close = raw.find(']', i);
            if (close == std::string_view::npos) {
                Warn(number, raw, i, "[");
                text.append(raw.substr(i));
                break;
            }
            std::string_view name = Trim(raw.substr(i + 1, close - i - 1));
            const bool annotation = name.starts_with("*");
            if (annotation)
                name.remove_prefix(1);
            if (!name.empty())
                chords.push_back({text.size(), std::string(name), annotation});
            i = close + 1;
        }
        Add(SongLine::Kind::Lyrics, std::move(text), std::move(chords));
    }
};

} // namespace

Song ReadChordPro(std::string_view bytes) {
    if (bytes.starts_with("\xEF\xBB\xBF"))
        bytes.remove_prefix(3);
    for (char ch : bytes) {
        const auto c = static_cast<unsigned char>(ch);
        if (c < 0x20 && c != '\n' && c != '\r' && c != '\t' && c != '\f')
            throw BadInput("not a text file: it holds control characters (byte " +
                           std::to_string(c) + "); a song is ChordPro text in UTF-8 or Latin-1");
    }
    const bool utf8 = IsUtf8(bytes);
    const std::string latin = utf8 ? std::string() : FromLatin1(bytes);
    const std::string_view text = utf8 ? bytes : std::string_view(latin);

    Reader reader;
    reader.song.latin1 = !utf8;
    int number = 0;
    for (std::size_t start = 0; start <= text.size();) {
        std::size_t end = text.find('\n', start);
        if (end == std::string_view::npos)
            end = text.size();
        std::string_view line = text.substr(start, end - start);
        if (line.ends_with('\r'))
            line.remove_suffix(1);
        ++number;
        if (end < text.size() || !line.empty())
            reader.Line(line, number);
        start = end + 1;
    }
    // A song ends where its text ends: trailing blank lines say nothing.
    auto &lines = reader.song.lines;
    while (!lines.empty() && lines.back().kind == SongLine::Kind::Blank)
        lines.pop_back();
    return std::move(reader.song);
}

std::vector<SongLine> SungLines(const Song &song) {
    std::vector<SongLine> sung, chorus, last;
    bool inChorus = false;
    for (const SongLine &line : song.lines) {
        sung.push_back(line);
        if (line.kind == SongLine::Kind::SectionStart && line.section == "chorus") {
            inChorus = true;
            chorus.clear();
        } else if (line.kind == SongLine::Kind::SectionEnd && inChorus) {
            inChorus = false;
            last = chorus;
        } else if (inChorus) {
            chorus.push_back(line);
        } else if (line.kind == SongLine::Kind::ChorusRecall) {
            for (SongLine again : last) {
                again.section = "chorus";
                sung.push_back(std::move(again));
            }
        }
    }
    return sung;
}

namespace {

// "N.C.": no chord is played; it stands over the words as written.
bool Played(const PlacedChord &chord) {
    std::string letters;
    for (const char c : chord.name)
        if (c != '.')
            letters += static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
    return !chord.annotation && letters != "nc";
}

} // namespace

std::vector<std::string> ChordNames(const Song &song) {
    std::vector<std::string> names;
    for (const SongLine &line : song.lines)
        for (const PlacedChord &chord : line.chords)
            if (Played(chord) && std::find(names.begin(), names.end(), chord.name) == names.end())
                names.push_back(chord.name);
    return names;
}

std::vector<int> ChordUses(const Song &song) {
    const std::vector<std::string> names = ChordNames(song);
    std::vector<int> uses(names.size(), 0);
    for (const SongLine &line : song.lines)
        for (const PlacedChord &chord : line.chords)
            if (Played(chord))
                ++uses[static_cast<std::size_t>(std::find(names.begin(), names.end(), chord.name) -
                                                names.begin())];
    return uses;
}

void MoveSong(Song &song, const Key &from, const Key &to, NameSystem system) {
    // A name this system does not read but another does ("Bb" among German
    // names) is no note of this system to move: it stays as written.
    const auto foreign = [&](const std::string &name) {
        const auto reads = [&](NameSystem s) { return ReadChordSymbol(name, s).Known(); };
        return !reads(system) && catalogue::OtherSystem(system, reads);
    };
    for (SongLine &line : song.lines)
        for (PlacedChord &chord : line.chords)
            if (!chord.annotation && !foreign(chord.name))
                chord.name = WriteChordSymbol(
                    TransposeChord(ReadChordSymbol(chord.name, system), from, to), system);
    if (!song.key.empty())
        song.key = WriteKey(to, system);
}

} // namespace varnock::music
