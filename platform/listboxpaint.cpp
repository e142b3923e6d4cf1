#include "platform/listboxpaint.h"

#include "platform/graphics.h"

#include <QImage>
#include <QLinearGradient>
#include <QPainter>

#include <map>
#include <tuple>

namespace varnock {

namespace {

// Where the list starts a cell's text of its own accord.
constexpr int kTextInset = 4;
// A heading's text keeps this far from its section's edges.
constexpr int kHeadingMargin = 2;
// The key of the heading sections' shared picture.
constexpr std::uint64_t kHeadingPicture = 0x4845414400000000;

QRect Contents(QSize size) {
    return QRect(QPoint(0, 0), size)
        .adjusted(kListboxFrameWidth, kListboxFrameWidth, -kListboxFrameWidth, -kListboxFrameWidth);
}

// `a` weighted `percent` against `b`, each channel rounded down.
QColor Blend(const QColor &a, const QColor &b, int percent) {
    const auto mix = [percent](int x, int y) {
        return x * percent / 100 + y * (100 - percent) / 100;
    };
    return QColor(mix(a.red(), b.red()), mix(a.green(), b.green()), mix(a.blue(), b.blue()));
}

// One raised header section at the origin, `size` large: a soft vertical
// gradient on the button colour (lifted where it is dark, and a quarter
// less saturated), a faint light line along the top, the window's outline
// along the bottom and a groove at the right edge where the next section
// begins. This is the desktop's usual flat header look, drawn by the list
// itself so that it needs no widget style and looks alike on every desktop.
void PaintHeaderSection(QPainter &p, QSize size, const QPalette &palette) {
    QColor button = palette.button().color();
    button = button.lighter(100 + std::max(1, (180 - qGray(button.rgb())) / 6));
    button.setHsv(button.hue(), static_cast<int>(button.saturation() * 0.75), button.value());
    const QColor top = button.lighter(104), bottom = button.darker(102);
    const QRect r(QPoint(0, 0), size);
    QLinearGradient gradient(r.topLeft(), r.bottomLeft());
    gradient.setColorAt(0, top);
    gradient.setColorAt(0.5, Blend(top, bottom, 60));
    gradient.setColorAt(0.501, Blend(top, bottom, 40));
    gradient.setColorAt(0.92, bottom);
    gradient.setColorAt(1, bottom.darker(104));
    p.fillRect(r, gradient);
    const QColor light(255, 255, 255, 30);
    p.setBrush(Qt::NoBrush);
    p.setPen(light);
    p.drawLine(r.topLeft(), r.topRight());
    p.setPen(palette.window().color().darker(140));
    p.drawLine(r.bottomLeft(), r.bottomRight());
    p.setPen(QColor(0, 0, 0, 40));
    p.drawLine(r.topRight(), r.bottomRight() - QPoint(0, 1));
    p.setPen(light);
    p.drawLine(r.topRight() - QPoint(1, 0), r.bottomRight() - QPoint(1, 1));
}

// The section as an image at the screen's pixel ratio, made once per size
// and colours: the window repaints its headings on every change, and every
// painter (a scaled export too) draws the same pixels.
const QImage &HeaderSectionImage(QSize size, qreal ratio, const QPalette &palette) {
    using Key = std::tuple<int, int, qreal, QRgb, QRgb>;
    static std::map<Key, QImage> made;
    const Key key{size.width(), size.height(), ratio, palette.button().color().rgba(),
                  palette.window().color().rgba()};
    auto found = made.find(key);
    if (found == made.end()) {
        QImage image(size * ratio, QImage::Format_ARGB32_Premultiplied);
        image.setDevicePixelRatio(ratio);
        image.fill(Qt::transparent);
        QPainter onImage(&image);
        PaintHeaderSection(onImage, size, palette);
        onImage.end();
        found = made.emplace(key, std::move(image)).first;
    }
    return found->second;
}

// A plain box whose sides are whole device pixels at any pixel ratio: on a
// device of ratio 2 they are two nested one-pixel rectangles. The painter's
// state is put back by hand where it need not be saved, so that vector
// output gets no needless groups.
void PaintFrame(QPainter &p, QSize size, const QPalette &palette) {
    const qreal ratio = p.device() ? p.device()->devicePixelRatio() : 1.0;
    const bool scaled = !qFuzzyCompare(ratio, qreal(1));
    int w = size.width(), h = size.height(), line = kListboxFrameWidth;
    if (scaled) {
        p.save();
        p.scale(1 / ratio, 1 / ratio);
        w = static_cast<int>(w * ratio);
        h = static_cast<int>(h * ratio);
        line = qRound(line * ratio);
    }
    const QPen pen = p.pen();
    const QBrush brush = p.brush();
    p.setPen(palette.windowText().color());
    p.setBrush(Qt::NoBrush);
    for (int i = 0; i < line; ++i)
        p.drawRect(i, i, w - 2 * i - 1, h - 2 * i - 1);
    p.setPen(pen);
    p.setBrush(brush);
    if (scaled)
        p.restore();
}

void PaintHeading(QPainter &p, const Listbox &list, QSize size, const ListboxLook &look) {
    const qreal ratio = qGuiApp ? qGuiApp->devicePixelRatio() : 1.0;
    for (Int column = 0; column < list.ColumnCount(); ++column) {
        QRect r = ListboxCellPlace(list, size, 0, column, look);
        r.moveTop(Contents(size).top());
        r.setHeight(kListboxHeadingHeight);
        const QString text = QString::fromStdString(list.Heading(column));
        // The painter's state changes in the order a style's header makes
        // them, so that vector output is written the same way.
        const bool pdf = DrawsPdf(p);
        const QRegion clip = pdf ? QRegion() : p.clipRegion();
        if (pdf) {
            // In a PDF the section's clipping would be written out for every
            // section of every chart: its look goes in once as a picture,
            // its label as text.
            DrawSharedPicture(p, r.topLeft(), r.size(), kHeadingPicture, [&](QPainter &onPicture) {
                onPicture.drawImage(0, 0, HeaderSectionImage(r.size(), ratio, look.palette));
            });
        } else {
            p.setClipRect(r);
            p.save();
            p.drawImage(r.topLeft(), HeaderSectionImage(r.size(), ratio, look.palette));
            p.restore();
            r.adjust(kHeadingMargin, kHeadingMargin, -kHeadingMargin, -kHeadingMargin);
        }
        const QPen pen = p.pen();
        p.setPen(QPen(look.palette.buttonText(), pen.widthF()));
        p.drawText(r, Qt::AlignLeft | Qt::AlignVCenter, text);
        p.setPen(pen);
        if (!pdf)
            p.setClipRegion(clip);
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
    const QPalette &palette = look.palette;
    p.save();
    p.setFont(look.font);
    // What a painter opened on a widget starts with, for the paint events.
    p.setPen(palette.color(QPalette::WindowText));
    p.setBrush(palette.brush(QPalette::Window));
    PaintFrame(p, size, palette);
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
        // The ring is an outline: a brush here would cover the whole list.
        p.setClipping(false);
        p.setPen(QPen(palette.highlight().color(), 1));
        p.setBrush(Qt::NoBrush);
        p.drawRect(QRect(QPoint(0, 0), size).adjusted(0, 0, -1, -1));
    }
    p.restore();
}

} // namespace varnock
