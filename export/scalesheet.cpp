#include "export/scalesheet.h"

#include "music/catalogue.h"
#include "music/errors.h"
#include "music/fingering.h"
#include "music/layouts.h"
#include "platform/basic.h"

namespace varnock::output {

using namespace music;

const Scale &ResolveScale(const std::string &name) {
    if (const Scale *scale = FindScale(name))
        return *scale;
    std::vector<std::string> names;
    for (const Scale &scale : Scales())
        names.push_back(scale.name);
    const std::string near = SuggestScale(name);
    throw BadInput("unknown scale \"" + name + "\"; " +
                   (near.empty() ? "" : "did you mean \"" + near + "\"? ") +
                   "accepted: " + Join(names, ", "));
}

ChartSheet ScaleSheet(const ChartSheet &board, const Scale &scale, const std::string &root) {
    // Read by the catalogue, so every spelling it takes ("Cx", "E\u266D") works.
    const auto written = catalogue::ParseWritten(root);
    if (!written)
        throw BadInput("unknown root \"" + root +
                       "\"; accepted: " + std::string(catalogue::kNoteNameRule));
    const std::vector<std::string> names = SpellScale(catalogue::Format(*written), scale);
    const int rootPitch = written->Index();
    const Board frets = BoardFor(static_cast<int>(board.mode), board.openNotes);

    ChartSheet out = board;
    out.root = rootPitch;
    out.chordType = -1;
    out.rootItem = names[0];
    out.chordItem = scale.name;
    for (std::size_t s = 0; s < frets.size() && s + 1 < out.rows.size(); ++s) {
        std::vector<std::string> &row = out.rows[s + 1];
        for (std::size_t p = 0; p < row.size(); ++p) {
            row[p].clear();
            if (p >= frets[s].size() || !frets[s][p])
                continue;
            for (std::size_t i = 0; i < scale.semitones.size(); ++i)
                if (catalogue::Mod12(rootPitch + scale.semitones[i]) == *frets[s][p])
                    row[p] = names[i];
        }
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
    return out;
}

} // namespace varnock::output
