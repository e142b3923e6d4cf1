#pragma once

// The sheet drawn: the chart, the notes table and its "Notes:" label, placed
// as the window places them, onto any painter (image, PDF, SVG), each cell
// by the same paint rules the window's lists use.

#include "chart/cellpaint.h"
#include "music/chartsheet.h"
#include "platform/canvas.h"
#include "platform/listboxpaint.h"

#include <QFont>
#include <QImage>
#include <QSize>

class QPainter;
typedef struct _cairo cairo_t;

namespace varnock {

// How the export may turn the chart; the window always shows it as it is.
// The notes table is a legend and is never turned.
struct ChartOrientation {
    bool leftHanded = false; // open strings on the right, positions rising to the left
    bool flipped = false;    // the last string on top, under the label row
};

// The fonts of the window's lists and labels.
QFont ListFont();
QFont LabelFont();

// The chart at the origin; the rest where the window has it relative to the chart.
QSize SheetSize();
// The chart's look for PaintListbox under an orientation.
ListboxLook ChartLook(ChartOrientation orientation);
void PaintSheet(QPainter &painter, const ChartSheet &sheet, ChartOrientation orientation = {});
// At `scale` device pixels per sheet pixel, on white.
QImage RenderSheet(const ChartSheet &sheet, int scale, ChartOrientation orientation = {});

// The sheet for paper: a title line above it, each string row headed by the
// string's name on the open-string side, and a notes table as tall as the
// sheet's notes rows (a second one holds the degrees).
QSize ChartPageSize(const ChartSheet &sheet);
void PaintChartPage(QPainter &painter, const ChartSheet &sheet, const std::string &title,
                    ChartOrientation orientation = {}, Palette palette = Palette::Window);
QImage RenderChartPage(const ChartSheet &sheet, const std::string &title, int scale,
                       ChartOrientation orientation = {}, Palette palette = Palette::Window);
// The same page drawn by cairo (for the chord book's PDF): the same places,
// the same cell paint rules through Graphics, headings and frames plain.
void PaintChartPage(cairo_t *cairo, const ChartSheet &sheet, const std::string &title,
                    ChartOrientation orientation = {}, Palette palette = Palette::Window);
// Both through one painter, on a canvas of either.
void PaintChartPage(Canvas &canvas, const ChartSheet &sheet, const std::string &title,
                    ChartOrientation orientation = {}, Palette palette = Palette::Window);
// The pixel size of the chart's cell text on a page (12, less where cells hold more).
int ChartPageTextPixels(const ChartSheet &sheet);

// Where PaintChartPage draws string row `row` (1 for the first string) of the
// chart, and the name heading it.
QRect ChartPageRow(const ChartSheet &sheet, Int row, ChartOrientation orientation = {});
QRect ChartPageName(const ChartSheet &sheet, Int row, ChartOrientation orientation = {});

} // namespace varnock
