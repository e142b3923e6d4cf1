#include "music/fingering.h"

#include "music/layouts.h"

#include <algorithm>
#include <bit>
#include <stdexcept>
#include <tuple>

namespace varnock::music {

namespace {

const FretLayout &CheckedLayout(int mode) {
    if (mode < 0 || mode >= kLayoutCount)
        throw std::invalid_argument("fret layout " + std::to_string(mode) + " outside 0.." +
                                    std::to_string(kLayoutCount - 1));
    return Layout(mode);
}

// The key that orders fingerings; a muted string sorts after every position.
auto RankKey(const Fingering &f) {
    std::array<int, 4> order{};
    for (std::size_t s = 0; s < f.positions.size(); ++s)
        order[s] = f.positions[s] == kMuted ? kPositions : f.positions[s];
    return std::make_tuple(f.fretted, f.hand, f.reach, !f.rootInBass, order);
}

std::array<int, 12> MakeNone() {
    std::array<int, 12> none;
    none.fill(-1);
    return none;
}

struct Search {
    Search(const Board &b, const Limits &l) : board(b), limits(l) {}

    const Board &board;
    const Limits &limits;
    std::array<int, 12> pitchTone = MakeNone();            // tone index of each allowed pitch class
    unsigned required = 0;                                 // bit per tone that must sound
    std::vector<int> omitted;                              // carried into every fingering
    std::vector<std::vector<std::pair<int, int>>> choices; // per string: (position, tone)
    std::vector<int> positions, tones;
    std::vector<Fingering> found;

    void Walk(std::size_t string, unsigned covered, int low, int high) {
        const std::size_t strings = board.size();
        if (static_cast<std::size_t>(std::popcount(required & ~covered)) > strings - string)
            return;
        if (string == strings) {
            Record(low, high);
            return;
        }
        for (const auto &[position, tone] : choices[string]) {
            int lo = low, hi = high;
            if (position > limits.capo) {
                lo = std::min(lo, position);
                hi = std::max(hi, position);
                if (hi - lo > limits.reach)
                    continue;
            }
            positions[string] = position;
            tones[string] = tone;
            Walk(string + 1, tone < 0 ? covered : covered | (1u << tone), lo, hi);
        }
    }

