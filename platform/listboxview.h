#pragma once

// A Listbox drawn: a one-pixel box frame, the heading line in the style's
// header look, and every cell in view through the list's paint events, with
// a Graphics that covers that cell alone. The columns share the width
// equally. PaintListbox draws onto any painter (screen, image, PDF, SVG);
// ListboxView is the list on screen.

#include "platform/listbox.h"

#include <QFont>
#include <QFrame>
#include <QRect>

#include <optional>

class QPainter;

namespace varnock {

// What a list is drawn with besides its content.
struct ListboxLook {
    QFont font;
    // The list's widget when it is on screen: its style, palette and state.
    // Without one, the application's, as for an enabled list out of focus.
    const QWidget *widget = nullptr;
    bool focused = false;
    // A display order: the columns right to left, and the existing rows from
    // this one on in reverse. Each cell keeps its own size, and its paint
    // events still get its real row and column.
    bool mirrorColumns = false;
    std::optional<Int> reverseRowsFrom = std::nullopt;
};

inline constexpr int kListboxHeadingHeight = 19;

// A cell of a list `size` large, in the list's own coordinates (rows from 0
// below the heading line).
QRect ListboxCellRect(const Listbox &list, QSize size, Int row, Int column);
// Where PaintListbox draws that cell under the look's display order.
QRect ListboxCellPlace(const Listbox &list, QSize size, Int row, Int column,
                       const ListboxLook &look);

// Paints the whole list, frame included, with its top-left corner at the
// painter's origin.
void PaintListbox(QPainter &painter, const Listbox &list, QSize size, const ListboxLook &look);

class ListboxView : public QFrame {
  public:
    ListboxView(Listbox &list, QWidget *parent = nullptr);
    ~ListboxView() override;

    Listbox &List() const { return list_; }

    // The cell the keyboard stands on, for assistive technology: the arrow
    // keys and clicks move it, it stays within the rows there are, and it is
    // never drawn. -1, -1 until the first arrow key or click on a row.
    Int CurrentRow() const { return currentRow_; }
    Int CurrentColumn() const { return currentColumn_; }

  protected:
    void paintEvent(QPaintEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;

  private:
    void ListChanged();
    void MoveCurrent(Int row, Int column, bool selection);

    Listbox &list_;
    Int currentRow_ = -1;
    Int currentColumn_ = -1;
    bool contentNewsDue_ = false;
};

} // namespace varnock
