#pragma once

// A page to draw on, whichever writes it: a QPainter (images, SVG, Qt's PDF)
// or a cairo context (the books' PDFs, which cairo gives an outline and
// links). The pages of the export (a chart under its title, chord
// diagrams) are drawn once, through this, on either.

#include "platform/graphics.h"

#include <QFont>
#include <QPointF>
#include <QRectF>

#include <string>

class QPainter;
typedef struct _cairo cairo_t;

namespace varnock {

class Canvas {
  public:
    virtual ~Canvas() = default;
    virtual void Save() = 0;
    virtual void Restore() = 0;
    virtual void Translate(double dx, double dy) = 0;
    virtual void Scale(double factor) = 0;
    // The font and colour of the text drawn next.
    virtual void SetFont(const QFont &font) = 0;
    virtual void SetColor(Color color) = 0;
    virtual void FillRect(const QRectF &r, Color color) = 0;
    virtual void FillRoundedRect(const QRectF &r, double radius, Color color) = 0;
    virtual void FillCircle(QPointF centre, double radius, Color color) = 0;
    // Lines and circles in the current colour, `width` wide.
    virtual void Line(QPointF from, QPointF to, double width) = 0;
    virtual void StrokeCircle(QPointF centre, double radius, double width) = 0;
    // One line of text in the box, placed by Qt::Alignment flags (left,
    // right or centred; vertically centred).
    virtual void Text(const QRectF &box, int alignment, const std::string &text) = 0;
    // The back end, for what is drawn on each its own way (the lists).
    virtual QPainter *Painter() { return nullptr; }
    virtual cairo_t *Cairo() { return nullptr; }
};

class PainterCanvas : public Canvas {
  public:
    explicit PainterCanvas(QPainter &painter) : p_(painter) {}
    void Save() override;
    void Restore() override;
    void Translate(double dx, double dy) override;
    void Scale(double factor) override;
    void SetFont(const QFont &font) override;
    void SetColor(Color color) override;
    void FillRect(const QRectF &r, Color color) override;
    void FillRoundedRect(const QRectF &r, double radius, Color color) override;
    void FillCircle(QPointF centre, double radius, Color color) override;
    void Line(QPointF from, QPointF to, double width) override;
    void StrokeCircle(QPointF centre, double radius, double width) override;
    void Text(const QRectF &box, int alignment, const std::string &text) override;
    QPainter *Painter() override { return &p_; }

  private:
    QPainter &p_;
    Color color_ = 0;
};

class CairoCanvas : public Canvas {
  public:
    explicit CairoCanvas(cairo_t *cairo) : c_(cairo) {}
    void Save() override;
    void Restore() override;
    void Translate(double dx, double dy) override;
    void Scale(double factor) override;
    void SetFont(const QFont &font) override;
    void SetColor(Color color) override;
    void FillRect(const QRectF &r, Color color) override;
    void FillRoundedRect(const QRectF &r, double radius, Color color) override;
    void FillCircle(QPointF centre, double radius, Color color) override;
    void Line(QPointF from, QPointF to, double width) override;
    void StrokeCircle(QPointF centre, double radius, double width) override;
    void Text(const QRectF &box, int alignment, const std::string &text) override;
    cairo_t *Cairo() override { return c_; }

  private:
    void Source(Color color);
    cairo_t *c_;
    Color color_ = 0;
};

// cairo's face for a Qt font of the lists: DejaVu Sans, bold as the font
// is, at its pixel size, narrowed by its stretch.
void SetCairoFont(cairo_t *cairo, const QFont &font);

} // namespace varnock
