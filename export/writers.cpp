#include "export/writers.h"

#include "export/chartdoc.h"
#include "music/errors.h"

#include <QFontInfo>
#include <QPageLayout>
#include <QPageSize>
#include <QPainter>
#include <QPdfWriter>
#include <QSvgGenerator>

#include <map>

namespace varnock::output {

using namespace music;

void Fail(const FileName &path, const QString &why) {
    throw WriteFailed("cannot write " + path.bytes + ": " + why.toStdString());
}

void OpenForWriting(OutputFile &file) {
    if (!file.open(QIODevice::WriteOnly))
        Fail(file.Name(), file.errorString());
}

void Commit(OutputFile &file) {
    file.close();
    Deliver(file.Name(), file.data().toStdString());
}

void BeginPdf(QPdfWriter &pdf, QPainter &painter, const FileName &path, const std::string &title,
              Paper paper, QPageLayout::Orientation orientation) {
    pdf.setTitle(QString::fromStdString(title));
    pdf.setCreator(QStringLiteral("varnock-chart"));
    pdf.setResolution(kResolution);
    pdf.setPageSize(QPageSize(paper == Paper::A4 ? QPageSize::A4 : QPageSize::Letter));
    pdf.setPageOrientation(orientation);
    pdf.setPageMargins(QMarginsF(kPageMargin, kPageMargin, kPageMargin, kPageMargin),
                       QPageLayout::Point);
    if (!painter.begin(&pdf))
        Fail(path, QStringLiteral("PDF writer failed"));
}

void WriteTextFile(const FileName &path, const std::string &bytes) {
    Deliver(path, bytes);
}

void CommitSvg(OutputFile &file) {
    // Qt names the family it was asked for ("Sans Serif" when no desktop
    // chose one), which CSS does not know: a viewer without it may take a
    // serif face. Name the face drawn, then the generic family.
    file.close();
    std::string svg = file.data().toStdString();
    const std::string attribute = "font-family=\"";
    std::map<std::string, std::string> named;
    for (auto at = svg.find(attribute); at != std::string::npos; at = svg.find(attribute, at)) {
        at += attribute.size();
        const auto end = svg.find('"', at);
        if (end == std::string::npos)
            break;
        const std::string family = svg.substr(at, end - at);
        std::string &face = named[family];
        if (face.empty()) {
            // Piece by piece: GCC 12 warns of an overlapping copy otherwise.
            const std::string shown =
                QFontInfo(QFont(QString::fromStdString(family))).family().toStdString();
            face.append(1, '\'').append(shown).append("', sans-serif");
        }
        svg.replace(at, end - at, face);
        at += face.size() + 1;
    }
    Deliver(file.Name(), std::move(svg));
}

namespace {

void SavePng(const FileName &path, const QImage &image) {
    OutputFile file(path);
    OpenForWriting(file);
    if (!image.save(&file, "PNG"))
        Fail(path, QStringLiteral("PNG encoding failed"));
    Commit(file);
}

} // namespace

void WriteWindowImage(const FileName &path, const ChartSheet &sheet, int scale) {
    SavePng(path, RenderSheet(sheet, scale));
}

void WritePng(const FileName &path, const ChartSheet &sheet, int scale,
              ChartOrientation orientation, Palette palette) {
    SavePng(path, RenderChartPage(sheet, ChartTitle(sheet), scale, orientation, palette));
}

void WriteSvg(const FileName &path, const ChartSheet &sheet, ChartOrientation orientation,
              Palette palette) {
    OutputFile file(path);
    OpenForWriting(file);
    {
        QSvgGenerator svg;
        svg.setOutputDevice(&file);
        const QSize size = ChartPageSize(sheet);
        svg.setSize(size);
        svg.setViewBox(QRect(QPoint(0, 0), size));
        // The screen's 96 dpi, so the sizes on paper and the fonts match the PDF.
        svg.setResolution(kResolution);
        svg.setTitle(QString::fromStdString(ChartTitle(sheet)));
        QPainter painter;
        if (!painter.begin(&svg))
            Fail(path, QStringLiteral("SVG generator failed"));
        PaintChartPage(painter, sheet, ChartTitle(sheet), orientation, palette);
    }
    CommitSvg(file);
}

void WritePdf(const FileName &path, const ChartSheet &sheet, ChartOrientation orientation,
              Paper paper, Palette palette) {
    OutputFile file(path);
    OpenForWriting(file);
    {
        QPdfWriter pdf(&file);
        QPainter painter;
        // Landscape, as the book's pages: the chart is wide, and on a portrait
        // page its cell text would shrink below 8 pt.
        BeginPdf(pdf, painter, path, ChartTitle(sheet), paper, QPageLayout::Landscape);
        const QSize size = ChartPageSize(sheet);
        const double fit = static_cast<double>(painter.viewport().width()) / size.width();
        painter.scale(fit, fit);
        PaintChartPage(painter, sheet, ChartTitle(sheet), orientation, palette);
    }
    Commit(file);
}

} // namespace varnock::output
