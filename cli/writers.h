#pragma once

// varnock-chart's files. Each goes through a temporary file renamed into
// place on success, so a failed run leaves nothing half-written; WriteFailed
// on any failure.

#include "chart/sheet.h"

#include <QString>

#include <string>

class QPdfWriter;
class QSaveFile;

namespace varnock::cli {

void WriteTextFile(const QString &path, const std::string &bytes);
// The sheet: chart, notes table and its label.
void WritePng(const QString &path, const ChartSheet &sheet, int scale,
              ChartOrientation orientation = {});
void WriteSvg(const QString &path, const ChartSheet &sheet, ChartOrientation orientation = {});
void WritePdf(const QString &path, const ChartSheet &sheet, ChartOrientation orientation = {});

// Sheet pixels per inch on paper: the screen's 96 dpi.
constexpr int kResolution = 96;

// For writers of their own: open, fail and commit as the ones above do.
void OpenForWriting(QSaveFile &file);
void Commit(QSaveFile &file);
[[noreturn]] void Fail(const QString &path, const QString &why);
void SetupPdf(QPdfWriter &pdf, const QString &title);

} // namespace varnock::cli
