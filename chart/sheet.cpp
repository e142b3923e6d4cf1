#include "chart/sheet.h"

#include "chart/cellpaint.h"
#include "chart/controls.h"
#include "platform/listboxview.h"

#include <QApplication>
#include <QPainter>
#include <QStyle>

#include <memory>
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

// A list of the window's table filled from the sheet, raising the paint
// events the controller's list raises.
std::unique_ptr<Listbox> MakeList(const char *name, const std::vector<std::string> &headings,
                                  const std::vector<std::vector<std::string>> &rows) {
    const ControlSpec &spec = ControlByName(name);
    auto list = std::make_unique<Listbox>(spec.columns, spec.rowHeight);
    for (std::size_t c = 0; c < headings.size(); ++c)
        list->SetHeading(static_cast<Int>(c), headings[c]);
    for (const auto &row : rows) {
        list->AddRow(row.empty() ? std::string() : row[0]);
        for (std::size_t c = 1; c < row.size(); ++c)
            list->SetCell(list->LastIndex(), static_cast<Int>(c), row[c]);
    }
    return list;
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

void PaintSheet(QPainter &painter, const ChartSheet &sheet, ChartOrientation orientation) {
    const auto chart = MakeList("Listbox1", sheet.headings, sheet.rows);
    chart->CellBackgroundPaint = [](const Listbox &l, Graphics &g, Int row, Int column) {
        PaintTile(g, ChartFillRule(row, column, l.ListCount()));
        return false;
    };
    chart->CellTextPaint = [&sheet](const Listbox &l, Graphics &g, Int row, Int column, Int x,
                                    Int y) {
        return PaintChartText(g, l.Cell(row, column), sheet.notes, x, y);
    };
    const auto notes = MakeList("Listbox2", sheet.notesHeadings, sheet.notesRows);
    notes->CellBackgroundPaint = [](const Listbox &l, Graphics &g, Int row, Int) {
        PaintTile(g, NotesFillRule(row, l.ListCount()));
        return false;
    };
    notes->CellTextPaint = [](const Listbox &l, Graphics &g, Int row, Int column, Int x, Int y) {
        return PaintNotesText(g, l.Cell(row, column), column, x, y);
    };
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
        PaintListbox(painter, isChart ? *chart : *notes, Place(name).size(),
                     isChart ? ChartLook(orientation) : ListboxLook{ListFont()});
        painter.restore();
    }
}

QImage RenderSheet(const ChartSheet &sheet, int scale, ChartOrientation orientation) {
    QImage image(SheetSize() * scale, QImage::Format_RGB32);
    image.setDevicePixelRatio(scale);
    image.fill(Qt::white);
    QPainter painter(&image);
    PaintSheet(painter, sheet, orientation);
    painter.end();
    image.setDevicePixelRatio(1);
    return image;
}

} // namespace varnock
