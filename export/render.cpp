#include "export/request.h"

#include "export/book.h"
#include "export/capo.h"
#include "export/chartdoc.h"
#include "export/diagram.h"
#include "export/lookup.h"
#include "export/modes.h"
#include "export/notenames.h"
#include "export/playback.h"
#include "export/scalesheet.h"
#include "export/song.h"
#include "export/voicings.h"
#include "music/errors.h"
#include "platform/basic.h"

#include <algorithm>

namespace varnock::output {

Limits ResolveLimits(const Asked &asked, const std::vector<std::string> &fretNames, int capo) {
    Limits limits;
    limits.capo = capo;
    limits.mutedOk = asked.mutedOk;
    if (asked.reach)
        limits.reach = *asked.reach;
    if (asked.count)
        limits.count = *asked.count;
    if (asked.highest) {
        limits.highest = ParsePosition(*asked.highest, fretNames, "--highest");
        if (limits.highest < capo)
            throw BadInput("--highest \"" + *asked.highest + "\" lies below the capo at " +
                           fretNames.at(static_cast<std::size_t>(capo)) +
                           "; accepted: " + FretsFrom(fretNames, capo));
    } else {
        const auto twelve = std::find(fretNames.begin(), fretNames.end(), "12");
        limits.highest = twelve == fretNames.end()
                             ? 12
                             : static_cast<int>(std::distance(fretNames.begin(), twelve));
        limits.highest = std::max(limits.highest, std::min(kLastPosition, capo + limits.reach));
    }
    return limits;
}

std::string Render(const Asked &asked, const Chosen &chosen) {
    Instrument instrument = chosen.instrument;
    // Positions are named as the chosen layout names its frets.
    const std::vector<std::string> fretNames = FretNames(instrument.layout);
    const int capo = asked.capo ? ParsePosition(*asked.capo, fretNames, "--capo") : 0;
    instrument.capo = capo;
    if (asked.octaves)
        instrument.octaves = ParseOctaves(*asked.octaves, instrument.Strings());
    const Limits limits = ResolveLimits(asked, fretNames, capo);
    // The chart as the window computes it, under the capo.
    const ChartSheet board = ComputeSheet(instrument, chosen.root, chosen.chord);
    if (asked.song)
        return RunSong(asked, board, fretNames);
    const NameSystem names = asked.names;
    const Spelling spelling = asked.spelling;
    const std::vector<std::string> tuning =
        asked.tuning ? SplitList(*asked.tuning) : std::vector<std::string>{};

    if (asked.identify)
        return IdentifyText(chosen.identify, spelling, SplitList(*asked.identify), names);
    if (asked.identifyFrets) {
        std::string frets;
        try {
            frets = FretListFromCapo(*asked.identifyFrets, fretNames, capo);
        } catch (const BadInput &e) {
            throw BadInput("--identify-frets: " + std::string(e.what()));
        }
        return IdentifyFretsText(board, frets, spelling, names);
    }
    if (asked.modes) {
        std::optional<std::string> root;
        if (asked.root)
            root = SpellingRoot(asked.root);
        // The strings named as the player typed them.
        return ModesText(Spell(board, Spelling::Musician, "", tuning), root, names);
    }
    const Scale *scale = asked.scale;
    const ChartSheet english =
        scale
            // Without --root, the chart's own root, as for a chord.
            ? ScaleSheet(board, *scale,
                         asked.root ? SpellingRoot(asked.root) : catalogue::SharpName(board.root))
            : Spell(board, spelling, SpellingRoot(asked.root), tuning);
    const ChartSheet sheet = Named(english, names);
    const ChartOrientation orientation{asked.leftHanded, asked.flip};
    // What a reader of paper gets: the degrees under the notes, the labels asked for.
    const ChartSheet page = Label(scale ? sheet : WithDegrees(sheet), asked.labels);

    std::string wav, midi;
    if (asked.wav || asked.midi) {
        // What --voicings shows first is what sounds.
        const auto events =
            scale ? ScaleEvents(instrument, english.root, *scale)
                  : ChordEvents(instrument, FindVoicings(english, fretNames, limits).fingerings,
                                SheetTones(english));
        if (asked.wav)
            wav = WavFile(events);
        if (asked.midi)
            midi = MidiFile(events);
    }

    std::string printed;
    const bool files = asked.png || asked.svg || asked.pdf || asked.book || asked.windowImage ||
                       asked.wav || asked.midi;
    if (asked.text || asked.tsv || asked.describe || asked.output || !files) {
        std::string text = asked.voicings   ? VoicingsText(sheet, fretNames, limits)
                           : asked.tsv      ? ChartTsv(sheet)
                           : asked.describe ? DescribeText(english, spelling, asked.flip, names)
                                            : ChartText(page, orientation);
        if (asked.describe && capo > 0)
            text.insert(text.find('\n') + 1,
                        "Capo at position " + std::to_string(capo) + " (fret " +
                            fretNames.at(static_cast<std::size_t>(capo)) +
                            "): the open strings sound there, and position 0 below is the capo.\n");
        if (asked.output)
            WriteTextFile(*asked.output, text);
        else
            printed = std::move(text);
    }
    if (asked.voicings && (asked.png || asked.svg || asked.pdf)) {
        const Diagrams diagrams =
            MakeDiagrams(ChartTitle(sheet), FindVoicings(sheet, fretNames, limits), fretNames, capo,
                         asked.leftHanded);
        if (asked.png)
            WriteDiagramsPng(*asked.png, diagrams, asked.pixelScale);
        if (asked.svg)
            WriteDiagramsSvg(*asked.svg, diagrams);
        if (asked.pdf)
            WriteDiagramsPdf(*asked.pdf, diagrams, asked.paper);
    } else {
        if (asked.png)
            WritePng(*asked.png, page, asked.pixelScale, orientation, asked.palette);
        if (asked.svg)
            WriteSvg(*asked.svg, page, orientation, asked.palette);
        if (asked.pdf)
            WritePdf(*asked.pdf, page, orientation, asked.paper, asked.palette);
    }
    if (asked.windowImage)
        // The window's own names: it knows no other spelling.
        WriteWindowImage(*asked.windowImage,
                         ComputeSheet({instrument.layout, instrument.openNotes, {}, 0}, chosen.root,
                                      chosen.chord),
                         asked.pixelScale);
    if (asked.wav)
        WriteTextFile(*asked.wav, wav);
    if (asked.midi)
        WriteTextFile(*asked.midi, midi);
    if (asked.book) {
        const Book book = MakeBook(
            instrument, chosen.roots, chosen.chords,
            {orientation, spelling, SpellingRoots(asked.roots), asked.labels, asked.palette});
        if (asked.voicings)
            WriteFingeringBook(*asked.book, Named(book, names), fretNames, limits,
                               asked.count.has_value(), asked.leftHanded, asked.paper);
        else
            WriteBook(*asked.book, Named(book, names), asked.paper);
    }
    return printed;
}

} // namespace varnock::output
