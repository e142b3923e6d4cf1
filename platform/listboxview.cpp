#include "platform/listboxview.h"

#include "platform/graphics.h"
#include "platform/listboxaccessible.h"

#include <QAccessible>
#include <QApplication>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QStyleOptionFrame>
#include <QStyleOptionHeader>
#include <QTimer>

#include <algorithm>

namespace varnock {

namespace {

// Where the list starts a cell's text of its own accord.
constexpr int kTextInset = 4;
constexpr int kFrameWidth = 1;
// The key of the heading sections' shared picture.
constexpr std::uint64_t kHeadingPicture = 0x4845414400000000;

const QStyle *StyleOf(const ListboxLook &look) {
    return look.widget ? look.widget->style() : QApplication::style();
}

QPalette PaletteOf(const ListboxLook &look) {
    return look.widget ? look.widget->palette() : QApplication::palette();
}

// What QStyleOption::initFrom gives for the list's widget, or for an enabled
// list that is not on screen.
void InitOption(QStyleOption &option, const ListboxLook &look, QSize size) {
    if (look.widget) {
        option.initFrom(look.widget);
    } else {
        option.state = QStyle::State_Enabled;
        option.direction = QGuiApplication::layoutDirection();
        option.palette = QApplication::palette();
        option.fontMetrics = QFontMetrics(look.font);
    }
    option.rect = QRect(QPoint(0, 0), size);
}

QRect Contents(QSize size) {
    return QRect(QPoint(0, 0), size).adjusted(kFrameWidth, kFrameWidth, -kFrameWidth, -kFrameWidth);
}

void PaintFrame(QPainter &p, QSize size, const ListboxLook &look) {
    QStyleOptionFrame frame;
    InitOption(frame, look, size);
    frame.frameShape = QFrame::Box;
    frame.lineWidth = kFrameWidth;
    frame.midLineWidth = 0;
    StyleOf(look)->drawControl(QStyle::CE_ShapedFrame, &frame, &p, look.widget);
}

void PaintHeading(QPainter &p, const Listbox &list, QSize size, const ListboxLook &look) {
    for (Int column = 0; column < list.ColumnCount(); ++column) {
        QRect r = ListboxCellPlace(list, size, 0, column, look);
        r.moveTop(Contents(size).top());
        r.setHeight(kListboxHeadingHeight);
        QStyleOptionHeader opt;
        InitOption(opt, look, size);
        opt.rect = r;
        opt.section = static_cast<int>(column);
        opt.text = QString::fromStdString(list.Heading(column));
        opt.textAlignment = Qt::AlignLeft | Qt::AlignVCenter;
        opt.position = QStyleOptionHeader::Middle;
        opt.state |= QStyle::State_Raised;
        const QStyle *style = StyleOf(look);
        if (!DrawsPdf(p)) {
            style->drawControl(QStyle::CE_Header, &opt, &p, look.widget);
            continue;
        }
        // In a PDF the section's clipping would be written out for every
        // section of every chart: its look goes in once as a picture, its
        // label as text.
        DrawSharedPicture(p, r.topLeft(), r.size(), kHeadingPicture, [&](QPainter &onPicture) {
            QStyleOptionHeader section = opt;
            section.rect = QRect(QPoint(0, 0), r.size());
            style->drawControl(QStyle::CE_HeaderSection, &section, &onPicture, look.widget);
        });
        style->drawControl(QStyle::CE_HeaderLabel, &opt, &p, look.widget);
    }
}

void PaintCell(QPainter &p, const Listbox &list, QSize size, const ListboxLook &look,
               const QPalette &palette, Int row, Int column) {
    const QRect r = ListboxCellPlace(list, size, row, column, look);
    p.setFont(look.font);
    bool backgroundDone = false;
    {
        Graphics g(p, r);
        if (list.CellBackgroundPaint)
            backgroundDone = list.CellBackgroundPaint(list, g, row, column);
    }
    // The list's own background work is the selection highlight, laid over
    // whatever the event painted so that painting stays visible.
    if (!backgroundDone && row == list.ListIndex()) {
        QColor highlight = palette.highlight().color();
        highlight.setAlpha(70);
        p.fillRect(r, highlight);
    }
    if (row >= list.ListCount())
        return;
    const QFontMetrics fm(look.font);
    const Int x = kTextInset;
    const Int y = (r.height() + fm.ascent() - fm.descent()) / 2;
    bool textDone = false;
    {
        Graphics g(p, r);
        if (list.CellTextPaint)
            textDone = list.CellTextPaint(list, g, row, column, x, y);
    }
    if (!textDone) {
        Graphics g(p, r);
        const QColor text = palette.text().color();
        g.ForeColor(RGB(text.red(), text.green(), text.blue()));
        g.DrawString(list.Cell(row, column), static_cast<double>(x), static_cast<double>(y));
    }
}

} // namespace

QRect ListboxCellRect(const Listbox &list, QSize size, Int row, Int column) {
    const QRect inner = Contents(size);
    const Int w = inner.width();
    const Int columns = list.ColumnCount();
    const Int x0 = inner.left() + column * w / columns;
    const Int x1 = inner.left() + (column + 1) * w / columns;
    const Int y0 = inner.top() + kListboxHeadingHeight + row * list.DefaultRowHeight();
    return QRect(static_cast<int>(x0), static_cast<int>(y0), static_cast<int>(x1 - x0),
                 static_cast<int>(list.DefaultRowHeight()));
}

QRect ListboxCellPlace(const Listbox &list, QSize size, Int row, Int column,
                       const ListboxLook &look) {
    QRect r = ListboxCellRect(list, size, row, column);
    if (look.mirrorColumns) {
        // The column boundaries mirror too, so every cell keeps its width.
        const QRect inner = Contents(size);
        r.moveLeft(inner.left() + inner.right() - r.right());
    }
    const std::optional<Int> from = look.reverseRowsFrom;
    if (from && row >= *from && row < list.ListCount())
        r.moveTop(ListboxCellRect(list, size, *from + list.LastIndex() - row, column).top());
    return r;
}

void PaintListbox(QPainter &p, const Listbox &list, QSize size, const ListboxLook &look) {
    const QPalette palette = PaletteOf(look);
    p.save();
    // What a painter opened on a widget starts with.
    p.setFont(look.font);
    p.setPen(palette.color(QPalette::WindowText));
    p.setBrush(palette.brush(QPalette::Window));
    PaintFrame(p, size, look);
    const QRect inner = Contents(size);
    p.setClipRect(inner);
    p.fillRect(inner, palette.base());
    PaintHeading(p, list, size, look);
    const Int rowHeight = list.DefaultRowHeight();
    const Int visibleRows = (inner.height() - kListboxHeadingHeight + rowHeight - 1) / rowHeight;
    for (Int row = 0; row < visibleRows; ++row)
        for (Int column = 0; column < list.ColumnCount(); ++column)
            PaintCell(p, list, size, look, palette, row, column);
    if (look.focused) {
        // The ring is an outline: the brush is still the window's background,
        // which would cover the whole list.
        p.setClipping(false);
        p.setPen(QPen(palette.highlight().color(), 1));
        p.setBrush(Qt::NoBrush);
        p.drawRect(QRect(QPoint(0, 0), size).adjusted(0, 0, -1, -1));
    }
    p.restore();
}

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
    setLineWidth(kFrameWidth);
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
    PaintListbox(p, list_, size(), ListboxLook{font(), this, hasFocus()});
}

void ListboxView::mousePressEvent(QMouseEvent *event) {
    const QPoint at = event->position().toPoint();
    const Int y = at.y() - kFrameWidth - kListboxHeadingHeight;
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
