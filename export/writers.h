#pragma once

// varnock-chart's files, each made in memory and written by the one write
// path (outfile.h); WriteFailed on any failure.

#include "chart/sheet.h"
#include "export/outfile.h"
#include "music/layouts.h"

#include <QPageLayout>
#include <QString>

#include <optional>
#include <stdexcept>
#include <string>

class QPdfWriter;

namespace varnock::output {

using namespace music;

void WriteTextFile(const FileName &path, const std::string &bytes);
// The sheet as the window shows it: chart, notes table and its label.
void WriteWindowImage(const FileName &path, const ChartSheet &sheet, int scale);
// The sheet for paper (PaintChartPage) under its title (ChartTitle).
void WritePng(const FileName &path, const ChartSheet &sheet, int scale,
              ChartOrientation orientation = {}, Palette palette = Palette::Window);
void WriteSvg(const FileName &path, const ChartSheet &sheet, ChartOrientation orientation = {},
              Palette palette = Palette::Window);
enum class Paper { A4, Letter };
// Margins of a printed page, in points.
constexpr double kPageMargin = 42;
// One landscape page of the paper, the sheet scaled to the width inside the margins.
void WritePdf(const FileName &path, const ChartSheet &sheet, ChartOrientation orientation = {},
              Paper paper = Paper::A4, Palette palette = Palette::Window);

// Sheet pixels per inch on paper: the screen's 96 dpi.
constexpr int kResolution = 96;

// For writers of their own: open, fail and commit as the ones above do.
void OpenForWriting(OutputFile &file);
void Commit(OutputFile &file);
// An SVG's commit: its fonts named as CSS expects, the face then its generic family.
void CommitSvg(OutputFile &file);
[[noreturn]] void Fail(const FileName &path, const QString &why);
// A PDF page of the paper, titled, inside the margins, and the painter
// begun on it; WriteFailed when it cannot be.
void BeginPdf(QPdfWriter &pdf, QPainter &painter, const FileName &path, const std::string &title,
              Paper paper, QPageLayout::Orientation orientation);

} // namespace varnock::output
