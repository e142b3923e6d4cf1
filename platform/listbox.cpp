#include "platform/listbox.h"

namespace varnock {

Listbox::Listbox(Int columnCount, Int defaultRowHeight)
    : columnCount_(columnCount), rowHeight_(defaultRowHeight),
      headings_(static_cast<std::size_t>(columnCount)),
      sortDirections_(static_cast<std::size_t>(columnCount), 0) {}

void Listbox::AddRow(const std::string &text) {
    std::vector<std::string> row(static_cast<std::size_t>(columnCount_));
    if (columnCount_ > 0)
        row[0] = text;
    rows_.push_back(std::move(row));
    Notify();
}

void Listbox::DeleteAllRows() {
    rows_.clear();
    selected_ = -1;
    Notify();
}

const std::vector<std::string> &Listbox::Row(Int row) const {
    if (row < 0 || row >= ListCount())
        throw OutOfBoundsException("list row " + std::to_string(row));
    return rows_[static_cast<std::size_t>(row)];
}

std::string Listbox::Cell(Int row, Int column) const {
    const auto &cells = Row(row);
    return HasColumn(column) ? cells[static_cast<std::size_t>(column)] : std::string();
}

void Listbox::SetCell(Int row, Int column, const std::string &text) {
    Row(row); // raises for a row that does not exist
    if (!HasColumn(column))
        return;
    rows_[static_cast<std::size_t>(row)][static_cast<std::size_t>(column)] = text;
    Notify();
}

std::string Listbox::Heading(Int column) const {
    return HasColumn(column) ? headings_[static_cast<std::size_t>(column)] : std::string();
}

void Listbox::SetHeading(Int column, const std::string &text) {
    if (!HasColumn(column))
        return;
    headings_[static_cast<std::size_t>(column)] = text;
    Notify();
}

Int Listbox::ColumnSortDirection(Int column) const {
    return HasColumn(column) ? sortDirections_[static_cast<std::size_t>(column)] : 0;
}

void Listbox::SetColumnSortDirection(Int column, Int direction) {
    if (HasColumn(column))
        sortDirections_[static_cast<std::size_t>(column)] = direction;
}

void Listbox::SetListIndex(Int row) {
    selected_ = (row >= 0 && row < ListCount()) ? row : -1;
    Notify();
}

void Listbox::RaiseOpen() {
    if (Open)
        Open(*this);
}

} // namespace varnock
