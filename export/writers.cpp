#include "export/writers.h"

#include "export/chartdoc.h"
#include "music/errors.h"

#include <QPageLayout>
#include <QPageSize>
#include <QPainter>
#include <QPdfWriter>
#include <QSaveFile>
#include <QSvgGenerator>

namespace varnock::output {

using namespace music;

void Fail(const QString &path, const QString &why) {
    throw WriteFailed("cannot write " + path.toStdString() + ": " + why.toStdString());
}

void OpenForWriting(QSaveFile &file) {
    if (!file.open(QIODevice::WriteOnly))
        Fail(file.fileName(), file.errorString());
}

void Commit(QSaveFile &file) {
    if (!file.commit())
        Fail(file.fileName(), file.errorString());
}

void SetupPdf(QPdfWriter &pdf, const QString &title) {
    pdf.setTitle(title);
    pdf.setCreator(QStringLiteral("varnock-chart"));
    pdf.setResolution(kResolution);
}

void WriteTextFile(const QString &path, const std::string &bytes) {
    QSaveFile file(path);
    OpenForWriting(file);
    if (file.write(bytes.data(), static_cast<qint64>(bytes.size())) !=
        static_cast<qint64>(bytes.size()))
        Fail(path, file.errorString());
    Commit(file);
}

namespace {

void SavePng(const QString &path, const QImage &image) {
    QSaveFile file(path);
    OpenForWriting(file);
    if (!image.save(&file, "PNG"))
        Fail(path, QStringLiteral("PNG encoding failed"));
    Commit(file);
}

} // namespace

void WriteWindowImage(const QString &path, const ChartSheet &sheet, int scale) {
    SavePng(path, RenderSheet(sheet, scale));
}

void WritePng(const QString &path, const ChartSheet &sheet, int scale, ChartOrientation orientation,
              Palette palette) {
    SavePng(path, RenderChartPage(sheet, ChartTitle(sheet), scale, orientation, palette));
}

Palette ResolvePalette(const std::optional<std::string> &text) {
    if (!text)
        return Palette::Window;
    const std::string lower = LCase(*text);
    if (lower == "window")
        return Palette::Window;
    if (lower == "colour-blind" || lower == "color-blind")
        return Palette::ColourBlind;
    throw BadInput("unknown palette \"" + *text + "\"; accepted: window, colour-blind");
}

Paper ResolvePaper(const std::optional<std::string> &text) {
    if (!text)
        return Paper::A4;
    const std::string lower = LCase(*text);
    if (lower == "a4")
        return Paper::A4;
    if (lower == "letter")
        return Paper::Letter;
    throw BadInput("unknown paper \"" + *text + "\"; accepted: a4, letter");
}

void WriteSvg(const QString &path, const ChartSheet &sheet, ChartOrientation orientation,
              Palette palette) {
    QSaveFile file(path);
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
    Commit(file);
}

void WritePdf(const QString &path, const ChartSheet &sheet, ChartOrientation orientation,
              Paper paper, Palette palette) {
    QSaveFile file(path);
    OpenForWriting(file);
    {
        QPdfWriter pdf(&file);
        SetupPdf(pdf, QString::fromStdString(ChartTitle(sheet)));
        pdf.setPageSize(QPageSize(paper == Paper::A4 ? QPageSize::A4 : QPageSize::Letter));
        // Landscape, as the book's pages: the chart is wide, and on a portrait
        // page its cell text would shrink below 8 pt.
        pdf.setPageOrientation(QPageLayout::Landscape);
        pdf.setPageMargins(QMarginsF(kPageMargin, kPageMargin, kPageMargin, kPageMargin),
                           QPageLayout::Point);
        QPainter painter;
        if (!painter.begin(&pdf))
            Fail(path, QStringLiteral("PDF writer failed"));
        const QSize size = ChartPageSize(sheet);
        const double fit = static_cast<double>(painter.viewport().width()) / size.width();
        painter.scale(fit, fit);
        PaintChartPage(painter, sheet, ChartTitle(sheet), orientation, palette);
    }
    Commit(file);
}

} // namespace varnock::output
