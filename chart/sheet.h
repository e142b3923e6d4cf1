#pragma once

// The sheet: the chart, the notes table and its "Notes:" label, placed as the
// window places them, drawn from a controller onto any painter (image, PDF,
// SVG) with the same paint events the window's lists raise.

#include "platform/listboxview.h"

#include <QFont>
#include <QImage>
#include <QSize>

class QPainter;

namespace varnock {

class ChartController;

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
void PaintSheet(QPainter &painter, ChartController &chart, ChartOrientation orientation = {});
// At `scale` device pixels per sheet pixel, on white.
QImage RenderSheet(ChartController &chart, int scale, ChartOrientation orientation = {});

} // namespace varnock
