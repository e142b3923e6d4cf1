#include "window/listboxview.h"

#include "window/listboxaccessible.h"

#include <QAccessible>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QTimer>

#include <algorithm>

namespace varnock {

ListboxView::ListboxView(Listbox &list, QWidget *parent) : QFrame(parent), list_(list) {
    InstallListboxAccessibility();
    // An assistive client that asked about the widget while it was still
    // being built got a plain widget's interface; drop it, so the next
    // question gets the table.
    if (QAccessible::isActive())
        if (QAccessibleInterface *early = QAccessible::queryAccessibleInterface(this);
            early && !early->tableInterface())
            QAccessible::deleteAccessibleInterface(QAccessible::uniqueId(early));
    setFrameStyle(QFrame::Box | QFrame::Plain);
    setLineWidth(kListboxFrameWidth);
    setFocusPolicy(Qt::StrongFocus);
    setAutoFillBackground(false);
    list_.Observer = [this] { ListChanged(); };
}

ListboxView::~ListboxView() {
    list_.Observer = nullptr;
}

void ListboxView::ListChanged() {
    update();
    if (currentRow_ > list_.LastIndex())
        currentRow_ = list_.LastIndex();
    if (currentRow_ < 0)
        currentColumn_ = -1;
    // A recompute changes many cells one by one: assistive technology hears
    // of it once, when it is over.
    if (QAccessible::isActive() && !contentNewsDue_) {
        contentNewsDue_ = true;
        QTimer::singleShot(0, this, [this] {
            contentNewsDue_ = false;
            AnnounceListboxContent(*this);
        });
    }
}

void ListboxView::MoveCurrent(Int row, Int column, bool selection) {
    if (row < 0 || row > list_.LastIndex() || column < 0 || column >= list_.ColumnCount())
        return;
    if (row == currentRow_ && column == currentColumn_ && !selection)
        return;
    currentRow_ = row;
    currentColumn_ = column;
    AnnounceListboxCell(*this, selection);
}

void ListboxView::paintEvent(QPaintEvent *) {
    QPainter p(this);
    PaintListbox(p, list_, size(), ListboxLook{font(), palette(), hasFocus()});
}

void ListboxView::mousePressEvent(QMouseEvent *event) {
    const QPoint at = event->position().toPoint();
    const Int y = at.y() - kListboxFrameWidth - kListboxHeadingHeight;
    if (y >= 0) {
        const Int row = y / list_.DefaultRowHeight();
        list_.SetListIndex(row);
        for (Int column = 0; column < list_.ColumnCount(); ++column)
            if (ListboxCellRect(list_, size(), row, column).contains(at))
                MoveCurrent(row, column, true);
    }
    QFrame::mousePressEvent(event);
}

void ListboxView::keyPressEvent(QKeyEvent *event) {
    const Int selected = list_.ListIndex();
    const Int column = std::max<Int>(currentColumn_, 0);
    // Up and Down move the selected row, and the current cell with it.
    if (event->key() == Qt::Key_Up && list_.ListCount() > 0) {
        list_.SetListIndex(selected <= 0 ? 0 : selected - 1);
        MoveCurrent(list_.ListIndex(), column, true);
        return;
    }
    if (event->key() == Qt::Key_Down && list_.ListCount() > 0) {
        list_.SetListIndex(std::min(selected + 1, list_.LastIndex()));
        MoveCurrent(list_.ListIndex(), column, true);
        return;
    }
    // Left and Right move the current cell alone; the first one lands on the
    // selected row's (or the first row's) first cell.
    const bool left = event->key() == Qt::Key_Left, right = event->key() == Qt::Key_Right;
    if ((left || right) && list_.ListCount() > 0) {
        if (currentRow_ < 0)
            MoveCurrent(std::max<Int>(selected, 0), 0, false);
        else
            MoveCurrent(
                currentRow_,
                std::clamp<Int>(currentColumn_ + (right ? 1 : -1), 0, list_.ColumnCount() - 1),
                false);
        return;
    }
    QFrame::keyPressEvent(event);
}

} // namespace varnock
