#include "export/diagram.h"

#include "chart/cellpaint.h"
#include "chart/sheet.h"
#include "export/chartdoc.h"
#include "export/writers.h"
#include "music/errors.h"
#include "music/layouts.h"
#include "platform/basic.h"
#include "platform/canvas.h"

#include <QFontMetrics>
#include <QImage>
#include <QPageLayout>
#include <QPageSize>
#include <QPainter>
#include <QPdfWriter>
#include <QSvgGenerator>

#include <algorithm>

namespace varnock::output {

using namespace music;

namespace {

// Sheet pixels.
constexpr int kMargin = 16;
constexpr int kTitleHeight = 30;
constexpr int kLabelWidth = 44; // the fret names beside the rows
constexpr int kStringGap = 30;
constexpr int kFretGap = 30;
constexpr int kMarkHeight = 20; // o and x above the nut
constexpr int kTextLine = 18;   // the degrees, then the frets as text
constexpr int kCellGap = 22;
constexpr int kMinRows = 4;
constexpr double kDotRadius = 11;

std::size_t Strings(const Diagrams &d) {
    return d.fingerings.empty() ? 0 : d.fingerings.front().positions.size();
}

// Rows every diagram shows: enough for the widest hand.
int Rows(const Diagrams &d) {
    int rows = kMinRows;
    for (const Fingering &f : d.fingerings)
        rows = std::max(rows, f.reach + 1);
    return rows;
}

// The position just above the first row: the capo (or nut) when the hand
// fits under it, else one below the lowest fretted position.
int Top(const Diagrams &d, const Fingering &f) {
    if (f.fretted == 0 || f.hand + f.reach - d.capo <= Rows(d))
        return d.capo;
    return f.hand - 1;
}

QSize CellSize(const Diagrams &d) {
    const int strings = static_cast<int>(std::max<std::size_t>(Strings(d), 1));
    return {2 * kLabelWidth + (strings - 1) * kStringGap,
            kMarkHeight + Rows(d) * kFretGap + 2 * kTextLine};
}

QPoint CellOrigin(const Diagrams &d, std::size_t index) {
    const QSize cell = CellSize(d);
    const int column = static_cast<int>(index % kDiagramsPerRow);
    const int row = static_cast<int>(index / kDiagramsPerRow);
    return {kMargin + column * (cell.width() + kCellGap),
            kMargin + kTitleHeight + row * (cell.height() + kCellGap)};
}

double StringX(const Diagrams &d, std::size_t index, std::size_t string) {
    const std::size_t strings = Strings(d);
    const std::size_t column = d.leftHanded ? strings - 1 - string : string;
    return CellOrigin(d, index).x() + kLabelWidth + static_cast<double>(column) * kStringGap;
}

double GridTop(const Diagrams &d, std::size_t index) {
    return CellOrigin(d, index).y() + kMarkHeight;
}

void PaintOne(Canvas &p, const Diagrams &d, std::size_t index) {
    const Fingering &f = d.fingerings[index];
    const Voicing &v = d.voicings[index];
    const std::size_t strings = Strings(d);
    const int rows = Rows(d);
    const int top = Top(d, f);
    const double left = StringX(d, index, d.leftHanded ? strings - 1 : 0);
    const double right = StringX(d, index, d.leftHanded ? 0 : strings - 1);
    const double gridTop = GridTop(d, index);
    const double gridBottom = gridTop + rows * kFretGap;
    constexpr Color kBlack = 0, kWhite = 0xFFFFFF, kCapo = 0x555555;

    QFont font = ListFont();
    p.SetFont(font);
    // Fret lines, then the strings over them.
    p.SetColor(kBlack);
    for (int r = 0; r <= rows; ++r)
        p.Line(QPointF(left, gridTop + r * kFretGap), QPointF(right, gridTop + r * kFretGap), 1);
    for (std::size_t s = 0; s < strings; ++s)
        p.Line(QPointF(StringX(d, index, s), gridTop), QPointF(StringX(d, index, s), gridBottom),
               1);
    // The nut, or the capo as a bar across every string.
    if (top == 0)
        p.FillRect(QRectF(left - 1, gridTop - 3, right - left + 2, 5), kBlack);
    else if (top == d.capo)
        p.FillRoundedRect(QRectF(left - 8, gridTop - 5, right - left + 16, 10), 5, kCapo);
    // The frets' names beside the rows, on the side away from the first string.
    for (int r = 0; r < rows; ++r) {
        const int position = top + 1 + r;
        if (position > kLastPosition)
            break;
        // Clear of a dot on the outer string.
        const double clear = kDotRadius + 4;
        const QRectF box =
            d.leftHanded
                ? QRectF(right + clear, gridTop + r * kFretGap, kLabelWidth - clear, kFretGap)
                : QRectF(left - kLabelWidth, gridTop + r * kFretGap, kLabelWidth - clear, kFretGap);
        p.Text(box, (d.leftHanded ? Qt::AlignLeft : Qt::AlignRight) | Qt::AlignVCenter,
               d.fretNames.at(static_cast<std::size_t>(position)));
    }
    if (top == d.capo && d.capo > 0) {
        QFont small = font;
        small.setBold(false);
        small.setPixelSize(10);
        p.SetFont(small);
        const QRectF box = d.leftHanded
                               ? QRectF(right + 10, gridTop - 16, kLabelWidth, 14)
                               : QRectF(left - kLabelWidth - 4, gridTop - 16, kLabelWidth, 14);
        p.Text(box, Qt::AlignCenter, "capo");
        p.SetFont(font);
    }
    for (std::size_t s = 0; s < strings; ++s) {
        const QPointF centre = MarkCentre(d, index, s);
        const int position = f.positions[s];
        if (position == kMuted) {
            p.Line(centre + QPointF(-5, -5), centre + QPointF(5, 5), 1.5);
            p.Line(centre + QPointF(-5, 5), centre + QPointF(5, -5), 1.5);
        } else if (position == d.capo) {
            p.StrokeCircle(centre, 5.5, 1.5);
        } else {
            const int tone = std::clamp(f.tones[s], 0, 3);
            p.FillCircle(centre, kDotRadius, colors::kNote[tone]);
            p.SetColor(kWhite);
            QFont dot = font;
            dot.setPixelSize(v.notes[s].size() > 2 ? 8 : 10);
            p.SetFont(dot);
            p.Text(QRectF(centre.x() - kDotRadius, centre.y() - kDotRadius, 2 * kDotRadius,
                          2 * kDotRadius),
                   Qt::AlignCenter, v.notes[s]);
            p.SetFont(font);
            p.SetColor(kBlack);
        }
        // The degree under the string.
        p.Text(
            QRectF(StringX(d, index, s) - kStringGap / 2.0, gridBottom + 2, kStringGap, kTextLine),
            Qt::AlignCenter, v.degrees[s]);
    }
    // The frets as text, and what is left out: first string first however
    // the drawing stands, as --voicings prints them and --identify-frets
    // takes them back.
    std::string line = Join(v.frets, " ");
    if (!v.omitted.empty())
        line += "  without " + Join(v.omitted, ", ");
    QFont plain = font;
    plain.setBold(false);
    p.SetFont(plain);
    const QPoint origin = CellOrigin(d, index);
    p.Text(QRectF(origin.x(), gridBottom + 2 + kTextLine, CellSize(d).width(), kTextLine),
           Qt::AlignCenter, line);
}

} // namespace

Diagrams MakeDiagrams(const std::string &title, const Voicings &found,
                      const std::vector<std::string> &fretNames, int capo, bool leftHanded) {
    Diagrams d;
    d.title = title;
    d.none = found.none;
    d.fretNames = fretNames;
    d.capo = capo;
    d.leftHanded = leftHanded;
    d.fingerings = found.fingerings;
    d.voicings = found.voicings;
    return d;
}

namespace {

QFont TitleFont() {
    QFont title = ListFont();
    title.setPixelSize(16);
    return title;
}

} // namespace

QSize DiagramsSize(const Diagrams &d) {
    const QSize cell = CellSize(d);
    const int count = static_cast<int>(d.fingerings.size());
    const int columns = std::clamp(count, 1, kDiagramsPerRow);
    const int rows = std::max(1, (count + kDiagramsPerRow - 1) / kDiagramsPerRow);
    const int titleWidth =
        QFontMetrics(TitleFont()).horizontalAdvance(QString::fromStdString(d.title));
    const int width = std::max({2 * kMargin + columns * cell.width() + (columns - 1) * kCellGap,
                                2 * kMargin + titleWidth, 360});
    if (count == 0) // room for the line that says why, at about 7 pixels a letter
        return {std::max(width, 2 * kMargin + 7 * static_cast<int>(d.none.size())),
                2 * kMargin + kTitleHeight + kTextLine};
    return {width, 2 * kMargin + kTitleHeight + rows * cell.height() + (rows - 1) * kCellGap};
}

QPointF MarkCentre(const Diagrams &d, std::size_t index, std::size_t string) {
    const Fingering &f = d.fingerings.at(index);
    const int position = f.positions.at(string);
    const double x = StringX(d, index, string);
    if (position == kMuted || position == d.capo)
        return {x, GridTop(d, index) - kMarkHeight / 2.0};
    return {x, GridTop(d, index) + (position - Top(d, f) - 0.5) * kFretGap};
}

void PaintDiagrams(QPainter &p, const Diagrams &d) {
    p.setRenderHint(QPainter::Antialiasing);
    PainterCanvas canvas(p);
    PaintDiagrams(canvas, d);
}

void PaintDiagrams(Canvas &p, const Diagrams &d) {
    p.SetFont(TitleFont());
    p.SetColor(0);
    p.Text(QRectF(kMargin, kMargin, DiagramsSize(d).width() - 2 * kMargin, kTitleHeight - 8),
           Qt::AlignLeft | Qt::AlignVCenter, d.title);
    if (d.fingerings.empty()) {
        QFont plain = ListFont();
        plain.setBold(false);
        p.SetFont(plain);
        p.Text(QRectF(kMargin, kMargin + kTitleHeight, DiagramsSize(d).width() - 2 * kMargin,
                      kTextLine),
               Qt::AlignLeft | Qt::AlignVCenter, d.none);
        return;
    }
    for (std::size_t i = 0; i < d.fingerings.size(); ++i)
        PaintOne(p, d, i);
}

namespace {

// Past the limit no image is made: it would be a strip few viewers open.
void CheckImageSize(const Diagrams &d) {
    if (DiagramsSize(d).height() > kMostDiagramPixels)
        throw BadInput(std::to_string(d.fingerings.size()) +
                       " diagrams make an image taller than " + std::to_string(kMostDiagramPixels) +
                       " pixels; ask for fewer with --count, or use --pdf");
}

} // namespace

void WriteDiagramsPng(const FileName &path, const Diagrams &d, int scale) {
    CheckImageSize(d);
    QImage image(DiagramsSize(d) * scale, QImage::Format_RGB32);
    image.fill(Qt::white);
    {
        QPainter painter(&image);
        painter.scale(scale, scale);
        PaintDiagrams(painter, d);
    }
    OutputFile file(path);
    OpenForWriting(file);
    if (!image.save(&file, "PNG"))
        Fail(path, QStringLiteral("PNG encoding failed"));
    Commit(file);
}

void WriteDiagramsSvg(const FileName &path, const Diagrams &d) {
    CheckImageSize(d);
    OutputFile file(path);
    OpenForWriting(file);
    {
        QSvgGenerator svg;
        svg.setOutputDevice(&file);
        svg.setSize(DiagramsSize(d));
        svg.setViewBox(QRect(QPoint(0, 0), DiagramsSize(d)));
        svg.setResolution(kResolution);
        svg.setTitle(QString::fromStdString(d.title));
        QPainter painter;
        if (!painter.begin(&svg))
            Fail(path, QStringLiteral("SVG generator failed"));
        // On white, as the PNG is: a viewer's own background may be dark.
        painter.fillRect(QRect(QPoint(0, 0), DiagramsSize(d)), Qt::white);
        PaintDiagrams(painter, d);
    }
    CommitSvg(file);
}

void WriteDiagramsPdf(const FileName &path, const Diagrams &d, Paper paper) {
    OutputFile file(path);
    OpenForWriting(file);
    {
        QPdfWriter pdf(&file);
        const QSize size = DiagramsSize(d);
        QPainter painter;
        BeginPdf(pdf, painter, path, d.title, paper,
                 size.width() > size.height() ? QPageLayout::Landscape : QPageLayout::Portrait);
        // At their own size, or smaller where a row is wider than the page;
        // as many rows on a page as fit, and as many pages as they need.
        const QRect room = painter.viewport();
        const double fit = std::min(static_cast<double>(room.width()) / size.width(), 1.0);
        const int rowHeight = CellSize(d).height() + kCellGap;
        const int rows = std::max(
            1, static_cast<int>((room.height() / fit - 2 * kMargin - kTitleHeight + kCellGap) /
                                rowHeight));
        const std::size_t perPage = static_cast<std::size_t>(rows * kDiagramsPerRow);
        painter.scale(fit, fit);
        for (std::size_t first = 0; first == 0 || first < d.fingerings.size(); first += perPage) {
            if (first > 0)
                pdf.newPage();
            Diagrams page = d;
            if (first > 0)
                page.title += " (continued)";
            const std::size_t last = std::min(d.fingerings.size(), first + perPage);
            page.fingerings.assign(d.fingerings.begin() + static_cast<std::ptrdiff_t>(first),
                                   d.fingerings.begin() + static_cast<std::ptrdiff_t>(last));
            const auto voicing = [&](std::size_t i) {
                return d.voicings.begin() +
                       static_cast<std::ptrdiff_t>(std::min(i, d.voicings.size()));
            };
            page.voicings.assign(voicing(first), voicing(last));
            PaintDiagrams(painter, page);
        }
    }
    Commit(file);
}

int WriteFingeringBook(const FileName &path, const std::string &title,
                       const std::string &instrument, const std::vector<FingeringBookPart> &parts,
                       Paper paper) {
    // Portrait, each chord's diagrams at their size on screen (96 to the
    // inch), smaller only where a set is wider than the page.
    PdfBook book{title,
                 instrument,
                 {},
                 paper == Paper::A4 ? 595.0 : 612.0,
                 paper == Paper::A4 ? 842.0 : 792.0,
                 72.0 / kResolution};
    constexpr double kMargins = 60;
    for (const FingeringBookPart &part : parts)
        for (const Diagrams &chord : part.chords)
            book.scale =
                std::min(book.scale, (book.width - kMargins) / DiagramsSize(chord).width());
    for (const FingeringBookPart &part : parts) {
        PdfPart out{part.heading, {}};
        for (const Diagrams &chord : part.chords)
            out.items.push_back({chord.title, DiagramsSize(chord),
                                 [&chord](Canvas &canvas) { PaintDiagrams(canvas, chord); }});
        book.parts.push_back(std::move(out));
    }
    return WritePdfBook(path, book);
}

int WriteFingeringBook(const FileName &path, const Book &book,
                       const std::vector<std::string> &fretNames, Limits limits, bool countGiven,
                       bool leftHanded, Paper paper) {
    if (!countGiven)
        limits.count = 4;
    std::vector<FingeringBookPart> parts;
    for (const BookPart &part : book.parts) {
        FingeringBookPart out{part.name, {}};
        for (const BookChart &chart : part.charts)
            out.chords.push_back(MakeDiagrams(ChordTitle(chart.sheet),
                                              FindVoicings(chart.sheet, fretNames, limits),
                                              fretNames, limits.capo, leftHanded));
        parts.push_back(std::move(out));
    }
    return WriteFingeringBook(path, "Fingering book", book.instrument, parts, paper);
}

} // namespace varnock::output
