#pragma once

// A plain text table with a heading line, drawn cell by cell. For every cell
// in view it raises a background paint event and then, for rows that exist, a
// text paint event, each with a Graphics that covers that cell alone. Rows are
// kept in the order they were added and never sorted. It draws no grid lines.

#include "chart/graphics.h"
#include "model/basic.h"

#include <QFrame>

#include <functional>
#include <string>
#include <vector>

namespace varnock {

class Listbox : public QFrame {
  public:
    Listbox(Int columnCount, Int defaultRowHeight, QWidget *parent = nullptr);

    Int ColumnCount() const { return columnCount_; }
    Int ListCount() const { return static_cast<Int>(rows_.size()); }
    // Index of the row added last, -1 when there is none.
    Int LastIndex() const { return ListCount() - 1; }
    Int DefaultRowHeight() const { return rowHeight_; }
    static constexpr Int kHeadingHeight = 19;

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

    // Geometry of a cell in widget coordinates (rows from 0 below the heading).
    QRect CellRect(Int row, Int column) const;

    std::function<bool(Listbox &, Graphics &, Int row, Int column)> CellBackgroundPaint;
    std::function<bool(Listbox &, Graphics &, Int row, Int column, Int x, Int y)> CellTextPaint;
    std::function<void(Listbox &)> Open;

    // Raises the Open event; the window does this once, after building its controls.
    void RaiseOpen();

    // Paints the whole list, frame included, with its top-left corner at the
    // painter's origin: what the screen shows, for any paint device. Printing
    // and export use it directly, since rendering the widget at an offset
    // loses the cells' clipping on the PDF and SVG engines.
    void Paint(QPainter &p);

  protected:
    void paintEvent(QPaintEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;

  private:
    void PaintHeading(QPainter &p);
    void PaintCell(QPainter &p, Int row, Int column);
    std::vector<std::string> &Row(Int row);
    const std::vector<std::string> &Row(Int row) const;

    Int columnCount_;
    Int rowHeight_;
    std::vector<std::string> headings_;
    std::vector<Int> sortDirections_;
    std::vector<std::vector<std::string>> rows_;
    Int selected_ = -1;
};

} // namespace varnock
