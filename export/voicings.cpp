#include "export/voicings.h"

#include "export/capo.h"
#include "music/catalogue.h"
#include "music/errors.h"
#include "music/layouts.h"
#include "platform/basic.h"

#include <algorithm>

namespace varnock::output {

using namespace music;

namespace cat = catalogue;

std::vector<ChordTone> SheetTones(const ChartSheet &sheet) {
    if (sheet.chordType < 0 || sheet.chordType >= cat::kChordTypeCount)
        throw BadInput("no chord is chosen to finger");
    const auto chord = static_cast<std::size_t>(sheet.chordType);
    const cat::Offsets offsets = cat::ChordOffsets(static_cast<int>(chord));
    std::vector<ChordTone> tones;
    for (std::size_t i = 0; i < static_cast<std::size_t>(offsets.count); ++i)
        tones.push_back({cat::Mod12(sheet.root + offsets.semitones[i]),
                         std::string(cat::kChordTypes[chord].degrees[i])});
    return tones;
}

Voicing Describe(const Fingering &fingering, const std::vector<ChordTone> &tones,
                 const std::vector<std::string> &notes, const std::vector<std::string> &fretNames,
                 int capo) {
    Voicing v;
    for (std::size_t s = 0; s < fingering.positions.size(); ++s) {
        const int p = fingering.positions[s];
        const int t = fingering.tones[s];
        if (p == kMuted || t < 0) {
            v.frets.push_back("x");
            v.notes.push_back("-");
            v.degrees.push_back("-");
            continue;
        }
        // A string at the capo is played open: 0, as above the nut.
        v.frets.push_back(p == capo ? "0" : fretNames.at(static_cast<std::size_t>(p)));
        const auto tone = static_cast<std::size_t>(t);
        v.notes.push_back(tone < notes.size() && !notes[tone].empty()
                              ? notes[tone]
                              : cat::SharpName(tones[tone].pitch));
        v.degrees.push_back(tones[tone].degree);
    }
    for (const int t : fingering.omitted)
        v.omitted.push_back(tones.at(static_cast<std::size_t>(t)).degree);
    return v;
}

std::string VoicingLine(const Voicing &voicing) {
    std::string line = Join(voicing.frets, " ") + " | " + Join(voicing.notes, " ") + " | " +
                       Join(voicing.degrees, " ");
    if (!voicing.omitted.empty())
        line += " | without " + Join(voicing.omitted, ", ");
    return line;
}

std::string OptionFor(Limit limit) {
    switch (limit) {
    case Limit::Reach:
        return "--reach";
    case Limit::Highest:
        return "--highest";
    case Limit::MutedOk:
        return "--muted-ok";
    }
    return "";
}

Voicings FindVoicings(const ChartSheet &sheet, const std::vector<std::string> &fretNames,
                      const Limits &limits) {
    const std::vector<ChordTone> tones = SheetTones(sheet);
    FingeringResult result = FindFingerings(sheet.Instrument(), tones, limits);
    Voicings out;
    if (result.fingerings.empty()) {
        std::vector<std::string> options;
        for (const Limit limit : result.raise)
            options.push_back(OptionFor(limit));
        const std::string root = sheet.notes[0].empty() ? sheet.rootItem : sheet.notes[0];
        out.none = root + " " + sheet.chordItem + ": " + result.reason +
                   (options.empty() ? "" : " (" + Join(options, ", ") + ")") + ".";
        return out;
    }
    const std::vector<std::string> notes(sheet.notes.begin(), sheet.notes.end());
    for (const Fingering &f : result.fingerings)
        out.voicings.push_back(Describe(f, tones, notes, fretNames, limits.capo));
    out.fingerings = std::move(result.fingerings);
    return out;
}

std::string VoicingsText(const ChartSheet &sheet, const std::vector<std::string> &fretNames,
                         const Limits &limits) {
    const Voicings found = FindVoicings(sheet, fretNames, limits);
    if (found.fingerings.empty())
        return found.none + "\n";
    std::string out;
    for (const Voicing &v : found.voicings)
        out += VoicingLine(v) + "\n";
    return out;
}

} // namespace varnock::output
