#include "chart/graphics.h"

#include <QColor>
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
    : painter_(painter), width_(cell.width()), height_(cell.height()) {
    painter_.save();
    painter_.translate(cell.topLeft());
    painter_.setClipRect(QRect(0, 0, cell.width(), cell.height()), Qt::IntersectClip);
    painter_.setRenderHint(QPainter::Antialiasing, false);
}

Graphics::~Graphics() {
    painter_.restore();
}

void Graphics::FillRect(double x, double y, double width, double height) {
    painter_.fillRect(QRect(Pixel(x), Pixel(y), Pixel(width), Pixel(height)), ToQColor(fore_));
}

void Graphics::DrawLine(double x1, double y1, double x2, double y2) {
    const int ax = Pixel(x1), ay = Pixel(y1), bx = Pixel(x2), by = Pixel(y2);
    const QColor color = ToQColor(fore_);
    // Straight lines as filled spans, so the pixels covered are exact and both
    // ends are included whatever the paint engine does with pen caps.
    if (ay == by) {
        painter_.fillRect(QRect(std::min(ax, bx), ay, std::abs(bx - ax) + 1, 1), color);
        return;
    }
    if (ax == bx) {
        painter_.fillRect(QRect(ax, std::min(ay, by), 1, std::abs(by - ay) + 1), color);
        return;
    }
    painter_.setPen(QPen(color, 0));
    painter_.drawLine(ax, ay, bx, by);
    painter_.drawPoint(bx, by);
}

void Graphics::DrawString(const std::string &text, double x, double y, double, bool) {
    painter_.setPen(ToQColor(fore_));
    painter_.drawText(QPointF(x, y), QString::fromStdString(text));
}

} // namespace varnock
