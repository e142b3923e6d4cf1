#include "platform/graphics.h"

#include <QColor>
#include <QFontMetricsF>
#include <QPainter>

#include <cmath>
#include <cstdlib>

namespace varnock {

namespace {
int Pixel(double v) {
    return static_cast<int>(std::lround(v));
}
QColor ToQColor(Color c) {
    return QColor::fromRgb((c >> 16) & 255, (c >> 8) & 255, c & 255);
}
} // namespace

Graphics::Graphics(QPainter &painter, const QRect &cell)
    : painter_(painter), cell_(cell), width_(cell.width()), height_(cell.height()),
      antialiasing_(painter.testRenderHint(QPainter::Antialiasing)) {
    if (antialiasing_)
        painter_.setRenderHint(QPainter::Antialiasing, false);
}

Graphics::~Graphics() {
    if (antialiasing_)
        painter_.setRenderHint(QPainter::Antialiasing, true);
}

void Graphics::FillClipped(QRect rect) {
    rect = rect.intersected(QRect(0, 0, cell_.width(), cell_.height()));
    if (!rect.isEmpty())
        painter_.fillRect(rect.translated(cell_.topLeft()), ToQColor(fore_));
}

template <typename Draw> void Graphics::WithClip(Draw draw) {
    painter_.save();
    painter_.translate(cell_.topLeft());
    painter_.setClipRect(QRect(0, 0, cell_.width(), cell_.height()), Qt::IntersectClip);
    draw();
    painter_.restore();
}

void Graphics::FillRect(double x, double y, double width, double height) {
    FillClipped(QRect(Pixel(x), Pixel(y), Pixel(width), Pixel(height)));
}

void Graphics::DrawLine(double x1, double y1, double x2, double y2) {
    const int ax = Pixel(x1), ay = Pixel(y1), bx = Pixel(x2), by = Pixel(y2);
    // Straight lines as filled spans, so the pixels covered are exact and both
    // ends are included whatever the paint engine does with pen caps.
    if (ay == by) {
        FillClipped(QRect(std::min(ax, bx), ay, std::abs(bx - ax) + 1, 1));
        return;
    }
    if (ax == bx) {
        FillClipped(QRect(ax, std::min(ay, by), 1, std::abs(by - ay) + 1));
        return;
    }
    const QColor color = ToQColor(fore_);
    WithClip([&] {
        painter_.setPen(QPen(color, 0));
        painter_.drawLine(ax, ay, bx, by);
        painter_.drawPoint(bx, by);
    });
}

void Graphics::DrawString(const std::string &text, double x, double y, double, bool) {
    const QString string = QString::fromStdString(text);
    painter_.setPen(ToQColor(fore_));
    // A pixel of room around the ink for the smoothing of glyph edges.
    const QRectF ink =
        QFontMetricsF(painter_.font()).boundingRect(string).translated(x, y).adjusted(-1, -1, 1, 1);
    if (QRectF(0, 0, cell_.width(), cell_.height()).contains(ink)) {
        painter_.drawText(QPointF(x, y) + cell_.topLeft(), string);
        return;
    }
    WithClip([&] { painter_.drawText(QPointF(x, y), string); });
}

} // namespace varnock
