#pragma once

// A plain text table with a heading line, as the program sees it: rows kept
// in the order they were added and never sorted, cells and headings by
// column, and the events a view raises for it. The object has no widget:
// ListboxView shows it on screen and PaintListbox draws it onto any painter,
// both raising the same cell paint events.

#include "platform/basic.h"

#include <functional>
#include <string>
#include <vector>

namespace varnock {

class Graphics;

class Listbox {
  public:
    Listbox(Int columnCount, Int defaultRowHeight);
    Listbox(const Listbox &) = delete;
    Listbox &operator=(const Listbox &) = delete;

    Int ColumnCount() const { return columnCount_; }
    Int ListCount() const { return static_cast<Int>(rows_.size()); }
    // Index of the row added last, -1 when there is none.
    Int LastIndex() const { return ListCount() - 1; }
    Int DefaultRowHeight() const { return rowHeight_; }

    // Appends a row whose column 0 holds `text`.
    void AddRow(const std::string &text);
    void DeleteAllRows();

    // Reads and writes of a column beyond the list's columns pass quietly:
    // a write is dropped, a read gives "". A row that does not exist raises.
    std::string Cell(Int row, Int column) const;
    void SetCell(Int row, Int column, const std::string &text);
    std::string Heading(Int column) const;
    void SetHeading(Int column, const std::string &text);

    Int ColumnSortDirection(Int column) const;
    void SetColumnSortDirection(Int column, Int direction);

    // The selected row, -1 for none. The selection means nothing to the program.
    Int ListIndex() const { return selected_; }
    void SetListIndex(Int row);

    // Raised for every cell in view, rows that do not exist included: the
    // background first, then (for existing rows) the text. True from the text
    // event means the handler drew the text itself.
    std::function<bool(const Listbox &, Graphics &, Int row, Int column)> CellBackgroundPaint;
    std::function<bool(const Listbox &, Graphics &, Int row, Int column, Int x, Int y)>
        CellTextPaint;
    std::function<void(Listbox &)> Open;

    // Raises the Open event; the window does this once, after building its controls.
    void RaiseOpen();

    // Told after every change of rows, cells, headings or selection, so that
    // a view can repaint.
    std::function<void()> Observer;

  private:
    void Notify() const {
        if (Observer)
            Observer();
    }
    bool HasColumn(Int column) const { return column >= 0 && column < columnCount_; }
    const std::vector<std::string> &Row(Int row) const;

    Int columnCount_;
    Int rowHeight_;
    std::vector<std::string> headings_;
    std::vector<Int> sortDirections_;
    std::vector<std::vector<std::string>> rows_;
    Int selected_ = -1;
};

} // namespace varnock
