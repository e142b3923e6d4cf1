#include "music/suggest.h"

#include <algorithm>
#include <cstdlib>
#include <stdexcept>
#include <tuple>

namespace varnock::music {

namespace cat = catalogue;

namespace {

std::vector<ChordTone> Tones(int root, int type) {
    const cat::ChordType &t = cat::kChordTypes[static_cast<std::size_t>(type)];
    const cat::Offsets offsets = cat::ChordOffsets(type);
    std::vector<ChordTone> tones;
    for (std::size_t i = 0; i < static_cast<std::size_t>(offsets.count); ++i)
        tones.push_back({cat::Mod12(root + offsets.semitones[i]), std::string(t.degrees[i])});
    return tones;
}

int LowestSounding(const Fingering &f, const std::vector<ChordTone> &tones) {
    for (int t : f.tones)
        if (t >= 0)
            return tones[static_cast<std::size_t>(t)].pitch;
    return -1;
}

// What one chord is on one board under one capo.
struct Shape {
    bool searched = false;
    bool playable = false;
    bool awkward = false;
    Fingering fingering;
};

} // namespace

std::vector<ChordTone> SymbolTones(const ChordSymbol &chord) {
    if (!chord.Known())
        return {};
    return Tones(chord.root->Index(), chord.type);
}

PlacedShape PlaceChord(const Board &board, const ChordSymbol &chord, const Limits &limits,
                       const std::vector<std::string> &fretNames) {
    PlacedShape placed;
    const std::vector<ChordTone> tones = SymbolTones(chord);
    if (tones.empty())
        return placed;
    const int bass = chord.bass ? chord.bass->Index() : -1;
    const bool bassIsTone = std::any_of(tones.begin(), tones.end(),
                                        [&](const ChordTone &t) { return t.pitch == bass; });
    Limits wide = limits;
    // Enough candidates to find one with the bass note below, where asked.
    wide.count = bassIsTone ? std::max(limits.count, 64) : 1;
    FingeringResult found = FindFingerings(board, tones, wide, fretNames);
    if (found.fingerings.empty()) {
        placed.reason = found.reason;
        wide.mutedOk = true;
        wide.highest = kLastPosition;
        found = FindFingerings(board, tones, wide);
        placed.relaxed = true;
    }
    if (found.fingerings.empty()) {
        for (const ChordTone &tone : tones) {
            bool anywhere = false;
            for (const StringFrets &string : board)
                for (int p = limits.capo; p < kPositions; ++p)
                    anywhere = anywhere || string[static_cast<std::size_t>(p)] == tone.pitch;
            if (!anywhere)
                placed.missing.push_back(tone.pitch);
        }
        return placed;
    }
    placed.fingering = found.fingerings.front();
    for (const Fingering &f : found.fingerings) {
        if (bassIsTone && LowestSounding(f, tones) == bass) {
            placed.fingering = f;
            break;
        }
    }
    return placed;
}

std::vector<Suggestion> Suggest(const SuggestRequest &request, std::size_t count) {
    if (request.tunings.empty() || request.capos.empty())
        throw std::invalid_argument("no tuning or no capo position to try");
    for (const auto &tuning : request.tunings)
        if (tuning.size() != request.tunings.front().size())
            throw std::invalid_argument("tunings of different lengths");

    // Each (root, type) is searched once per board and capo, whatever
    // transposition asks for it.
    constexpr std::size_t kTypes = cat::kChordTypeCount;
    std::vector<Suggestion> all;
    for (std::size_t t = 0; t < request.tunings.size(); ++t) {
        const Board board = BoardFor(request.mode, request.tunings[t]);
        for (int capo : request.capos) {
            std::vector<Shape> shapes(12 * kTypes);
            auto shapeOf = [&](int root, int type) -> const Shape & {
                Shape &s = shapes[static_cast<std::size_t>(root) * kTypes +
                                  static_cast<std::size_t>(type)];
                if (s.searched)
                    return s;
                s.searched = true;
                const std::vector<ChordTone> tones = Tones(root, type);
                Limits easy;
                easy.reach = request.reach;
                easy.capo = capo;
                easy.highest = std::min(capo + request.easyFrets, kLastPosition);
                easy.count = 1;
                FingeringResult found = FindFingerings(board, tones, easy);
                if (found.fingerings.empty()) {
                    Limits wide = easy;
                    wide.highest = kLastPosition;
                    wide.mutedOk = true;
                    found = FindFingerings(board, tones, wide);
                    s.awkward = true;
                }
                s.playable = !found.fingerings.empty();
                if (s.playable)
                    s.fingering = found.fingerings.front();
                return s;
            };
            for (int semitones = -5; semitones <= 6; ++semitones) {
                Suggestion option;
                option.semitones = semitones;
                option.capo = capo;
                option.tuning = static_cast<int>(t);
                for (std::size_t c = 0; c < request.chords.size(); ++c) {
                    const ChordSymbol &chord = request.chords[c];
                    if (!chord.Known()) {
                        option.shapes.emplace_back();
                        continue;
                    }
                    ++option.known;
                    const Shape &s =
                        shapeOf(cat::Mod12(chord.root->Index() + semitones), chord.type);
                    const int uses = c < request.uses.size() ? request.uses[c] : 1;
                    if (!s.playable) {
                        option.unplayable.push_back(c);
                        option.shapes.emplace_back();
                        continue;
                    }
                    ++option.playable;
                    option.awkward += s.awkward ? 1 : 0;
                    option.hands += s.fingering.hand * uses;
                    option.shapes.emplace_back(s.fingering);
                }
                all.push_back(std::move(option));
            }
        }
    }
    const auto key = [](const Suggestion &s) {
        return std::make_tuple(s.known - s.playable, s.awkward, s.hands, s.capo, s.semitones != 0,
                               std::abs(s.semitones), s.semitones < 0, s.tuning);
    };
    std::stable_sort(all.begin(), all.end(),
                     [&](const Suggestion &a, const Suggestion &b) { return key(a) < key(b); });
    if (all.size() > count)
        all.resize(count);
    return all;
}

} // namespace varnock::music
