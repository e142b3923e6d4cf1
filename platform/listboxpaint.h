#pragma once

// A Listbox drawn: a one-pixel box frame, the heading line as raised header
// sections, and every cell in view through the list's paint events, with a
// Graphics that covers that cell alone. The columns share the width equally.
// PaintListbox draws onto any painter (screen, image, PDF, SVG); the list on
// screen and every export draw through it, so they agree pixel for pixel.

#include "platform/listbox.h"

#include <QFont>
#include <QGuiApplication>
#include <QPalette>
#include <QRect>

#include <optional>

class QPainter;

namespace varnock {

// What a list is drawn with besides its content.
struct ListboxLook {
    QFont font;
    // The colours of frame, heading, background, text and selection: the
    // widget's on screen, the application's elsewhere.
    QPalette palette = QGuiApplication::palette();
    // Draws the focus ring.
    bool focused = false;
    // A display order: the columns right to left, and the existing rows from
    // this one on in reverse. Each cell keeps its own size, and its paint
    // events still get its real row and column.
    bool mirrorColumns = false;
    std::optional<Int> reverseRowsFrom = std::nullopt;
};

inline constexpr int kListboxHeadingHeight = 19;
inline constexpr int kListboxFrameWidth = 1;

// A cell of a list `size` large, in the list's own coordinates (rows from 0
// below the heading line).
QRect ListboxCellRect(const Listbox &list, QSize size, Int row, Int column);
// Where PaintListbox draws that cell under the look's display order.
QRect ListboxCellPlace(const Listbox &list, QSize size, Int row, Int column,
                       const ListboxLook &look);

// Paints the whole list, frame included, with its top-left corner at the
// painter's origin.
void PaintListbox(QPainter &painter, const Listbox &list, QSize size, const ListboxLook &look);

} // namespace varnock
