#include "export/book.h"

#include "chart/sheet.h"
#include "export/chartdoc.h"
#include "export/spelling.h"
#include "export/writers.h"
#include "music/catalogue.h"
#include "platform/basic.h"
#include "platform/canvas.h"
#include "platform/graphics.h"

#include <cairo-pdf.h>
#include <cairo.h>

#include <algorithm>

namespace varnock::output {

using namespace music;

namespace {

constexpr double kMargin = 30; // points
constexpr double kHeader = 34; // the root's name above the charts
constexpr double kFooter = 20; // the page number
constexpr double kGap = 12;    // between charts

cairo_status_t WriteTo(void *closure, const unsigned char *data, unsigned int length) {
    auto *file = static_cast<OutputFile *>(closure);
    return file->write(reinterpret_cast<const char *>(data), length) == length
               ? CAIRO_STATUS_SUCCESS
               : CAIRO_STATUS_WRITE_ERROR;
}

void Font(cairo_t *cairo, double size, bool bold) {
    cairo_select_font_face(cairo, "DejaVu Sans", CAIRO_FONT_SLANT_NORMAL,
                           bold ? CAIRO_FONT_WEIGHT_BOLD : CAIRO_FONT_WEIGHT_NORMAL);
    cairo_set_font_size(cairo, size);
}

void Show(cairo_t *cairo, const std::string &text, double x, double y, bool right = false) {
    cairo_text_extents_t ink;
    cairo_text_extents(cairo, text.c_str(), &ink);
    cairo_move_to(cairo, right ? x - ink.x_advance : x, y);
    cairo_show_text(cairo, text.c_str());
}

// "page=3" for a link or an outline entry, at a point of the page.
std::string Target(int page, double y = 0) {
    return "page=" + std::to_string(page) + " pos=[0 " + std::to_string(static_cast<int>(y)) + "]";
}

} // namespace

BookLayout LayoutBook(const Book &book, Paper paper) {
    BookLayout layout;
    // Landscape: the chart is wide, and on a portrait page its cells would
    // fall below a readable size.
    layout.width = paper == Paper::A4 ? 842 : 792;
    layout.height = paper == Paper::A4 ? 595 : 612;
    QSize sheet(0, 0);
    int textPixels = 12;
    for (const BookPart &part : book.parts)
        for (const BookChart &chart : part.charts) {
            sheet = sheet.expandedTo(ChartPageSize(chart.sheet));
            textPixels = std::min(textPixels, ChartPageTextPixels(chart.sheet));
        }
    if (sheet.isEmpty())
        return layout;
    const double room = layout.height - 2 * kMargin - kHeader - kFooter;
    layout.scale = (layout.width - 2 * kMargin) / sheet.width();
    layout.chartsPerPage =
        std::max(1, static_cast<int>((room + kGap) / (sheet.height() * layout.scale + kGap)));
    // Fewer, larger charts where the width alone would leave them too small.
    layout.scale = std::max(layout.scale, kBookTextPoints / textPixels);
    return layout;
}

Book MakeBook(const Instrument &instrument, const std::vector<int> &roots,
              const std::vector<int> &chords, const BookLook &look) {
    Book book;
    book.orientation = look.orientation;
    book.palette = look.palette;
    book.instrument = InstrumentTitle(ComputeSheet(instrument, 0, 0));
    for (std::size_t at = 0; at < roots.size(); ++at) {
        const int root = roots[at];
        // The `at`th root as typed; "" where none was, so each chart names
        // it as a player would.
        const std::string typed = at < look.rootNames.size() ? look.rootNames[at] : "";
        BookPart part;
        // The menu's text, which names both spellings, unless one was chosen.
        switch (look.spelling) {
        case Spelling::Sharps:
            part.name = catalogue::RootItem(root);
            break;
        case Spelling::Flats:
            part.name = catalogue::FlatName(root);
            break;
        case Spelling::Chord:
        case Spelling::Musician:
            part.name = typed.empty() ? catalogue::RootItem(root) : typed;
            break;
        }
        for (const int chord : chords) {
            ChartSheet sheet = Label(
                WithDegrees(Spell(ComputeSheet(instrument, root, chord), look.spelling, typed)),
                look.labels);
            std::string title = ChordTitle(sheet);
            part.charts.push_back({std::move(title), std::move(sheet)});
        }
        book.parts.push_back(std::move(part));
    }
    return book;
}

int WritePdfBook(const FileName &path, const PdfBook &book) {
    // Where each item stands: the page it is on and its top. A part starts a
    // page; an item that does not fit below the last goes on the next.
    const double bottom = book.height - kMargin - kFooter;
    struct Place {
        int page;
        double top;
    };
    std::vector<std::vector<Place>> places;
    std::vector<int> firstPage;
    int pages = 1;
    for (const PdfPart &part : book.parts) {
        firstPage.push_back(++pages);
        double top = kMargin + kHeader;
        places.emplace_back();
        for (const PdfItem &item : part.items) {
            const double height = item.size.height() * book.scale;
            if (top > kMargin + kHeader && top + height > bottom) {
                ++pages;
                top = kMargin + kHeader;
            }
            places.back().push_back({pages, top});
            top += height + kGap;
        }
    }
    OutputFile file(path);
    OpenForWriting(file);
    cairo_surface_t *surface =
        cairo_pdf_surface_create_for_stream(WriteTo, &file, book.width, book.height);
    cairo_pdf_surface_set_metadata(surface, CAIRO_PDF_METADATA_TITLE,
                                   ("Varnock " + LCase(book.title)).c_str());
    cairo_pdf_surface_set_metadata(surface, CAIRO_PDF_METADATA_CREATOR, "varnock-chart");
    cairo_t *cairo = cairo_create(surface);
    // cairo 1.16 numbers an object for every link and writes it only in a
    // structure tree, which it writes only when the links stand in one: so
    // the whole book is one tagged document.
    cairo_tag_begin(cairo, "Document", "");

    // The contents: each part's name and first page, both a link to it.
    cairo_set_source_rgb(cairo, 0, 0, 0);
    Font(cairo, 22, true);
    Show(cairo, book.title, kMargin, kMargin + 22);
    Font(cairo, 12, false);
    Show(cairo, book.subtitle, kMargin, kMargin + 46);
    const double lineHeight = std::min(22.0, (book.height - 2 * kMargin - 80) /
                                                 std::max<std::size_t>(1, book.parts.size()));
    Font(cairo, std::min(13.0, lineHeight * 0.7), false);
    for (std::size_t i = 0; i < book.parts.size(); ++i) {
        const double y = kMargin + 80 + static_cast<double>(i) * lineHeight;
        // A named destination: cairo 1.16 leaves a link to a later page
        // number without its target.
        cairo_tag_begin(cairo, CAIRO_TAG_LINK, ("dest='part" + std::to_string(i) + "'").c_str());
        Show(cairo, book.parts[i].name, kMargin, y);
        Show(cairo, std::to_string(firstPage[i]), book.width - kMargin, y, true);
        cairo_tag_end(cairo, CAIRO_TAG_LINK);
    }
    ShowPage(cairo);

    CairoCanvas canvas(cairo);
    for (std::size_t i = 0; i < book.parts.size(); ++i) {
        const PdfPart &part = book.parts[i];
        const int root = cairo_pdf_surface_add_outline(
            surface, CAIRO_PDF_OUTLINE_ROOT, part.name.c_str(), Target(firstPage[i]).c_str(),
            cairo_pdf_outline_flags_t{});
        for (int page = firstPage[i], k = 0;
             k == 0 || static_cast<std::size_t>(k) < part.items.size(); ++page) {
            cairo_set_source_rgb(cairo, 0, 0, 0);
            Font(cairo, 16, true);
            if (k == 0)
                cairo_tag_begin(cairo, CAIRO_TAG_DEST,
                                ("name='part" + std::to_string(i) + "'").c_str());
            Show(cairo, k == 0 ? part.name : part.name + " (continued)", kMargin, kMargin + 16);
            if (k == 0)
                cairo_tag_end(cairo, CAIRO_TAG_DEST);
            Font(cairo, 10, false);
            Show(cairo, std::to_string(page), book.width / 2, book.height - kMargin + 10);
            for (; static_cast<std::size_t>(k) < part.items.size() &&
                   places[i][static_cast<std::size_t>(k)].page == page;
                 ++k) {
                const PdfItem &item = part.items[static_cast<std::size_t>(k)];
                const double top = places[i][static_cast<std::size_t>(k)].top;
                cairo_pdf_surface_add_outline(surface, root, item.title.c_str(),
                                              Target(page, top).c_str(),
                                              cairo_pdf_outline_flags_t{});
                canvas.Save();
                canvas.Translate(kMargin, top);
                canvas.Scale(book.scale);
                item.paint(canvas);
                canvas.Restore();
            }
            if (part.items.empty())
                ++k;
            ShowPage(cairo);
        }
    }
    cairo_tag_end(cairo, "Document");
    cairo_destroy(cairo);
    cairo_surface_finish(surface);
    const cairo_status_t status = cairo_surface_status(surface);
    cairo_surface_destroy(surface);
    if (status != CAIRO_STATUS_SUCCESS)
        Fail(path, QString::fromUtf8(cairo_status_to_string(status)));
    Commit(file);
    return pages;
}

int WriteBook(const FileName &path, const Book &book, Paper paper) {
    const BookLayout layout = LayoutBook(book, paper);
    PdfBook pdf{"Chord book", book.instrument, {}, layout.width, layout.height, layout.scale};
    for (const BookPart &part : book.parts) {
        PdfPart out{part.name, {}};
        for (const BookChart &chart : part.charts)
            out.items.push_back({chart.title, ChartPageSize(chart.sheet), [&](Canvas &canvas) {
                                     PaintChartPage(canvas, chart.sheet, ChartTitle(chart.sheet),
                                                    book.orientation, book.palette);
                                 }});
        pdf.parts.push_back(std::move(out));
    }
    return WritePdfBook(path, pdf);
}

} // namespace varnock::output
