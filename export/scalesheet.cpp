#include "export/scalesheet.h"

#include "music/catalogue.h"
#include "music/errors.h"
#include "music/fingering.h"
#include "music/layouts.h"
#include "platform/basic.h"

namespace varnock::output {

using namespace music;

ChartSheet ScaleSheet(const ChartSheet &board, const Scale &scale, const std::string &root) {
    // Read by the catalogue, so every spelling it takes ("Cx", "E\u266D") works.
    const auto written = catalogue::ParseWritten(root);
    if (!written)
        throw BadInput("unknown root \"" + root +
                       "\"; accepted: " + std::string(catalogue::kNoteNameRule));
    const std::vector<std::string> names = SpellScale(catalogue::Format(*written), scale);
    const int rootPitch = written->Index();

    ChartSheet out = board;
    out.root = rootPitch;
    out.chordType = -1;
    out.rootItem = names[0];
    out.chordItem = scale.name;
    // Each cell that sounds a note of the scale is that degree; a capo
    // silences the positions below it.
    for (std::vector<ChartCell> &string : out.cells)
        for (std::size_t p = 0; p < string.size(); ++p) {
            ChartCell &cell = string[p];
            cell.tone = -1;
            if (p > 0 && p < static_cast<std::size_t>(out.capo))
                continue;
            for (std::size_t i = 0; i < scale.semitones.size(); ++i)
                if (catalogue::Mod12(rootPitch + scale.semitones[i]) == cell.pitch)
                    cell.tone = static_cast<int>(i);
        }
    // Four notes a row, as the table has four columns; each heading names
    // the degrees of its column.
    constexpr std::size_t kColumns = 4;
    out.notes = {};
    out.extraNotes.clear();
    out.degrees.assign(scale.degrees.begin(),
                       scale.degrees.begin() + static_cast<std::ptrdiff_t>(names.size()));
    out.notesHeadings.assign(kColumns, "");
    out.notesRows.assign((names.size() + kColumns - 1) / kColumns,
                         std::vector<std::string>(kColumns));
    for (std::size_t i = 0; i < names.size(); ++i) {
        if (i < kColumns)
            out.notes[i] = names[i];
        else
            out.extraNotes.push_back(names[i]);
        out.notesRows[i / kColumns][i % kColumns] = names[i];
        std::string &heading = out.notesHeadings[i % kColumns];
        if (!heading.empty())
            heading += " / ";
        heading += scale.degrees[i];
    }
    return Renamed(out, names);
}

} // namespace varnock::output
