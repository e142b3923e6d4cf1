#include "platform/graphics.h"

#include <QColor>
#include <QFontMetricsF>
#include <QImage>
#include <QLinearGradient>
#include <QPaintEngine>
#include <QPainter>

#include <cairo.h>

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <map>
#include <tuple>

namespace varnock {

namespace {
int Pixel(double v) {
    return static_cast<int>(std::lround(v));
}
QColor ToQColor(Color c) {
    return QColor::fromRgb((c >> 16) & 255, (c >> 8) & 255, c & 255);
}
QPaintEngine::Type EngineType(const QPainter &painter) {
    const QPaintEngine *engine = painter.paintEngine();
    return engine ? engine->type() : QPaintEngine::Raster;
}
} // namespace

Graphics::Graphics(QPainter &painter, const QRect &cell)
    : painter_(&painter), cell_(cell), width_(cell.width()), height_(cell.height()),
      antialiasing_(painter.testRenderHint(QPainter::Antialiasing)), engine_(EngineType(painter)) {
    if (antialiasing_)
        painter_->setRenderHint(QPainter::Antialiasing, false);
}

Graphics::Graphics(cairo_t *cairo, const QRect &cell)
    : cairo_(cairo), cell_(cell), width_(cell.width()), height_(cell.height()),
      antialiasing_(false),
      engine_(cairo_surface_get_type(cairo_get_target(cairo)) == CAIRO_SURFACE_TYPE_IMAGE
                  ? QPaintEngine::Raster
                  : QPaintEngine::Pdf) {}

bool Graphics::Vector() const {
    return engine_ == QPaintEngine::Pdf || engine_ == QPaintEngine::SVG;
}

Graphics::~Graphics() {
    if (antialiasing_)
        painter_->setRenderHint(QPainter::Antialiasing, true);
}

void Graphics::FillClipped(QRect rect) {
    if (cairo_) {
        CairoFill(rect);
        return;
    }
    FillClipped(rect, ToQColor(fore_));
}

void Graphics::CairoFill(QRect rect) {
    rect = rect.intersected(QRect(0, 0, cell_.width(), cell_.height()));
    if (rect.isEmpty())
        return;
    cairo_set_source_rgb(cairo_, ((fore_ >> 16) & 255) / 255.0, ((fore_ >> 8) & 255) / 255.0,
                         (fore_ & 255) / 255.0);
    rect.translate(cell_.topLeft());
    cairo_rectangle(cairo_, rect.x(), rect.y(), rect.width(), rect.height());
    cairo_fill(cairo_);
}

void Graphics::FillClipped(QRect rect, const QBrush &brush) {
    rect = rect.intersected(QRect(0, 0, cell_.width(), cell_.height()));
    if (!rect.isEmpty())
        painter_->fillRect(rect.translated(cell_.topLeft()), brush);
}

template <typename Draw> void Graphics::WithClip(Draw draw) {
    painter_->save();
    painter_->translate(cell_.topLeft());
    painter_->setClipRect(QRect(0, 0, cell_.width(), cell_.height()), Qt::IntersectClip);
    draw();
    painter_->restore();
}

void Graphics::FillRect(double x, double y, double width, double height) {
    FillClipped(QRect(Pixel(x), Pixel(y), Pixel(width), Pixel(height)));
}

void Graphics::FillVerticalGradient(double x, double y, double width, double height,
                                    std::span<const Color> rows) {
    const QRect rect(Pixel(x), Pixel(y), Pixel(width), Pixel(height));
    if (rows.empty() || rect.isEmpty())
        return;
    const auto row = [&](int i) {
        return rows[std::min(static_cast<std::size_t>(i), rows.size() - 1)];
    };
    if (cairo_) {
        const QRect cut = rect.intersected(QRect(0, 0, cell_.width(), cell_.height()))
                              .translated(cell_.topLeft());
        const double top = cell_.top() + rect.top();
        cairo_pattern_t *gradient = cairo_pattern_create_linear(0, top, 0, top + rect.height());
        for (int i = 0; i < rect.height() && static_cast<std::size_t>(i) < rows.size(); ++i) {
            const Color c = row(i);
            cairo_pattern_add_color_stop_rgb(gradient, (i + 0.5) / rect.height(),
                                             ((c >> 16) & 255) / 255.0, ((c >> 8) & 255) / 255.0,
                                             (c & 255) / 255.0);
        }
        cairo_set_source(cairo_, gradient);
        cairo_rectangle(cairo_, cut.x(), cut.y(), cut.width(), cut.height());
        cairo_fill(cairo_);
        cairo_pattern_destroy(gradient);
        return;
    }
    const QPointF top = QPointF(cell_.topLeft()) + QPointF(rect.topLeft());
    QLinearGradient gradient(top, top + QPointF(0, rect.height()));
    QGradientStops stops;
    for (int i = 0; i < rect.height() && static_cast<std::size_t>(i) < rows.size(); ++i)
        stops.append({(i + 0.5) / rect.height(), ToQColor(row(i))});
    gradient.setStops(stops);
    FillClipped(rect, gradient);
}

namespace {

// The copies of each shared surface painted so far into one page or group.
using PaintCounts = std::map<std::string, int>;
const cairo_user_data_key_t kPaintCounts{};

PaintCounts &Counts(cairo_surface_t *target) {
    auto *counts = static_cast<PaintCounts *>(cairo_surface_get_user_data(target, &kPaintCounts));
    if (!counts) {
        counts = new PaintCounts;
        cairo_surface_set_user_data(target, &kPaintCounts, counts,
                                    [](void *p) { delete static_cast<PaintCounts *>(p); });
    }
    return *counts;
}

} // namespace

cairo_surface_t *SharedSurface(cairo_t *cairo, const std::string &key,
                               const std::function<cairo_surface_t *()> &make) {
    static std::map<std::pair<std::string, int>, cairo_surface_t *> copies;
    const int copy = Counts(cairo_get_target(cairo))[key]++;
    cairo_surface_t *&surface = copies[{key, copy}];
    if (!surface)
        surface = make();
    return surface;
}

void ShowPage(cairo_t *cairo) {
    cairo_show_page(cairo);
    Counts(cairo_get_target(cairo)).clear();
}

bool DrawsPdf(const QPainter &painter) {
    return EngineType(painter) == QPaintEngine::Pdf;
}

void DrawSharedPicture(QPainter &painter, QPoint at, QSize size, std::uint64_t key,
                       const std::function<void(QPainter &)> &draw) {
    // Kept for the life of the program: a picture's identity is what lets
    // the PDF writer store it once.
    static std::map<std::tuple<std::uint64_t, int, int>, QImage> pictures;
    QImage &picture = pictures[{key, size.width(), size.height()}];
    if (picture.isNull()) {
        picture = QImage(size, QImage::Format_RGB32);
        picture.fill(Qt::white);
        QPainter onPicture(&picture);
        draw(onPicture);
    }
    // Left on for the rest of the document: every picture drawn into it is
    // to keep its exact colours.
    if (!painter.testRenderHint(QPainter::LosslessImageRendering))
        painter.setRenderHint(QPainter::LosslessImageRendering);
    painter.drawImage(at, picture);
}

void Graphics::DrawShared(std::uint64_t key, const std::function<void(Graphics &)> &draw) {
    if (cairo_ && engine_ == QPaintEngine::Pdf) {
        // The PDF surface stores each picture once however often it is drawn.
        const std::string name = "picture " + std::to_string(key) + " " +
                                 std::to_string(cell_.width()) + "x" +
                                 std::to_string(cell_.height());
        cairo_surface_t *picture = SharedSurface(cairo_, name, [&] {
            cairo_surface_t *made =
                cairo_image_surface_create(CAIRO_FORMAT_RGB24, cell_.width(), cell_.height());
            cairo_t *onPicture = cairo_create(made);
            cairo_set_antialias(onPicture, CAIRO_ANTIALIAS_NONE);
            cairo_set_source_rgb(onPicture, 1, 1, 1);
            cairo_paint(onPicture);
            {
                Graphics graphics(onPicture, QRect(QPoint(0, 0), cell_.size()));
                draw(graphics);
            }
            cairo_destroy(onPicture);
            return made;
        });
        cairo_save(cairo_);
        cairo_set_source_surface(cairo_, picture, cell_.left(), cell_.top());
        // Each picture pixel stays one block of colour, as on the screen.
        cairo_pattern_set_filter(cairo_get_source(cairo_), CAIRO_FILTER_NEAREST);
        cairo_rectangle(cairo_, cell_.left(), cell_.top(), cell_.width(), cell_.height());
        cairo_fill(cairo_);
        cairo_restore(cairo_);
        return;
    }
    if (engine_ != QPaintEngine::Pdf || cairo_) {
        draw(*this);
        return;
    }
    DrawSharedPicture(*painter_, cell_.topLeft(), cell_.size(), key, [&](QPainter &onPicture) {
        Graphics graphics(onPicture, QRect(QPoint(0, 0), cell_.size()));
        draw(graphics);
    });
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
    if (cairo_) {
        cairo_save(cairo_);
        cairo_rectangle(cairo_, cell_.left(), cell_.top(), cell_.width(), cell_.height());
        cairo_clip(cairo_);
        cairo_set_source_rgb(cairo_, ((fore_ >> 16) & 255) / 255.0, ((fore_ >> 8) & 255) / 255.0,
                             (fore_ & 255) / 255.0);
        cairo_set_line_width(cairo_, 1);
        cairo_move_to(cairo_, cell_.left() + ax + 0.5, cell_.top() + ay + 0.5);
        cairo_line_to(cairo_, cell_.left() + bx + 0.5, cell_.top() + by + 0.5);
        cairo_stroke(cairo_);
        cairo_restore(cairo_);
        return;
    }
    const QColor color = ToQColor(fore_);
    WithClip([&] {
        painter_->setPen(QPen(color, 0));
        painter_->drawLine(ax, ay, bx, by);
        painter_->drawPoint(bx, by);
    });
}

void Graphics::DrawString(const std::string &text, double x, double y, double, bool) {
    if (cairo_) {
        cairo_text_extents_t ink;
        cairo_text_extents(cairo_, text.c_str(), &ink);
        const bool inside =
            x + ink.x_bearing >= 0 && x + ink.x_bearing + ink.width <= cell_.width() &&
            y + ink.y_bearing >= 0 && y + ink.y_bearing + ink.height <= cell_.height();
        cairo_save(cairo_);
        if (!inside) {
            cairo_rectangle(cairo_, cell_.left(), cell_.top(), cell_.width(), cell_.height());
            cairo_clip(cairo_);
        }
        cairo_set_source_rgb(cairo_, ((fore_ >> 16) & 255) / 255.0, ((fore_ >> 8) & 255) / 255.0,
                             (fore_ & 255) / 255.0);
        cairo_move_to(cairo_, cell_.left() + x, cell_.top() + y);
        cairo_show_text(cairo_, text.c_str());
        cairo_restore(cairo_);
        return;
    }
    const QString string = QString::fromStdString(text);
    painter_->setPen(ToQColor(fore_));
    // A pixel of room around the ink for the smoothing of glyph edges.
    const QRectF ink = QFontMetricsF(painter_->font())
                           .boundingRect(string)
                           .translated(x, y)
                           .adjusted(-1, -1, 1, 1);
    if (QRectF(0, 0, cell_.width(), cell_.height()).contains(ink)) {
        painter_->drawText(QPointF(x, y) + cell_.topLeft(), string);
        return;
    }
    WithClip([&] { painter_->drawText(QPointF(x, y), string); });
}

} // namespace varnock
