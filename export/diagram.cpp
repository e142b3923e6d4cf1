#include "export/diagram.h"

#include "chart/cellpaint.h"
#include "chart/sheet.h"
#include "export/chartdoc.h"
#include "export/writers.h"
#include "music/layouts.h"
#include "platform/basic.h"

#include <QFontMetrics>
#include <QImage>
#include <QPageLayout>
#include <QPageSize>
#include <QPainter>
#include <QPdfWriter>
#include <QSaveFile>
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

QColor Rgb(Color c) {
    return QColor((c >> 16) & 0xFF, (c >> 8) & 0xFF, c & 0xFF);
}

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

void PaintOne(QPainter &p, const Diagrams &d, std::size_t index) {
    const Fingering &f = d.fingerings[index];
    const Voicing &v = d.voicings[index];
    const std::size_t strings = Strings(d);
    const int rows = Rows(d);
    const int top = Top(d, f);
    const double left = StringX(d, index, d.leftHanded ? strings - 1 : 0);
    const double right = StringX(d, index, d.leftHanded ? 0 : strings - 1);
    const double gridTop = GridTop(d, index);
    const double gridBottom = gridTop + rows * kFretGap;

    QFont font = ListFont();
    p.setFont(font);
    // Fret lines, then the strings over them.
    p.setPen(QPen(Qt::black, 1));
    for (int r = 0; r <= rows; ++r)
        p.drawLine(QPointF(left, gridTop + r * kFretGap), QPointF(right, gridTop + r * kFretGap));
    for (std::size_t s = 0; s < strings; ++s)
        p.drawLine(QPointF(StringX(d, index, s), gridTop),
                   QPointF(StringX(d, index, s), gridBottom));
    // The nut, or the capo as a bar across every string.
    if (top == 0) {
        p.fillRect(QRectF(left - 1, gridTop - 3, right - left + 2, 5), Qt::black);
    } else if (top == d.capo) {
        p.setPen(Qt::NoPen);
        p.setBrush(QColor(0x55, 0x55, 0x55));
        p.drawRoundedRect(QRectF(left - 8, gridTop - 5, right - left + 16, 10), 5, 5);
    }
    // The frets' names beside the rows, on the side away from the first string.
    p.setPen(Qt::black);
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
        p.drawText(box, (d.leftHanded ? Qt::AlignLeft : Qt::AlignRight) | Qt::AlignVCenter,
                   QString::fromStdString(d.fretNames.at(static_cast<std::size_t>(position))));
    }
    if (top == d.capo && d.capo > 0) {
        QFont small = font;
        small.setBold(false);
        small.setPixelSize(10);
        p.setFont(small);
        const QRectF box = d.leftHanded
                               ? QRectF(right + 10, gridTop - 16, kLabelWidth, 14)
                               : QRectF(left - kLabelWidth - 4, gridTop - 16, kLabelWidth, 14);
        p.drawText(box, Qt::AlignCenter, QStringLiteral("capo"));
        p.setFont(font);
    }
    for (std::size_t s = 0; s < strings; ++s) {
        const QPointF centre = MarkCentre(d, index, s);
        const int position = f.positions[s];
        if (position == kMuted || position == d.capo) {
            p.setPen(QPen(Qt::black, 1.5));
            p.setBrush(Qt::NoBrush);
            if (position == kMuted) {
                p.drawLine(centre + QPointF(-5, -5), centre + QPointF(5, 5));
                p.drawLine(centre + QPointF(-5, 5), centre + QPointF(5, -5));
            } else {
                p.drawEllipse(centre, 5.5, 5.5);
            }
        } else {
            const int tone = std::clamp(f.tones[s], 0, 3);
            p.setPen(Qt::NoPen);
            p.setBrush(Rgb(colors::kNote[tone]));
            p.drawEllipse(centre, kDotRadius, kDotRadius);
            p.setPen(Qt::white);
            QFont dot = font;
            dot.setPixelSize(v.notes[s].size() > 2 ? 8 : 10);
            p.setFont(dot);
            p.drawText(QRectF(centre.x() - kDotRadius, centre.y() - kDotRadius, 2 * kDotRadius,
                              2 * kDotRadius),
                       Qt::AlignCenter, QString::fromStdString(v.notes[s]));
            p.setFont(font);
        }
        // The degree under the string.
        p.setPen(Qt::black);
        p.drawText(
            QRectF(StringX(d, index, s) - kStringGap / 2.0, gridBottom + 2, kStringGap, kTextLine),
            Qt::AlignCenter, QString::fromStdString(v.degrees[s]));
    }
    // The frets as text, and what is left out.
    // In the order the strings stand in the drawing.
    std::vector<std::string> frets = v.frets;
    if (d.leftHanded)
        std::reverse(frets.begin(), frets.end());
    std::string line = Join(frets, " ");
    if (!v.omitted.empty())
        line += "  (no " + Join(v.omitted, ", ") + ")";
    QFont plain = font;
    plain.setBold(false);
    p.setFont(plain);
    const QPoint origin = CellOrigin(d, index);
    p.drawText(QRectF(origin.x(), gridBottom + 2 + kTextLine, CellSize(d).width(), kTextLine),
               Qt::AlignCenter, QString::fromStdString(line));
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
    p.setFont(TitleFont());
    p.setPen(Qt::black);
    p.drawText(QRectF(kMargin, kMargin, DiagramsSize(d).width() - 2 * kMargin, kTitleHeight - 8),
               Qt::AlignLeft | Qt::AlignVCenter, QString::fromStdString(d.title));
    if (d.fingerings.empty()) {
        QFont plain = ListFont();
        plain.setBold(false);
        p.setFont(plain);
        p.drawText(QRectF(kMargin, kMargin + kTitleHeight, DiagramsSize(d).width() - 2 * kMargin,
                          kTextLine),
                   Qt::AlignLeft | Qt::AlignVCenter, QString::fromStdString(d.none));
        return;
    }
    for (std::size_t i = 0; i < d.fingerings.size(); ++i)
        PaintOne(p, d, i);
}