    void Record(int low, int high) {
        Fingering f;
        f.positions = positions;
        f.tones = tones;
        f.omitted = omitted;
        for (int p : positions)
            f.fretted += p > limits.capo ? 1 : 0;
        f.hand = f.fretted ? low : limits.capo;
        f.reach = f.fretted ? high - low : 0;
        for (int t : tones) {
            if (t >= 0) {
                f.rootInBass = t == 0;
                break;
            }
        }
        found.push_back(std::move(f));
    }
};

// Every fingering within the limits, ranked.
std::vector<Fingering> Enumerate(const Board &board, const std::vector<ChordTone> &tones,
                                 const Limits &limits) {
    Search search(board, limits);
    search.omitted = OmittedTones(tones, static_cast<int>(board.size()));
    for (std::size_t t = 0; t < tones.size(); ++t) {
        const bool left = std::find(search.omitted.begin(), search.omitted.end(),
                                    static_cast<int>(t)) != search.omitted.end();
        if (left || search.pitchTone[tones[t].pitch] >= 0)
            continue;
        search.pitchTone[tones[t].pitch] = static_cast<int>(t);
        search.required |= 1u << t;
    }
    for (const StringFrets &string : board) {
        std::vector<std::pair<int, int>> choice;
        for (int p = limits.capo; p <= limits.highest; ++p) {
            if (string[p] && search.pitchTone[*string[p]] >= 0)
                choice.emplace_back(p, search.pitchTone[*string[p]]);
        }
        if (limits.mutedOk)
            choice.emplace_back(kMuted, -1);
        search.choices.push_back(std::move(choice));
    }
    search.positions.assign(board.size(), kMuted);
    search.tones.assign(board.size(), -1);
    search.Walk(0, 0, kPositions, -1);
    std::sort(search.found.begin(), search.found.end(),
              [](const Fingering &a, const Fingering &b) { return RankKey(a) < RankKey(b); });
    return std::move(search.found);
}

// "a", "a or b", "a, b, or c".
std::string JoinOr(const std::vector<std::string> &parts) {
    std::string out;
    for (std::size_t i = 0; i < parts.size(); ++i) {
        if (i > 0)
            out += parts.size() == 2 ? " or " : i + 1 == parts.size() ? ", or " : ", ";
        out += parts[i];
    }
    return out;
}

// Why there is none, and which limit raised alone would give one.
void Explain(const Board &board, const std::vector<ChordTone> &tones, const Limits &limits,
             const std::vector<std::string> &fretNames, FingeringResult &result) {
    std::vector<std::string> ways;
    Limits wider = limits;
    wider.reach = kLastPosition;
    if (const auto found = Enumerate(board, tones, wider); !found.empty()) {
        int need = kLastPosition;
        for (const Fingering &f : found)
            need = std::min(need, f.reach);
        result.raise.push_back(Limit::Reach);
        ways.push_back("a reach of " + std::to_string(need));
    }
    wider = limits;
    wider.highest = kLastPosition;
    if (const auto found = Enumerate(board, tones, wider); !found.empty()) {
        int need = kLastPosition;
        for (const Fingering &f : found)
            need = std::min(need, *std::max_element(f.positions.begin(), f.positions.end()));
        result.raise.push_back(Limit::Highest);
        // Named as --highest takes it, where the layout's names are known.
        ways.push_back(fretNames.empty()
                           ? "a highest position of " + std::to_string(need)
                           : "a highest fret of " + fretNames.at(static_cast<std::size_t>(need)));
    }
    if (!limits.mutedOk) {
        wider = limits;
        wider.mutedOk = true;
        if (!Enumerate(board, tones, wider).empty()) {
            result.raise.push_back(Limit::MutedOk);
            ways.push_back("muted strings");
        }
    }
    if (!ways.empty()) {
        result.reason = "no fingering within the limits; one comes with " + JoinOr(ways);
        return;
    }
    wider = limits;
    wider.reach = kLastPosition;
    wider.highest = kLastPosition;
    wider.mutedOk = true;
    if (!Enumerate(board, tones, wider).empty()) {
        result.raise = {Limit::Reach, Limit::Highest, Limit::MutedOk};
        result.reason = "no fingering within the limits: only a larger reach, a higher highest "
                        "position and muted strings together give one";
        return;
    }
    // Past every limit there is still none: some tone lies on no fret.
    std::vector<std::string> missing;
    const auto omitted = OmittedTones(tones, static_cast<int>(board.size()));
    for (std::size_t t = 0; t < tones.size(); ++t) {
        if (std::find(omitted.begin(), omitted.end(), static_cast<int>(t)) != omitted.end())
            continue;
        bool anywhere = false;
        for (const StringFrets &string : board)
            for (int p = limits.capo; p < kPositions; ++p)
                anywhere = anywhere || string[p] == tones[t].pitch;
        if (!anywhere)
            missing.push_back("the " + tones[t].degree);
    }
    result.reason = missing.empty() ? "no fingering of this chord on this board at any limits"
                                    : "no fingering on this board at any limits: no string has " +
                                          JoinOr(missing);
}

} // namespace

Board BoardFor(int mode, const std::vector<int> &openNotes) {
    CheckedLayout(mode);
    for (int open : openNotes)
        if (open < 0 || open > 11)
            throw std::invalid_argument("open note " + std::to_string(open) + " outside 0..11");
    return Instrument{mode, openNotes, {}, 0}.MakeBoard();
}

std::array<int, kPositions> FretSemitones(int mode) {
    const FretLayout &layout = CheckedLayout(mode);
    std::array<int, kPositions> semitones{};
    for (int p = 0; p < kPositions; ++p)
        semitones[static_cast<std::size_t>(p)] = FretSemitones(layout, p);
    return semitones;
}

std::vector<int> OmittedTones(const std::vector<ChordTone> &tones, int strings) {
    const int drop = static_cast<int>(tones.size()) - strings;
    if (drop <= 0 || tones.empty())
        return {};
    // The fifth adds least to what the chord is; then the root, which the
    // ear (or a bass player) supplies, as in the rootless voicings of jazz,
    // so the third, seventh and colour tones that name the chord stay.
    std::vector<int> order;
    for (std::size_t t = 1; t < tones.size(); ++t)
        if ((tones[t].pitch - tones[0].pitch + 12) % 12 == 7)
            order.push_back(static_cast<int>(t));
    order.push_back(0);
    for (int t = static_cast<int>(tones.size()) - 1; t > 0; --t)
        if (std::find(order.begin(), order.end(), t) == order.end())
            order.push_back(t);
    order.resize(static_cast<std::size_t>(drop));
    return order;
}

namespace {

FingeringResult Find(const Board &board, const std::vector<ChordTone> &tones, const Limits &limits,
                     const std::vector<std::string> &fretNames) {
    if (board.empty() || board.size() > 4)
        throw std::invalid_argument("a board of " + std::to_string(board.size()) +
                                    " strings; 1..4 are played");
    if (tones.empty() || tones.size() > 8)
        throw std::invalid_argument("a chord of " + std::to_string(tones.size()) +
                                    " tones; 1..8 are taken");
    for (const ChordTone &tone : tones)
        if (tone.pitch < 0 || tone.pitch > 11)
            throw std::invalid_argument("tone " + std::to_string(tone.pitch) + " outside 0..11");
    if (limits.reach < 1 || limits.highest < 0 || limits.highest > kLastPosition ||
        limits.capo < 0 || limits.capo > kLastPosition || limits.count < 1)
        throw std::invalid_argument("limits out of range");

    FingeringResult result;
    result.fingerings = Enumerate(board, tones, limits);
    if (result.fingerings.size() > static_cast<std::size_t>(limits.count))
        result.fingerings.resize(static_cast<std::size_t>(limits.count));
    if (result.fingerings.empty())
        Explain(board, tones, limits, fretNames, result);
    return result;
}

} // namespace

FingeringResult FindFingerings(const Board &board, const std::vector<ChordTone> &tones,
                               const Limits &limits) {
    return Find(board, tones, limits, {});
}

FingeringResult FindFingerings(const Board &board, const std::vector<ChordTone> &tones,
                               const Limits &limits, const std::vector<std::string> &fretNames) {
    return Find(board, tones, limits, fretNames);
}

FingeringResult FindFingerings(const Instrument &instrument, const std::vector<ChordTone> &tones,
                               Limits limits) {
    limits.capo = instrument.capo;
    return Find(instrument.MakeBoard(), tones, limits, FretNames(instrument.layout));
}

} // namespace varnock::music
