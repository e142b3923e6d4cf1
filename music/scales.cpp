#include "music/scales.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <cstdlib>

namespace varnock::music {

namespace {

// Lower case, and each run of blanks, '-' and '_' one blank, none at the ends.
std::string Normalise(std::string_view name) {
    std::string out;
    bool gap = false;
    for (char c : name) {
        if (c == ' ' || c == '-' || c == '_' || c == '\t') {
            gap = !out.empty();
            continue;
        }
        if (gap)
            out += ' ';
        gap = false;
        out += static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
    }
    return out;
}

// Insertions, deletions, substitutions and swaps of two neighbours, the
// slips of a hurried typist, each count one.
std::size_t EditDistance(std::string_view a, std::string_view b) {
    std::vector<std::vector<std::size_t>> d(a.size() + 1, std::vector<std::size_t>(b.size() + 1));
    for (std::size_t i = 0; i <= a.size(); ++i)
        d[i][0] = i;
    for (std::size_t j = 0; j <= b.size(); ++j)
        d[0][j] = j;
    for (std::size_t i = 1; i <= a.size(); ++i) {
        for (std::size_t j = 1; j <= b.size(); ++j) {
            d[i][j] = std::min(
                {d[i - 1][j] + 1, d[i][j - 1] + 1, d[i - 1][j - 1] + (a[i - 1] != b[j - 1])});
            if (i > 1 && j > 1 && a[i - 1] == b[j - 2] && a[i - 2] == b[j - 1])
                d[i][j] = std::min(d[i][j], d[i - 2][j - 2] + 1);
        }
    }
    return d[a.size()][b.size()];
}

// Semitones of the natural notes above A: A B C D E F G.
constexpr std::array<int, 7> kNatural = {0, 2, 3, 5, 7, 8, 10};

// The number a degree label ends in: "b3" 3, "#4" 4, "R" 1.
int DegreeNumber(const std::string &degree) {
    if (degree == "R")
        return 1;
    const auto digit = degree.find_first_of("0123456789");
    return std::stoi(degree.substr(digit));
}

} // namespace

const std::vector<Scale> &Scales() {
    static const std::vector<Scale> scales = {
        {"major",
         "ionian",
         {"ionian", "maj"},
         {0, 2, 4, 5, 7, 9, 11},
         {"R", "2", "3", "4", "5", "6", "7"}},
        {"dorian", "dorian", {}, {0, 2, 3, 5, 7, 9, 10}, {"R", "2", "b3", "4", "5", "6", "b7"}},
        {"phrygian",
         "phrygian",
         {},
         {0, 1, 3, 5, 7, 8, 10},
         {"R", "b2", "b3", "4", "5", "b6", "b7"}},
        {"lydian", "lydian", {}, {0, 2, 4, 6, 7, 9, 11}, {"R", "2", "3", "#4", "5", "6", "7"}},
        {"mixolydian",
         "mixolydian",
         {"mixo"},
         {0, 2, 4, 5, 7, 9, 10},
         {"R", "2", "3", "4", "5", "6", "b7"}},
        {"natural minor",
         "aeolian",
         {"aeolian", "minor", "min"},
         {0, 2, 3, 5, 7, 8, 10},
         {"R", "2", "b3", "4", "5", "b6", "b7"}},
        {"locrian",
         "locrian",
         {},
         {0, 1, 3, 5, 6, 8, 10},
         {"R", "b2", "b3", "4", "b5", "b6", "b7"}},
        {"harmonic minor",
         "",
         {"harmonic", "harm minor"},
         {0, 2, 3, 5, 7, 8, 11},
         {"R", "2", "b3", "4", "5", "b6", "7"}},
        {"melodic minor",
         "",
         {"melodic", "mel minor", "jazz minor"},
         {0, 2, 3, 5, 7, 9, 11},
         {"R", "2", "b3", "4", "5", "6", "7"}},
        {"major pentatonic",
         "",
         {"maj pent", "major pent", "maj pentatonic", "pentatonic major"},
         {0, 2, 4, 7, 9},
         {"R", "2", "3", "5", "6"}},
        {"minor pentatonic",
         "",
         {"min pent", "minor pent", "min pentatonic", "pentatonic minor", "pentatonic"},
         {0, 3, 5, 7, 10},
         {"R", "b3", "4", "5", "b7"}},
        {"blues",
         "",
         {"blues scale", "minor blues"},
         {0, 3, 5, 6, 7, 10},
         {"R", "b3", "4", "b5", "5", "b7"}},
    };
    return scales;
}

const Scale *FindScale(std::string_view name) {
    const std::string key = Normalise(name);
    for (const Scale &scale : Scales()) {
        if (scale.name == key ||
            std::find(scale.aliases.begin(), scale.aliases.end(), key) != scale.aliases.end())
            return &scale;
    }
    return nullptr;
}

std::string SuggestScale(std::string_view name) {
    const std::string key = Normalise(name);
    const std::size_t limit = std::max<std::size_t>(1, key.size() / 3);
    std::string best;
    std::size_t bestDistance = limit + 1;
    for (const Scale &scale : Scales()) {
        std::vector<std::string> names = scale.aliases;
        names.insert(names.begin(), scale.name);
        for (const std::string &candidate : names) {
            const std::size_t d = EditDistance(key, candidate);
            if (d < bestDistance) {
                bestDistance = d;
                best = candidate;
            }
        }
    }
    return best;
}

std::vector<std::string> SpellScale(std::string_view root, const Scale &scale) {
    const auto bad = [&] {
        return std::invalid_argument("root \"" + std::string(root) +
                                     "\": a letter A-G, then sharps or flats");
    };
    if (root.empty())
        throw bad();
    const char letter = static_cast<char>(std::toupper(static_cast<unsigned char>(root[0])));
    if (letter < 'A' || letter > 'G')
        throw bad();
    int accidentals = 0;
    for (std::string_view rest = root.substr(1); !rest.empty();) {
        int step = 0;
        if (rest.front() == '#' || rest.front() == 'b') {
            step = rest.front() == '#' ? 1 : -1;
            rest.remove_prefix(1);
        } else if (rest.starts_with("\u266F") || rest.starts_with("\u266D")) {
            step = rest.starts_with("\u266F") ? 1 : -1;
            rest.remove_prefix(3);
        } else {
            throw bad();
        }
        if (accidentals * step < 0)
            throw bad();
        accidentals += step;
    }

    const int rootLetter = letter - 'A';
    const int rootPitch = kNatural[rootLetter] + accidentals;
    std::vector<std::string> notes;
    for (std::size_t i = 0; i < scale.semitones.size(); ++i) {
        const int noteLetter = (rootLetter + DegreeNumber(scale.degrees[i]) - 1) % 7;
        // The accidental that takes the letter to the degree's pitch, -6..5.
        int shift = ((rootPitch + scale.semitones[i] - kNatural[noteLetter]) % 12 + 12) % 12;
        if (shift > 5)
            shift -= 12;
        std::string note(1, static_cast<char>('A' + noteLetter));
        note += std::string(static_cast<std::size_t>(std::abs(shift)), shift > 0 ? '#' : 'b');
        notes.push_back(note);
    }
    return notes;
}

std::vector<ModeFit> FindModes(const StringFrets &string, int root) {
    if (root < 0 || root > 11)
        throw std::invalid_argument("root " + std::to_string(root) + " outside 0..11");
    std::vector<ModeFit> fits;
    for (const Scale &scale : Scales()) {
        if (scale.modeName.empty())
            continue;
        ModeFit fit;
        fit.mode = &scale;
        for (std::size_t d = 0; d < scale.semitones.size(); ++d) {
            std::vector<int> at;
            for (int p = 0; p < kPositions; ++p)
                if (string[p] == (root + scale.semitones[d]) % 12)
                    at.push_back(p);
            if (at.empty())
                fit.missing.push_back(scale.degrees[d]);
            fit.positions.push_back(std::move(at));
        }
        fit.fits = fit.missing.empty();
        fits.push_back(std::move(fit));
    }
    return fits;
}

} // namespace varnock::music
