#pragma once

// varnock-chart's files. Each goes through a temporary file renamed into
// place on success, so a failed run leaves nothing half-written; WriteFailed
// on any failure.

#include "chart/sheet.h"
#include "music/layouts.h"

#include <QString>

#include <optional>
#include <stdexcept>
#include <string>

class QPdfWriter;
class QSaveFile;

namespace varnock::output {

using namespace music;

// A file that could not be written.
struct WriteFailed : std::runtime_error {
    using std::runtime_error::runtime_error;
};

void WriteTextFile(const QString &path, const std::string &bytes);
// The sheet as the window shows it: chart, notes table and its label.
void WriteWindowImage(const QString &path, const ChartSheet &sheet, int scale);
// The sheet for paper (PaintChartPage) under its title (ChartTitle).
void WritePng(const QString &path, const ChartSheet &sheet, int scale,
              ChartOrientation orientation = {}, Palette palette = Palette::Window);
void WriteSvg(const QString &path, const ChartSheet &sheet, ChartOrientation orientation = {},
              Palette palette = Palette::Window);
// "window" (also when absent) or "colour-blind" (also "color-blind") in any
// case; BadInput otherwise.
Palette ResolvePalette(const std::optional<std::string> &text);

enum class Paper { A4, Letter };
// "a4" (also when absent) or "letter" in any case; BadInput otherwise.
Paper ResolvePaper(const std::optional<std::string> &text);
// Margins of a printed page, in points.
constexpr double kPageMargin = 42;
// One landscape page of the paper, the sheet scaled to the width inside the margins.
void WritePdf(const QString &path, const ChartSheet &sheet, ChartOrientation orientation = {},
              Paper paper = Paper::A4, Palette palette = Palette::Window);

// Sheet pixels per inch on paper: the screen's 96 dpi.
constexpr int kResolution = 96;

// For writers of their own: open, fail and commit as the ones above do.
void OpenForWriting(QSaveFile &file);
void Commit(QSaveFile &file);
[[noreturn]] void Fail(const QString &path, const QString &why);
void SetupPdf(QPdfWriter &pdf, const QString &title);

} // namespace varnock::output
