#pragma once

// A Listbox on screen: drawn by PaintListbox with the widget's palette and
// focus, the selected row set by clicks and the arrow keys, and a current
// cell for assistive technology.

#include "platform/listboxpaint.h"

#include <QFrame>

namespace varnock {

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
