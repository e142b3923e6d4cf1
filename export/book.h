#pragma once

// The chord book: a contents page whose entries link to the roots, then for
// each root titled landscape pages with as many charts as stay readable
// (cell text of 9 pt or more), and an outline of roots and their chords.

#include "chart/sheet.h"
#include "export/spelling.h"
#include "export/writers.h"
#include "music/chartsheet.h"
#include "music/degrees.h"

#include <QSize>
#include <QString>

#include <functional>

#include <string>
#include <vector>

namespace varnock {
class Canvas;
}

namespace varnock::output {

using namespace music;

// How the book shows its charts; by default as the program's window does.
struct BookLook {
    ChartOrientation orientation;
    Spelling spelling = Spelling::Musician;
    // The roots as typed, one per root, for the Chord spelling.
    std::vector<std::string> rootNames;
    Labels labels = Labels::Notes;
    Palette palette = Palette::Window;
};

// One chart of the book with the line above it.
struct BookChart {
    std::string title;
    ChartSheet sheet;
};
// A root's part: its name in the contents and the page titles, and its charts.
struct BookPart {
    std::string name;
    std::vector<BookChart> charts;
};
struct Book {
    std::string instrument; // under the contents' title
    std::vector<BookPart> parts;
    ChartOrientation orientation;
    Palette palette = Palette::Window;
};

// The book's page layout on a paper: landscape, a margin, and the charts at
// one scale, as many to a page as fit at it.
struct BookLayout {
    double width = 0, height = 0; // the page in points
    double scale = 1;             // points per chart pixel
    int chartsPerPage = 1;
};
// Smallest cell text on the book's pages, in points.
constexpr double kBookTextPoints = 9;
BookLayout LayoutBook(const Book &book, Paper paper);

// The sheet of each root and chord on the instrument (its capo included),
// spelled as the look asks.
Book MakeBook(const Instrument &instrument, const std::vector<int> &roots,
              const std::vector<int> &chords, const BookLook &look = {});

// Returns the number of pages.
int WriteBook(const FileName &path, const Book &book, Paper paper = Paper::A4);

// A book as cairo writes it: a contents page whose entries link to the
// parts, each part starting a page headed by its name, its items one under
// another at one scale, as many to a page as fit, and an outline of parts
// and items. The chord book and the fingering book are both one.
struct PdfItem {
    std::string title; // in the outline
    QSize size;        // in the item's own pixels
    std::function<void(Canvas &)> paint;
};
struct PdfPart {
    std::string name;
    std::vector<PdfItem> items;
};
struct PdfBook {
    std::string title, subtitle; // the contents page's heading
    std::vector<PdfPart> parts;
    double width = 0, height = 0; // the page in points
    double scale = 1;             // points per item pixel
};
// Returns the number of pages.
int WritePdfBook(const FileName &path, const PdfBook &book);

} // namespace varnock::output
