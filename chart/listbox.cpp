#include "chart/listbox.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QStyleOptionHeader>

namespace varnock {

namespace {
// Where the list starts a cell's text of its own accord.
constexpr int kTextInset = 4;
} // namespace

Listbox::Listbox(Int columnCount, Int defaultRowHeight, QWidget *parent)
    : QFrame(parent), columnCount_(columnCount), rowHeight_(defaultRowHeight),
      headings_(static_cast<std::size_t>(columnCount)),
      sortDirections_(static_cast<std::size_t>(columnCount), 0) {
    setFrameStyle(QFrame::Box | QFrame::Plain);
    setLineWidth(1);
    setFocusPolicy(Qt::StrongFocus);
    setAutoFillBackground(false);
}

void Listbox::AddRow(const std::string &text) {
    std::vector<std::string> row(static_cast<std::size_t>(columnCount_));
    if (columnCount_ > 0)
        row[0] = text;
    rows_.push_back(std::move(row));
    update();
}

void Listbox::DeleteAllRows() {
    rows_.clear();
    selected_ = -1;
    update();
}

std::vector<std::string> &Listbox::Row(Int row) {
    if (row < 0 || row >= ListCount())
        throw OutOfBoundsException("list row " + std::to_string(row));
    return rows_[static_cast<std::size_t>(row)];
}

const std::vector<std::string> &Listbox::Row(Int row) const {
    return const_cast<Listbox *>(this)->Row(row);
}

std::string Listbox::Cell(Int row, Int column) const {
    const auto &cells = Row(row);
    if (column < 0 || column >= columnCount_)
        return {};
    return cells[static_cast<std::size_t>(column)];
}

void Listbox::SetCell(Int row, Int column, const std::string &text) {
    auto &cells = Row(row);
    if (column < 0 || column >= columnCount_)
        return;
    cells[static_cast<std::size_t>(column)] = text;
    update();
}

std::string Listbox::Heading(Int column) const {
    if (column < 0 || column >= columnCount_)
        return {};
    return headings_[static_cast<std::size_t>(column)];
}

void Listbox::SetHeading(Int column, const std::string &text) {
    if (column < 0 || column >= columnCount_)
        return;
    headings_[static_cast<std::size_t>(column)] = text;
    update();
}

Int Listbox::ColumnSortDirection(Int column) const {
    if (column < 0 || column >= columnCount_)
        return 0;
    return sortDirections_[static_cast<std::size_t>(column)];
}

void Listbox::SetColumnSortDirection(Int column, Int direction) {
    if (column < 0 || column >= columnCount_)
        return;
    sortDirections_[static_cast<std::size_t>(column)] = direction;
}

void Listbox::SetListIndex(Int row) {
    selected_ = (row >= 0 && row < ListCount()) ? row : -1;
    update();
}

void Listbox::RaiseOpen() {
    if (Open)
        Open(*this);
}

QRect Listbox::CellRect(Int row, Int column) const {
    // The width is shared equally among the columns.
    const QRect inner = contentsRect();
    const Int w = inner.width();
    const Int x0 = inner.left() + column * w / columnCount_;
    const Int x1 = inner.left() + (column + 1) * w / columnCount_;
    const Int y0 = inner.top() + kHeadingHeight + row * rowHeight_;
    return QRect(static_cast<int>(x0), static_cast<int>(y0), static_cast<int>(x1 - x0),
                 static_cast<int>(rowHeight_));
}

void Listbox::paintEvent(QPaintEvent *) {
    QPainter p(this);
    Paint(p);
}

void Listbox::Paint(QPainter &p) {
    p.save();
    // What a painter opened on the widget itself starts with.
    p.setFont(font());
    p.setPen(palette().color(foregroundRole()));
    p.setBrush(palette().brush(backgroundRole()));
    drawFrame(&p);
    const QRect inner = contentsRect();
    p.setClipRect(inner);
    p.fillRect(inner, palette().base());
    PaintHeading(p);
    const Int visibleRows = (inner.height() - kHeadingHeight + rowHeight_ - 1) / rowHeight_;
    for (Int row = 0; row < visibleRows; ++row)
        for (Int column = 0; column < columnCount_; ++column)
            PaintCell(p, row, column);
    if (hasFocus()) {
        p.setClipping(false);
        p.setPen(QPen(palette().highlight().color(), 1));
        p.drawRect(rect().adjusted(0, 0, -1, -1));
    }
    p.restore();
}

void Listbox::PaintHeading(QPainter &p) {
    for (Int column = 0; column < columnCount_; ++column) {
        QRect r = CellRect(0, column);
        r.moveTop(contentsRect().top());
        r.setHeight(static_cast<int>(kHeadingHeight));
        QStyleOptionHeader opt;
        opt.initFrom(this);
        opt.rect = r;
        opt.section = static_cast<int>(column);
        opt.text = QString::fromStdString(headings_[static_cast<std::size_t>(column)]);
        opt.textAlignment = Qt::AlignLeft | Qt::AlignVCenter;
        opt.position = QStyleOptionHeader::Middle;
        opt.state |= QStyle::State_Raised;
        style()->drawControl(QStyle::CE_Header, &opt, &p, this);
    }
}

void Listbox::PaintCell(QPainter &p, Int row, Int column) {
    const QRect r = CellRect(row, column);
    p.setFont(font());
    bool backgroundDone = false;
    {
        Graphics g(p, r);
        if (CellBackgroundPaint)
            backgroundDone = CellBackgroundPaint(*this, g, row, column);
    }
    // The list's own background work is the selection highlight, laid over
    // whatever the event painted so that painting stays visible.
    if (!backgroundDone && row == selected_) {
        QColor highlight = palette().highlight().color();
        highlight.setAlpha(70);
        p.fillRect(r, highlight);
    }
    if (row >= ListCount())
        return;
    const QFontMetrics fm(font());
    const Int x = kTextInset;
    const Int y = (r.height() + fm.ascent() - fm.descent()) / 2;
    bool textDone = false;
    {
        Graphics g(p, r);
        if (CellTextPaint)
            textDone = CellTextPaint(*this, g, row, column, x, y);
    }
    if (!textDone) {
        Graphics g(p, r);
        const QColor text = palette().text().color();
        g.ForeColor(RGB(text.red(), text.green(), text.blue()));
        g.DrawString(Cell(row, column), static_cast<double>(x), static_cast<double>(y));
    }
}

void Listbox::mousePressEvent(QMouseEvent *event) {
    const Int y = event->position().toPoint().y() - contentsRect().top() - kHeadingHeight;
    if (y >= 0)
        SetListIndex(y / rowHeight_);
    QFrame::mousePressEvent(event);
}

void Listbox::keyPressEvent(QKeyEvent *event) {
    if (event->key() == Qt::Key_Up && ListCount() > 0) {
        SetListIndex(selected_ <= 0 ? 0 : selected_ - 1);
        return;
    }
    if (event->key() == Qt::Key_Down && ListCount() > 0) {
        SetListIndex(std::min(selected_ + 1, LastIndex()));
        return;
    }
    QFrame::keyPressEvent(event);
}

} // namespace varnock
