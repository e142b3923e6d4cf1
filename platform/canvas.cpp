#include "platform/canvas.h"

#include <QPainter>
#include <QPainterPath>

#include <cairo.h>

#include <numbers>

namespace varnock {

namespace {
QColor Rgb(Color c) {
    return QColor((c >> 16) & 0xFF, (c >> 8) & 0xFF, c & 0xFF);
}
} // namespace

void PainterCanvas::Save() {
    p_.save();
}
void PainterCanvas::Restore() {
    p_.restore();
}
void PainterCanvas::Translate(double dx, double dy) {
    p_.translate(dx, dy);
}
void PainterCanvas::Scale(double factor) {
    p_.scale(factor, factor);
}
void PainterCanvas::SetFont(const QFont &font) {
    p_.setFont(font);
}
void PainterCanvas::SetColor(Color color) {
    color_ = color;
    p_.setPen(Rgb(color));
}
void PainterCanvas::FillRect(const QRectF &r, Color color) {
    p_.fillRect(r, Rgb(color));
}
namespace {
// A shape filled with a colour and no outline, the painter left as it was.
template <typename Draw> void Filled(QPainter &p, Color color, Draw draw) {
    p.save();
    p.setPen(Qt::NoPen);
    p.setBrush(Rgb(color));
    draw();
    p.restore();
}
} // namespace
void PainterCanvas::FillRoundedRect(const QRectF &r, double radius, Color color) {
    Filled(p_, color, [&] { p_.drawRoundedRect(r, radius, radius); });
}
void PainterCanvas::FillCircle(QPointF centre, double radius, Color color) {
    Filled(p_, color, [&] { p_.drawEllipse(centre, radius, radius); });
}
void PainterCanvas::Line(QPointF from, QPointF to, double width) {
    p_.setPen(QPen(Rgb(color_), width));
    p_.drawLine(from, to);
}
void PainterCanvas::StrokeCircle(QPointF centre, double radius, double width) {
    p_.save();
    p_.setPen(QPen(Rgb(color_), width));
    p_.setBrush(Qt::NoBrush);
    p_.drawEllipse(centre, radius, radius);
    p_.restore();
}
void PainterCanvas::Text(const QRectF &box, int alignment, const std::string &text) {
    p_.setPen(Rgb(color_));
    p_.drawText(box, alignment | Qt::TextForceLeftToRight, QString::fromStdString(text));
}

void SetCairoFont(cairo_t *cairo, const QFont &font) {
    cairo_select_font_face(cairo, "DejaVu Sans", CAIRO_FONT_SLANT_NORMAL,
                           font.bold() ? CAIRO_FONT_WEIGHT_BOLD : CAIRO_FONT_WEIGHT_NORMAL);
    const double size = font.pixelSize();
    const double stretch = font.stretch() > 0 ? font.stretch() / 100.0 : 1.0;
    cairo_matrix_t matrix;
    cairo_matrix_init_scale(&matrix, size * stretch, size);
    cairo_set_font_matrix(cairo, &matrix);
}

void CairoCanvas::Source(Color c) {
    cairo_set_source_rgb(c_, ((c >> 16) & 255) / 255.0, ((c >> 8) & 255) / 255.0,
                         (c & 255) / 255.0);
}
void CairoCanvas::Save() {
    cairo_save(c_);
}
void CairoCanvas::Restore() {
    cairo_restore(c_);
}
void CairoCanvas::Translate(double dx, double dy) {
    cairo_translate(c_, dx, dy);
}
void CairoCanvas::Scale(double factor) {
    cairo_scale(c_, factor, factor);
}
void CairoCanvas::SetFont(const QFont &font) {
    SetCairoFont(c_, font);
}
void CairoCanvas::SetColor(Color color) {
    color_ = color;
}
void CairoCanvas::FillRect(const QRectF &r, Color color) {
    Source(color);
    cairo_rectangle(c_, r.x(), r.y(), r.width(), r.height());
    cairo_fill(c_);
}
void CairoCanvas::FillRoundedRect(const QRectF &r, double radius, Color color) {
    Source(color);
    const double pi = std::numbers::pi;
    cairo_new_sub_path(c_);
    cairo_arc(c_, r.right() - radius, r.top() + radius, radius, -pi / 2, 0);
    cairo_arc(c_, r.right() - radius, r.bottom() - radius, radius, 0, pi / 2);
    cairo_arc(c_, r.left() + radius, r.bottom() - radius, radius, pi / 2, pi);
    cairo_arc(c_, r.left() + radius, r.top() + radius, radius, pi, 3 * pi / 2);
    cairo_close_path(c_);
    cairo_fill(c_);
}
void CairoCanvas::FillCircle(QPointF centre, double radius, Color color) {
    Source(color);
    cairo_new_sub_path(c_);
    cairo_arc(c_, centre.x(), centre.y(), radius, 0, 2 * std::numbers::pi);
    cairo_fill(c_);
}
void CairoCanvas::Line(QPointF from, QPointF to, double width) {
    Source(color_);
    cairo_set_line_width(c_, width);
    cairo_move_to(c_, from.x(), from.y());
    cairo_line_to(c_, to.x(), to.y());
    cairo_stroke(c_);
}
void CairoCanvas::StrokeCircle(QPointF centre, double radius, double width) {
    Source(color_);
    cairo_set_line_width(c_, width);
    cairo_new_sub_path(c_);
    cairo_arc(c_, centre.x(), centre.y(), radius, 0, 2 * std::numbers::pi);
    cairo_stroke(c_);
}
void CairoCanvas::Text(const QRectF &box, int alignment, const std::string &text) {
    if (text.empty())
        return;
    Source(color_);
    cairo_font_extents_t font;
    cairo_font_extents(c_, &font);
    cairo_text_extents_t ink;
    cairo_text_extents(c_, text.c_str(), &ink);
    double x = box.left();
    if (alignment & Qt::AlignRight)
        x = box.right() - ink.x_advance;
    else if (alignment & Qt::AlignHCenter)
        x = box.left() + (box.width() - ink.x_advance) / 2;
    // The baseline that centres the line in the box.
    cairo_move_to(c_, x, box.top() + (box.height() + font.ascent - font.descent) / 2);
    cairo_show_text(c_, text.c_str());
}

} // namespace varnock
