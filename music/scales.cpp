#include "music/scales.h"

#include "music/catalogue.h"

#include <algorithm>
#include <array>
#include <cstdlib>

namespace varnock::music {

namespace {

// A scale written as its degrees; the semitones are what the degrees say.
Scale Degrees(std::string name, std::string modeName, std::vector<std::string> aliases,
              std::vector<std::string> degrees) {
    Scale scale{std::move(name), std::move(modeName), std::move(aliases), {}, std::move(degrees)};
    for (const std::string &degree : scale.degrees)
        scale.semitones.push_back(catalogue::ParseDegree(degree).semitones);
    return scale;
}

} // namespace

const std::vector<Scale> &Scales() {
    struct Row {
        const char *name, *modeName;
        std::vector<std::string> aliases, degrees;
    };
    static const std::vector<Scale> scales = [] {
        const std::vector<Row> rows = {
            {"major", "ionian", {"ionian", "maj"}, {"R", "2", "3", "4", "5", "6", "7"}},
            {"dorian", "dorian", {}, {"R", "2", "b3", "4", "5", "6", "b7"}},
            {"phrygian", "phrygian", {}, {"R", "b2", "b3", "4", "5", "b6", "b7"}},
            {"lydian", "lydian", {}, {"R", "2", "3", "#4", "5", "6", "7"}},
            {"mixolydian", "mixolydian", {"mixo"}, {"R", "2", "3", "4", "5", "6", "b7"}},
            {"natural minor",
             "aeolian",
             {"aeolian", "minor", "min"},
             {"R", "2", "b3", "4", "5", "b6", "b7"}},
            {"locrian", "locrian", {}, {"R", "b2", "b3", "4", "b5", "b6", "b7"}},
            {"harmonic minor",
             "",
             {"harmonic", "harm minor"},
             {"R", "2", "b3", "4", "5", "b6", "7"}},
            {"melodic minor",
             "",
             {"melodic", "mel minor", "jazz minor"},
             {"R", "2", "b3", "4", "5", "6", "7"}},
            {"major pentatonic",
             "",
             {"maj pent", "major pent", "maj pentatonic", "pentatonic major"},
             {"R", "2", "3", "5", "6"}},
            {"minor pentatonic",
             "",
             {"min pent", "minor pent", "min pentatonic", "pentatonic minor"},
             {"R", "b3", "4", "5", "b7"}},
            {"blues", "", {"blues scale", "minor blues"}, {"R", "b3", "4", "b5", "5", "b7"}},
        };
        std::vector<Scale> out;
        for (const Row &row : rows)
            out.push_back(Degrees(row.name, row.modeName, row.aliases, row.degrees));
        return out;
    }();
    return scales;
}

std::vector<std::string> SpellScale(std::string_view root, const Scale &scale) {
    namespace cat = catalogue;
    const auto written = cat::ParseWritten(root);
    if (!written)
        throw std::invalid_argument("root \"" + std::string(root) +
                                    "\": " + std::string(cat::kNoteNameRule));
    const auto letterPitch = [](int letter) {
        return cat::kNaturals[static_cast<std::size_t>(letter)];
    };
    const int rootPitch = letterPitch(written->letter) + written->accidental;
    std::vector<std::string> notes;
    for (std::size_t i = 0; i < scale.semitones.size(); ++i) {
        const int letter = (written->letter + cat::ParseDegree(scale.degrees[i]).number - 1) % 7;
        // The accidental that takes the letter to the degree's pitch, -6..5.
        int shift = cat::Mod12(rootPitch + scale.semitones[i] - letterPitch(letter));
        if (shift > 5)
            shift -= 12;
        notes.push_back(cat::Format({letter, shift}));
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
