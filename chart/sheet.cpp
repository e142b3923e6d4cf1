#include "chart/sheet.h"

#include "chart/cellpaint.h"
#include "chart/controls.h"
#include "platform/listboxpaint.h"

#include <QFontMetrics>
#include <QGuiApplication>
#include <QPaintEngine>
#include <QPainter>

#include <cairo.h>

#include <algorithm>
#include <map>
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

// A label draws its text as a plain left-aligned label on screen does.
void PaintLabel(QPainter &painter, const char *name) {
    const ControlSpec &c = ControlByName(name);
    painter.save();
    painter.setFont(LabelFont());
    painter.setPen(QGuiApplication::palette().windowText().color());
    painter.drawText(QRect(0, 0, c.width, c.height),
                     Qt::AlignLeft | Qt::AlignVCenter | Qt::TextExpandTabs |
                         Qt::TextForceLeftToRight,
                     QString::fromLatin1(c.items[0]));
    painter.restore();
}

// A list of the window's table filled from the sheet, raising the paint
// events the controller's list raises.
std::unique_ptr<Listbox> MakeList(const char *name, const std::vector<std::string> &headings,
                                  const std::vector<std::vector<std::string>> &rows) {
    const ControlSpec &control = ControlByName(name);
    auto list = std::make_unique<Listbox>(control.columns, control.rowHeight);
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
    QFont font = QGuiApplication::font();
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

namespace {

// A scale's cell, in either table, in the colour of its note's place in the scale.
// The page's title band above the sheet and the names' column beside it.
constexpr int kTitleHeight = 28;
constexpr int kNamesWidth = 34;

// Extra notes table rows below the window's one.
int NotesExtra(const ChartSheet &sheet) {
    return static_cast<int>(std::max<std::size_t>(sheet.notesRows.size(), 1) - 1) *
           ControlByName("Listbox2").rowHeight;
}

// The chart's font on paper: the list's, or where some cell's text would not
// fit its cell (a note with its degree), the largest narrower face that fits.
// SVG keeps a font's family, size and weight but not its width, so there the
// narrower face goes by its own family name, and by smaller sizes after it.
QFont PageChartFont(const ChartSheet &sheet, bool widthByName = false) {
    const auto chart = MakeList("Listbox1", sheet.headings, sheet.rows);
    const auto fits = [&](const QFont &font) {
        const QFontMetrics metrics(font);
        for (Int r = 1; r < chart->ListCount(); ++r)
            for (Int c = 0; c < chart->ColumnCount(); ++c) {
                const int room =
                    ListboxCellRect(*chart, Place("Listbox1").size(), r, c).width() - 3;
                if (metrics.horizontalAdvance(QString::fromStdString(chart->Cell(r, c))) > room)
                    return false;
            }
        return true;
    };
    QFont font = ListFont();
    if (widthByName) {
        for (const int pixels : {12, 11, 10, 9, 8}) {
            font.setPixelSize(pixels);
            if (fits(font))
                break;
            font.setFamily(QStringLiteral("DejaVu Sans Condensed"));
        }
        return font;
    }
    for (const auto &[stretch, pixels] : {std::pair{100, 12},
                                          {QFont::Condensed, 11},
                                          {QFont::ExtraCondensed, 11},
                                          {QFont::ExtraCondensed, 10}}) {
        font.setStretch(stretch);
        font.setPixelSize(pixels);
        if (fits(font))
            break;
    }
    return font;
}

// The window's two lists filled from the sheet, with the paint events that
// colour them: tiles by the fill rules, each note in its colour (a scale's
// notes by their place in the scale).
struct SheetLists {
    std::unique_ptr<Listbox> chart, notes;
};

SheetLists MakeSheetLists(const ChartSheet &sheet, Palette palette) {
    SheetLists lists{MakeList("Listbox1", sheet.ShownHeadings(), sheet.rows),
                     MakeList("Listbox2", sheet.notesHeadings, sheet.notesRows)};
    lists.chart->CellBackgroundPaint = [palette](const Listbox &l, Graphics &g, Int row,
                                                 Int column) {
        PaintTile(g, InPalette(ChartFillRule(row, column, l.ListCount()), palette));
        return false;
    };
    // Every note is coloured by what its cell means: which tone of the chord
    // or scale it is. A blank cell and the label row are painted as the
    // window paints them.
    const bool scale = !sheet.extraNotes.empty();
    lists.chart->CellTextPaint = [&sheet, scale, palette](const Listbox &l, Graphics &g, Int row,
                                                          Int column, Int x, Int y) {
        const std::string text = l.Cell(row, column);
        if (row == 0 || text.empty())
            return !scale && PaintChartText(g, text, sheet.notes, x, y, palette);
        const ChartCell &cell =
            sheet.cells.at(static_cast<std::size_t>(row - 1)).at(static_cast<std::size_t>(column));
        return PaintToneText(g, text, cell.tone, x, y, scale ? Palette::Window : palette);
    };
    lists.notes->CellBackgroundPaint = [](const Listbox &l, Graphics &g, Int row, Int) {
        PaintTile(g, NotesFillRule(row, l.ListCount()));
        return false;
    };
    // A scale's notes stand four to a row in its order, a chord's by slot.
    lists.notes->CellTextPaint = [scale, palette](const Listbox &l, Graphics &g, Int row,
                                                  Int column, Int x, Int y) {
        const std::string text = l.Cell(row, column);
        if (scale)
            return !text.empty() &&
                   PaintToneText(g, text, row * l.ColumnCount() + column, x, y, Palette::Window);
        return PaintNotesText(g, text, column, x, y, palette);
    };
    return lists;
}

// The lists and the label at the origin, the notes table grown by `notesExtra`.
void PaintLists(QPainter &painter, const ChartSheet &sheet, ChartOrientation orientation,
                int notesExtra, const QFont &chartFont = ListFont(),
                Palette palette = Palette::Window) {
    const auto [chart, notes] = MakeSheetLists(sheet, palette);
    const QPoint origin = SheetRect().topLeft();
    painter.save();
    painter.translate(Place("Label4").topLeft() - origin);
    PaintLabel(painter, "Label4");
    painter.restore();
    for (const char *name : {"Listbox1", "Listbox2"}) {
        painter.save();
        painter.translate(Place(name).topLeft() - origin);
        const bool isChart = std::string_view(name) == "Listbox1";
        const QSize size = Place(name).size() + QSize(0, isChart ? 0 : notesExtra);
        ListboxLook chartLook = ChartLook(orientation);
        chartLook.font = chartFont;
        PaintListbox(painter, isChart ? *chart : *notes, size,
                     isChart ? chartLook : ListboxLook{ListFont()});
        painter.restore();
    }
}

// Where the window's sheet stands on the page.
QPoint SheetOrigin(ChartOrientation orientation) {
    return QPoint(orientation.leftHanded ? 0 : kNamesWidth, kTitleHeight);
}

} // namespace

void PaintSheet(QPainter &painter, const ChartSheet &sheet, ChartOrientation orientation) {
    painter.fillRect(QRect(QPoint(0, 0), SheetSize()), Qt::white);
    PaintLists(painter, sheet, orientation, 0);
}

QSize ChartPageSize(const ChartSheet &sheet) {
    return SheetSize() + QSize(kNamesWidth, kTitleHeight + NotesExtra(sheet));
}

QRect ChartPageRow(const ChartSheet &sheet, Int row, ChartOrientation orientation) {
    const auto chart = MakeList("Listbox1", sheet.headings, sheet.rows);
    const QRect first =
        ListboxCellPlace(*chart, Place("Listbox1").size(), row, 0, ChartLook(orientation));
    const QRect whole(first.left(), first.top(), 0, first.height());
    QRect r = whole;
    for (Int c = 0; c < chart->ColumnCount(); ++c)
        r = r.united(
            ListboxCellPlace(*chart, Place("Listbox1").size(), row, c, ChartLook(orientation)));
    return r.translated(SheetOrigin(orientation) + Place("Listbox1").topLeft() -
                        SheetRect().topLeft());
}

QRect ChartPageName(const ChartSheet &sheet, Int row, ChartOrientation orientation) {
    const QRect r = ChartPageRow(sheet, row, orientation);
    const int left = orientation.leftHanded ? SheetSize().width() : 0;
    return QRect(left, r.top(), kNamesWidth, r.height());
}

void PaintChartPage(QPainter &painter, const ChartSheet &sheet, const std::string &title,
                    ChartOrientation orientation, Palette palette) {
    painter.fillRect(QRect(QPoint(0, 0), ChartPageSize(sheet)), Qt::white);
    PainterCanvas canvas(painter);
    PaintChartPage(canvas, sheet, title, orientation, palette);
}

QImage RenderChartPage(const ChartSheet &sheet, const std::string &title, int scale,
                       ChartOrientation orientation, Palette palette) {
    QImage image(ChartPageSize(sheet) * scale, QImage::Format_RGB32);
    image.setDevicePixelRatio(scale);
    image.fill(Qt::white);
    QPainter painter(&image);
    PaintChartPage(painter, sheet, title, orientation, palette);
    painter.end();
    image.setDevicePixelRatio(1);
    return image;
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

int ChartPageTextPixels(const ChartSheet &sheet) {
    return PageChartFont(sheet).pixelSize();
}

namespace {

void SetColor(cairo_t *cairo, Color c) {
    cairo_set_source_rgb(cairo, ((c >> 16) & 255) / 255.0, ((c >> 8) & 255) / 255.0,
                         (c & 255) / 255.0);
}

// Text whose baseline centres its line in `r`, from the left or centred.
void Text(cairo_t *cairo, const std::string &text, const QRect &r, bool centred = false) {
    cairo_font_extents_t font;
    cairo_font_extents(cairo, &font);
    cairo_text_extents_t ink;
    cairo_text_extents(cairo, text.c_str(), &ink);
    const double x = centred ? r.left() + (r.width() - ink.x_advance) / 2 : r.left();
    cairo_move_to(cairo, x, r.top() + (r.height() + font.ascent - font.descent) / 2);
    cairo_show_text(cairo, text.c_str());
}

// What of a list is the same in every chart of a book (frame, heading line,
// cell tiles) drawn plainly where PaintListbox places it.
void PaintListBackdrop(cairo_t *cairo, const Listbox &list, QSize size, const ListboxLook &look) {
    SetColor(cairo, 0xFFFFFF);
    cairo_rectangle(cairo, 0, 0, size.width(), size.height());
    cairo_fill(cairo);
    SetCairoFont(cairo, look.font);
    for (Int c = 0; c < list.ColumnCount(); ++c) {
        QRect r = ListboxCellPlace(list, size, 0, c, look);
        r.moveTop(1);
        r.setHeight(kListboxHeadingHeight);
        Graphics g(cairo, r);
        g.ForeColor(0xF2F2F2);
        g.FillRect(0, 0, r.width(), r.height());
        g.ForeColor(colors::kFrameDark);
        g.DrawLine(0, r.height() - 1, r.width(), r.height() - 1);
        g.DrawLine(r.width() - 1, 0, r.width() - 1, r.height());
        SetColor(cairo, 0);
        Text(cairo, list.Heading(c), r.adjusted(4, 0, 0, 0));
    }
    const Int rowHeight = list.DefaultRowHeight();
    const Int rows = (size.height() - 2 - kListboxHeadingHeight + rowHeight - 1) / rowHeight;
    cairo_save(cairo);
    cairo_rectangle(cairo, 1, 1, size.width() - 2, size.height() - 2);
    cairo_clip(cairo);
    for (Int row = 0; row < rows; ++row)
        for (Int c = 0; c < list.ColumnCount(); ++c) {
            Graphics g(cairo, ListboxCellPlace(list, size, row, c, look));
            if (list.CellBackgroundPaint)
                list.CellBackgroundPaint(list, g, row, c);
        }
    cairo_restore(cairo);
    SetColor(cairo, colors::kFrameDark);
    cairo_set_line_width(cairo, 1);
    cairo_rectangle(cairo, 0.5, 0.5, size.width() - 1, size.height() - 1);
    cairo_stroke(cairo);
}

// A list on cairo: its backdrop, recorded once for all lists alike and then
// only referred to (a PDF keeps one copy for each list on a page), and each
// cell's text on top.
void PaintListOnCairo(cairo_t *cairo, const Listbox &list, QSize size, const ListboxLook &look,
                      Palette palette) {
    std::string key = look.font.toString().toStdString();
    for (const Int part :
         {static_cast<Int>(palette), static_cast<Int>(size.width()),
          static_cast<Int>(size.height()), list.ListCount(), static_cast<Int>(look.mirrorColumns),
          look.reverseRowsFrom.value_or(-1)}) {
        key += ' ';
        key += std::to_string(part);
    }
    for (Int c = 0; c < list.ColumnCount(); ++c) {
        key += '|';
        key += list.Heading(c);
    }
    cairo_surface_t *backdrop = SharedSurface(cairo, key, [&] {
        const cairo_rectangle_t extents{0, 0, static_cast<double>(size.width()),
                                        static_cast<double>(size.height())};
        cairo_surface_t *made = cairo_recording_surface_create(CAIRO_CONTENT_COLOR, &extents);
        cairo_t *onBackdrop = cairo_create(made);
        PaintListBackdrop(onBackdrop, list, size, look);
        cairo_destroy(onBackdrop);
        return made;
    });
    cairo_save(cairo);
    cairo_set_source_surface(cairo, backdrop, 0, 0);
    cairo_paint(cairo);
    cairo_restore(cairo);

    SetCairoFont(cairo, look.font);
    cairo_font_extents_t font;
    cairo_font_extents(cairo, &font);
    for (Int row = 0; row < list.ListCount(); ++row)
        for (Int c = 0; c < list.ColumnCount(); ++c) {
            // Most cells of a chart are empty, and each drawing costs.
            if (list.Cell(row, c).empty())
                continue;
            const QRect r = ListboxCellPlace(list, size, row, c, look);
            const Int y = static_cast<Int>((r.height() + font.ascent - font.descent) / 2);
            Graphics g(cairo, r);
            if (!list.CellTextPaint || !list.CellTextPaint(list, g, row, c, 4, y)) {
                g.ForeColor(0);
                g.DrawString(list.Cell(row, c), 4, static_cast<double>(y));
            }
        }
}

} // namespace

void PaintChartPage(cairo_t *cairo, const ChartSheet &sheet, const std::string &title,
                    ChartOrientation orientation, Palette palette) {
    CairoCanvas canvas(cairo);
    PaintChartPage(canvas, sheet, title, orientation, palette);
}

void PaintChartPage(Canvas &canvas, const ChartSheet &sheet, const std::string &title,
                    ChartOrientation orientation, Palette palette) {
    canvas.Save();
    QFont titleFont = ListFont();
    titleFont.setPixelSize(15);
    canvas.SetFont(titleFont);
    canvas.SetColor(0);
    canvas.Text(QRect(4, 0, ChartPageSize(sheet).width() - 8, kTitleHeight - 4),
                Qt::AlignLeft | Qt::AlignVCenter, title);
    canvas.SetFont(ListFont());
    for (std::size_t s = 0; s < sheet.stringNames.size(); ++s) {
        const QRect r = ChartPageName(sheet, static_cast<Int>(s) + 1, orientation);
        canvas.FillRect(r.adjusted(2, 0, -2, 0), colors::kOpenString);
        canvas.Text(r, Qt::AlignCenter, sheet.stringNames[s]);
    }
    const QPoint at = SheetOrigin(orientation);
    canvas.Translate(at.x(), at.y());
    const auto [chart, notes] = MakeSheetLists(sheet, palette);
    const QPoint origin = SheetRect().topLeft();
    const ControlSpec &label = ControlByName("Label4");
    canvas.SetFont(LabelFont());
    canvas.Text(QRect(Place("Label4").topLeft() - origin, QSize(label.width, label.height)),
                Qt::AlignLeft | Qt::AlignVCenter, label.items[0]);
    // The chart's text as the page's text face; SVG viewers measure it their own way.
    QPainter *painter = canvas.Painter();
    const bool svg =
        painter && painter->paintEngine() && painter->paintEngine()->type() == QPaintEngine::SVG;
    for (const char *name : {"Listbox1", "Listbox2"}) {
        const bool isChart = std::string_view(name) == "Listbox1";
        const QPoint place = Place(name).topLeft() - origin;
        const QSize size = Place(name).size() + QSize(0, isChart ? 0 : NotesExtra(sheet));
        ListboxLook look = isChart ? ChartLook(orientation) : ListboxLook{ListFont()};
        if (isChart)
            look.font = PageChartFont(sheet, svg);
        canvas.Save();
        canvas.Translate(place.x(), place.y());
        // The lists have a look of their own on each back end: the window's
        // on images, a plain one recorded once for all the book's pages.
        if (painter)
            PaintListbox(*painter, isChart ? *chart : *notes, size, look);
        else
            PaintListOnCairo(canvas.Cairo(), isChart ? *chart : *notes, size, look, palette);
        canvas.Restore();
    }
    canvas.Restore();
}

} // namespace varnock
