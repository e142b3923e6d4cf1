#include "chart/sheet.h"

#include "chart/controller.h"
#include "chart/controls.h"
#include "platform/listboxview.h"

#include <QApplication>
#include <QPainter>
#include <QStyle>

#include <string_view>

namespace varnock {

namespace {

QRect Place(const char *name) {
    const ControlSpec &c = ControlByName(name);
    return QRect(c.left, c.top, c.width, c.height);
}

QRect SheetRect() {
    return Place("Listbox1").united(Place("Listbox2")).united(Place("Label4"));
}

// A label draws its text as the style does for a plain left-aligned label.
void PaintLabel(QPainter &painter, const char *name) {
    const ControlSpec &c = ControlByName(name);
    painter.save();
    painter.setFont(LabelFont());
    QApplication::style()->drawItemText(
        &painter, QRect(0, 0, c.width, c.height),
        Qt::AlignLeft | Qt::AlignVCenter | Qt::TextExpandTabs | Qt::TextForceLeftToRight,
        QApplication::palette(), true, QString::fromLatin1(c.items[0]), QPalette::WindowText);
    painter.restore();
}

} // namespace

QFont ListFont() {
    QFont font = QApplication::font();
    font.setBold(true);
    font.setPixelSize(12);
    return font;
}

QFont LabelFont() {
    // The lists' size, in the face's semi-condensed width: "Strings:" is
    // 53 pixels wide at full width, and its label has 49.
    QFont font = ListFont();
    font.setStretch(QFont::SemiCondensed);
    return font;
}

QSize SheetSize() {
    return SheetRect().size();
}

ListboxLook ChartLook(ChartOrientation orientation) {
    ListboxLook look{ListFont()};
    look.mirrorColumns = orientation.leftHanded;
    // Row 0 is the label row, which stays on top.
    if (orientation.flipped)
        look.reverseRowsFrom = 1;
    return look;
}

void PaintSheet(QPainter &painter, ChartController &chart, ChartOrientation orientation) {
    const QPoint origin = SheetRect().topLeft();
    painter.fillRect(QRect(QPoint(0, 0), SheetSize()), Qt::white);
    painter.save();
    painter.translate(Place("Label4").topLeft() - origin);
    PaintLabel(painter, "Label4");
    painter.restore();
    for (const char *name : {"Listbox1", "Listbox2"}) {
        painter.save();
        painter.translate(Place(name).topLeft() - origin);
        const bool isChart = std::string_view(name) == "Listbox1";
        PaintListbox(painter, *chart.ListByName(name), Place(name).size(),
                     isChart ? ChartLook(orientation) : ListboxLook{ListFont()});
        painter.restore();
    }
}

QImage RenderSheet(ChartController &chart, int scale, ChartOrientation orientation) {
    QImage image(SheetSize() * scale, QImage::Format_RGB32);
    image.setDevicePixelRatio(scale);
    image.fill(Qt::white);
    QPainter painter(&image);
    PaintSheet(painter, chart, orientation);
    painter.end();
    image.setDevicePixelRatio(1);
    return image;
}

} // namespace varnock