void WriteDiagramsPng(const QString &path, const Diagrams &d, int scale) {
    QImage image(DiagramsSize(d) * scale, QImage::Format_RGB32);
    image.fill(Qt::white);
    {
        QPainter painter(&image);
        painter.scale(scale, scale);
        PaintDiagrams(painter, d);
    }
    QSaveFile file(path);
    OpenForWriting(file);
    if (!image.save(&file, "PNG"))
        Fail(path, QStringLiteral("PNG encoding failed"));
    Commit(file);
}

void WriteDiagramsSvg(const QString &path, const Diagrams &d) {
    QSaveFile file(path);
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
        PaintDiagrams(painter, d);
    }
    Commit(file);
}

void WriteDiagramsPdf(const QString &path, const Diagrams &d, Paper paper) {
    QSaveFile file(path);
    OpenForWriting(file);
    {
        QPdfWriter pdf(&file);
        SetupPdf(pdf, QString::fromStdString(d.title));
        const QSize size = DiagramsSize(d);
        pdf.setPageSize(QPageSize(paper == Paper::A4 ? QPageSize::A4 : QPageSize::Letter));
        pdf.setPageOrientation(size.width() > size.height() ? QPageLayout::Landscape
                                                            : QPageLayout::Portrait);
        pdf.setPageMargins(QMarginsF(kPageMargin, kPageMargin, kPageMargin, kPageMargin),
                           QPageLayout::Point);
        QPainter painter;
        if (!painter.begin(&pdf))
            Fail(path, QStringLiteral("PDF writer failed"));
        // At their own size, or smaller where the page has less room.
        const QRect room = painter.viewport();
        const double fit = std::min({static_cast<double>(room.width()) / size.width(),
                                     static_cast<double>(room.height()) / size.height(), 1.0});
        painter.scale(fit, fit);
        PaintDiagrams(painter, d);
    }
    Commit(file);
}

int WriteFingeringBook(const QString &path, const std::string &title,
                       const std::vector<FingeringBookPart> &parts) {
    QSaveFile file(path);
    OpenForWriting(file);
    int pages = 0;
    {
        QPdfWriter pdf(&file);
        SetupPdf(pdf, QString::fromStdString(title));
        pdf.setPageSize(QPageSize(QPageSize::A4));
        pdf.setPageMargins(QMarginsF(12, 12, 12, 12), QPageLayout::Millimeter);
        QPainter painter;
        if (!painter.begin(&pdf))
            Fail(path, QStringLiteral("PDF writer failed"));
        const QRect page = pdf.pageLayout().paintRectPixels(pdf.resolution());
        QFont heading = ListFont();
        heading.setPixelSize(20);
        for (const FingeringBookPart &part : parts) {
            if (pages++ > 0)
                pdf.newPage();
            painter.setFont(heading);
            painter.setPen(Qt::black);
            painter.drawText(QRectF(0, 0, page.width(), 30), Qt::AlignLeft | Qt::AlignVCenter,
                             QString::fromStdString(part.heading));
            double y = 40;
            for (const Diagrams &chord : part.chords) {
                const QSize size = DiagramsSize(chord);
                if (y + size.height() > page.height()) {
                    pdf.newPage();
                    ++pages;
                    painter.setFont(heading);
                    painter.drawText(QRectF(0, 0, page.width(), 30),
                                     Qt::AlignLeft | Qt::AlignVCenter,
                                     QString::fromStdString(part.heading + " (continued)"));
                    y = 40;
                }
                painter.save();
                painter.translate(0, y);
                // Wider than the page (many strings or many fingerings): shrink to fit.
                if (size.width() > page.width())
                    painter.scale(page.width() / double(size.width()),
                                  page.width() / double(size.width()));
                PaintDiagrams(painter, chord);
                painter.restore();
                y += size.height() * std::min(1.0, page.width() / double(size.width()));
            }
        }
        if (pages == 0)
            ++pages;
    }
    Commit(file);
    return pages;
}

int WriteFingeringBook(const QString &path, const Book &book,
                       const std::vector<std::string> &fretNames, Limits limits, bool countGiven,
                       bool leftHanded) {
    if (!countGiven)
        limits.count = 4;
    const std::string capo =
        limits.capo > 0 ? ", capo at " + fretNames.at(static_cast<std::size_t>(limits.capo)) : "";
    std::vector<FingeringBookPart> parts;
    for (const BookPart &part : book.parts) {
        FingeringBookPart out{part.name + " - " + book.instrument + capo, {}};
        for (const BookChart &chart : part.charts)
            out.chords.push_back(MakeDiagrams(ChordTitle(chart.sheet),
                                              FindVoicings(chart.sheet, fretNames, limits),
                                              fretNames, limits.capo, leftHanded));
        parts.push_back(std::move(out));
    }
    return WriteFingeringBook(path, "Fingerings - " + book.instrument + capo, parts);
}

} // namespace varnock::output
