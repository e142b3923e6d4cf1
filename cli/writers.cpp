#include "cli/writers.h"

#include "cli/chartdoc.h"
#include "cli/errors.h"

#include <QPageSize>
#include <QPainter>
#include <QPdfWriter>
#include <QSaveFile>
#include <QSvgGenerator>

namespace varnock::cli {

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

void WritePng(const QString &path, const ChartSheet &sheet, int scale,
              ChartOrientation orientation) {
    const QImage image = RenderSheet(sheet, scale, orientation);
    QSaveFile file(path);
    OpenForWriting(file);
    if (!image.save(&file, "PNG"))
        Fail(path, QStringLiteral("PNG encoding failed"));
    Commit(file);
}

void WriteSvg(const QString &path, const ChartSheet &sheet, ChartOrientation orientation) {
    QSaveFile file(path);
    OpenForWriting(file);
    {
        QSvgGenerator svg;
        svg.setOutputDevice(&file);
        svg.setSize(SheetSize(sheet));
        svg.setViewBox(QRect(QPoint(0, 0), SheetSize(sheet)));
        // The screen's 96 dpi, so the sizes on paper and the fonts match the PDF.
        svg.setResolution(kResolution);
        svg.setTitle(QString::fromStdString(ChartTitle(sheet)));
        QPainter painter;
        if (!painter.begin(&svg))
            Fail(path, QStringLiteral("SVG generator failed"));
        PaintSheet(painter, sheet, orientation);
    }
    Commit(file);
}

void WritePdf(const QString &path, const ChartSheet &sheet, ChartOrientation orientation) {
    QSaveFile file(path);
    OpenForWriting(file);
    {
        QPdfWriter pdf(&file);
        SetupPdf(pdf, QString::fromStdString(ChartTitle(sheet)));
        // A page just the size of the sheet with a small margin.
        const QSize size = SheetSize(sheet);
        const int margin = 16;
        pdf.setPageSize(QPageSize(QSizeF((size.width() + 2 * margin) * 72.0 / kResolution,
                                         (size.height() + 2 * margin) * 72.0 / kResolution),
                                  QPageSize::Point));
        pdf.setPageMargins(QMarginsF(0, 0, 0, 0));
        QPainter painter;
        if (!painter.begin(&pdf))
            Fail(path, QStringLiteral("PDF writer failed"));
        painter.translate(margin, margin);
        PaintSheet(painter, sheet, orientation);
    }
    Commit(file);
}

} // namespace varnock::cli
