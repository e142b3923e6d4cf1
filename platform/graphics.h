#pragma once

// A drawing surface for one table cell: origin at the cell's top-left corner,
// everything outside the cell cut off, one current colour for all drawing.

#include "platform/basic.h"

#include <QBrush>
#include <QFont>
#include <QRect>

#include <cstdint>
#include <functional>
#include <span>
#include <string>

class QPainter;
typedef struct _cairo cairo_t;
typedef struct _cairo_surface cairo_surface_t;

namespace varnock {

// A colour as 0x00RRGGBB.
using Color = std::uint32_t;

// Three channels 0..255 into a colour; alpha 0 is opaque and the only kind used.
constexpr Color RGB(Int red, Int green, Int blue, Int alpha = 0) {
    (void)alpha;
    return static_cast<Color>(((red & 255) << 16) | ((green & 255) << 8) | (blue & 255));
}

// True when the painter writes a PDF.
bool DrawsPdf(const QPainter &painter);

// Draws at `at` the picture that `draw` paints on a `size` image, made once
// for each key and size and kept: a PDF then stores it once however often it
// is drawn. Drawn losslessly, so its colours stay exact.
void DrawSharedPicture(QPainter &painter, QPoint at, QSize size, std::uint64_t key,
                       const std::function<void(QPainter &)> &draw);

// cairo 1.16's PDF surface names a surface in the resources of the page or
// group it is painted on once for every paint, and resources that name one
// object twice make a damaged PDF. So a surface meant to be painted many
// times is kept as copies: the nth paint into one page or group takes the
// nth copy, which `make` draws the first time it is needed and which every
// later page and group shares. Kept for the life of the program.
cairo_surface_t *SharedSurface(cairo_t *cairo, const std::string &key,
                               const std::function<cairo_surface_t *()> &make);
// Ends the page, and with it the count of copies painted on it.
void ShowPage(cairo_t *cairo);

class Graphics {
  public:
    // Draws into `cell` of the painter's device. The painter's pen may be
    // changed; its transform and clip are left as they were.
    Graphics(QPainter &painter, const QRect &cell);
    // The same onto a cairo context, in its current font (a PDF of the
    // chord book, which cairo gives an outline and links).
    Graphics(cairo_t *cairo, const QRect &cell);
    ~Graphics();
    Graphics(const Graphics &) = delete;
    Graphics &operator=(const Graphics &) = delete;

    void ForeColor(Color color) { fore_ = color; }
    Color ForeColor() const { return fore_; }
    Int Width() const { return width_; }
    Int Height() const { return height_; }
    // True on a device that keeps shapes (PDF, SVG), where every shape costs
    // file size; false on one of pixels (screen, image).
    bool Vector() const;

    void FillRect(double x, double y, double width, double height);
    // Fills a rectangle, cut to the cell, with one vertical gradient that
    // passes through rows[i] at the centre of the rectangle's pixel row i, in
    // straight lines between those centres; rows past the list take its last
    // colour. The current colour is kept.
    void FillVerticalGradient(double x, double y, double width, double height,
                              std::span<const Color> rows);
    // Runs `draw` for this cell. On a PDF device what it paints becomes one
    // lossless picture, made once for each key and cell size and drawn
    // wherever the same is drawn again: the PDF keeps a single copy of it,
    // where shapes would cost bytes and time in every cell.
    void DrawShared(std::uint64_t key, const std::function<void(Graphics &)> &draw);
    // One pixel wide, both end points included.
    void DrawLine(double x1, double y1, double x2, double y2);
    // Text starting at x with its baseline at y. Wrapping and condensing are
    // not offered: the table cells hold one short name.
    void DrawString(const std::string &text, double x, double y, double wrapWidth = 0,
                    bool condense = false);

  private:
    // Fills a rectangle given in cell coordinates, cut to the cell. Cutting
    // it ourselves gives the pixels a clip would, without the clip: on the
    // PDF and SVG engines every clip change costs a state flush.
    void FillClipped(QRect rect);
    void FillClipped(QRect rect, const QBrush &brush);
    // Runs a drawing that may cross the cell's edge under a clip to the cell.
    template <typename Draw> void WithClip(Draw draw);

    void CairoFill(QRect rect);

    QPainter *painter_ = nullptr;
    cairo_t *cairo_ = nullptr;
    QRect cell_;
    Int width_;
    Int height_;
    Color fore_ = 0;
    bool antialiasing_;
    int engine_; // the QPaintEngine::Type drawn on
};

} // namespace varnock
