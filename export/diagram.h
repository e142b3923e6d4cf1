#pragma once

// Chord diagrams as players read them: the strings as vertical lines, the
// frets as rows named as the layout names them, a dot with the note on each
// fretted string, o and x above the nut, the capo as a bar, and the degrees
// under the strings. A set of them goes to PNG, SVG or PDF.

#include "export/book.h"
#include "export/voicings.h"
#include "music/fingering.h"

#include <QPointF>
#include <QSize>
#include <QString>

#include <string>
#include <vector>

class QPainter;

namespace varnock {
class Canvas;
}

namespace varnock::output {

using namespace music;

struct Diagrams {
    std::string title;                  // above them all
    std::string none;                   // said instead when there are no fingerings
    std::vector<std::string> fretNames; // of positions 0..22
    int capo = 0;
    bool leftHanded = false; // the first string on the right
    std::vector<Fingering> fingerings;
    std::vector<Voicing> voicings; // one per fingering, read for the labels
};

// Diagrams of what FindVoicings found.
Diagrams MakeDiagrams(const std::string &title, const Voicings &found,
                      const std::vector<std::string> &fretNames, int capo, bool leftHanded);

// Diagrams in a row before the next row starts.
constexpr int kDiagramsPerRow = 5;

QSize DiagramsSize(const Diagrams &diagrams);
void PaintDiagrams(QPainter &painter, const Diagrams &diagrams);
void PaintDiagrams(Canvas &canvas, const Diagrams &diagrams);

// Where diagram `index` shows string `string`: the centre of its dot when
// fretted, of its o or x mark otherwise.
QPointF MarkCentre(const Diagrams &diagrams, std::size_t index, std::size_t string);

// The tallest diagram set a PNG or SVG holds, in sheet pixels; BadInput past it.
constexpr int kMostDiagramPixels = 10000;
void WriteDiagramsPng(const FileName &path, const Diagrams &diagrams, int scale);
void WriteDiagramsSvg(const FileName &path, const Diagrams &diagrams);
// On pages of `paper`, turned to suit the diagrams' shape, inside the
// margins: each at its own size (smaller only where a row is wider than the
// page), on as many pages as they need.
void WriteDiagramsPdf(const FileName &path, const Diagrams &diagrams, Paper paper);

// A fingering book, as the chord book is made: a contents page linking to
// the parts and an outline; for each root a part, each chord a set of
// diagrams (titled with the chord's name) under the part's heading; a part
// starts a page and continues on more as needed. Returns the number of pages.
struct FingeringBookPart {
    std::string heading;
    std::vector<Diagrams> chords;
};
int WriteFingeringBook(const FileName &path, const std::string &title,
                       const std::string &instrument, const std::vector<FingeringBookPart> &parts,
                       Paper paper = Paper::A4);

// The fingering book of a chord book's sheets: each chord's best fingerings
// within the limits (four unless `countGiven`).
int WriteFingeringBook(const FileName &path, const Book &book,
                       const std::vector<std::string> &fretNames, Limits limits, bool countGiven,
                       bool leftHanded, Paper paper = Paper::A4);

} // namespace varnock::output
