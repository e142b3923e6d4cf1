#pragma once

// The sheet: the chart, the notes table and its "Notes:" label, placed as the
// window places them, drawn from a controller onto any painter (image, PDF,
// SVG) with the same paint events the window's lists raise.

#include <QFont>
#include <QImage>
#include <QSize>

class QPainter;

namespace varnock {

class ChartController;

// The fonts of the window's lists and labels.
QFont ListFont();
QFont LabelFont();

// The chart at the origin; the rest where the window has it relative to the chart.
QSize SheetSize();
void PaintSheet(QPainter &painter, ChartController &chart);
// At `scale` device pixels per sheet pixel, on white.
QImage RenderSheet(ChartController &chart, int scale);

} // namespace varnock
