#include "export/modes.h"

#include "music/fingering.h"
#include "music/layouts.h"
#include "music/scales.h"
#include "platform/basic.h"

namespace varnock::output {

using namespace music;

namespace cat = catalogue;

namespace {

// One octave of the mode from the lowest root on the string, each degree on
// the next position up that sounds it; empty when the string runs out first.
std::vector<int> OctaveRun(const StringFrets &string, int root, const Scale &mode) {
    std::vector<int> pitches;
    for (const int semitones : mode.semitones)
        pitches.push_back(cat::Mod12(root + semitones));
    pitches.push_back(root);
    std::vector<int> run;
    for (int p = 0; p < kPositions && run.size() < pitches.size(); ++p)
        if (string[static_cast<std::size_t>(p)] == pitches[run.size()])
            run.push_back(p);
    if (run.size() < pitches.size())
        run.clear();
    return run;
}

} // namespace

std::string ModesText(const ChartSheet &sheet, const std::optional<std::string> &root,
                      cat::NameSystem names) {
    const Board board = BoardFor(static_cast<int>(sheet.mode), sheet.openNotes);
    const auto name = [names](const std::string &english) {
        return cat::Translate(english, cat::NameSystem::English, names);
    };
    std::vector<std::string> tuning;
    // The strings as the player named them (a typed Bb stays Bb).
    for (const std::string &open : sheet.stringNames)
        tuning.push_back(name(open));
    std::string out = LayoutName(sheet.mode) + ", " + std::to_string(board.size()) +
                      " strings tuned " + Join(tuning, " ") + ": the modes " +
                      (root ? "from " + name(*root) : std::string("from each open note")) +
                      " with every note on a fret.\n";
    const std::vector<std::string> fretNames = FretNames(static_cast<int>(sheet.mode));
    const std::vector<std::string> diatonicNames = DiatonicNames(static_cast<int>(sheet.mode));
    for (std::size_t s = 0; s < board.size(); ++s) {
        const std::string from =
            cat::Format(*cat::ParseWritten(root ? *root : sheet.stringNames.at(s)));
        const int pitch = *cat::ParseNote(from);
        std::vector<std::string> fitting, missing;
        std::string runs;
        for (const ModeFit &fit : FindModes(board[s], pitch)) {
            const std::vector<std::string> spelled = SpellScale(from, *fit.mode);
            const std::string title = name(spelled[0]) + " " + fit.mode->modeName;
            if (!fit.fits) {
                std::vector<std::string> gone;
                for (const std::string &degree : fit.missing)
                    gone.push_back(degree);
                missing.push_back(title + " (no " + Join(gone, ", ") + ")");
                continue;
            }
            fitting.push_back(fit.mode->modeName);
            const std::vector<int> run = OctaveRun(board[s], pitch, *fit.mode);
            std::vector<std::string> notes, positions, frets, diatonic;
            for (std::size_t i = 0; i < run.size(); ++i) {
                notes.push_back(name(spelled[i % spelled.size()]));
                positions.push_back(std::to_string(run[i]));
                frets.push_back(fretNames.at(static_cast<std::size_t>(run[i])));
                if (!diatonicNames.empty())
                    diatonic.push_back(diatonicNames.at(static_cast<std::size_t>(run[i])));
            }
            runs +=
                "  " + title + ": " +
                (run.empty()
                     ? std::string("no whole octave on this string")
                     : Join(notes, " ") + " at positions " + Join(positions, " ") + " (frets " +
                           Join(frets, " ") +
                           (diatonic.empty() ? "" : "; diatonic " + Join(diatonic, " ")) + ")") +
                "\n";
        }
        out += "String " + std::to_string(s + 1) + ", tuned " + tuning[s] + ", from " + name(from) +
               ": " + (fitting.empty() ? "none" : Join(fitting, ", ")) + ".\n";
        out += runs;
        if (!missing.empty())
            out += "  not: " + Join(missing, "; ") + ".\n";
    }
    return out;
}

} // namespace varnock::output
