#include "window/listboxaccessible.h"

#include "window/listboxview.h"

#include <QAccessibleWidget>
#include <QPointer>
#include <QWindow>

#include <algorithm>
#include <map>
#include <utility>

namespace varnock {

namespace {

QString Q(const std::string &text) {
    return QString::fromStdString(text);
}

// A heading (row -1) or a cell of the list. It reads the list afresh on
// every question, so it never holds stale text; it is valid while its row is.
class CellAccessible : public QAccessibleInterface, public QAccessibleTableCellInterface {
  public:
    CellAccessible(ListboxView *view, int row, int column)
        : view_(view), row_(row), column_(column) {}

    bool isValid() const override {
        return view_ && row_ < view_->List().ListCount() && column_ < view_->List().ColumnCount();
    }
    QObject *object() const override { return nullptr; }
    QWindow *window() const override { return view_ ? view_->window()->windowHandle() : nullptr; }
    QAccessibleInterface *childAt(int, int) const override { return nullptr; }
    QAccessibleInterface *parent() const override {
        return QAccessible::queryAccessibleInterface(view_.data());
    }
    QAccessibleInterface *child(int) const override { return nullptr; }
    int childCount() const override { return 0; }
    int indexOfChild(const QAccessibleInterface *) const override { return -1; }

    QString text(QAccessible::Text t) const override {
        if (!isValid())
            return {};
        const Listbox &list = view_->List();
        const std::string heading = list.Heading(column_);
        if (row_ < 0)
            return t == QAccessible::Name ? Q(heading) : QString();
        const std::string text = list.Cell(row_, column_);
        if (t == QAccessible::Name)
            return Q(ListboxCellName(heading, text));
        if (t == QAccessible::Value)
            return Q(text);
        return {};
    }
    void setText(QAccessible::Text, const QString &) override {}

    QRect rect() const override {
        if (!isValid())
            return {};
        QRect r = ListboxCellRect(view_->List(), view_->size(), std::max(row_, 0), column_);
        if (row_ < 0) {
            r.moveTop(view_->frameWidth());
            r.setHeight(kListboxHeadingHeight);
        }
        return QRect(view_->mapToGlobal(r.topLeft()), r.size());
    }
    QAccessible::Role role() const override {
        return row_ < 0 ? QAccessible::ColumnHeader : QAccessible::Cell;
    }
    QAccessible::State state() const override {
        QAccessible::State s;
        if (!isValid()) {
            s.invalid = true;
            return s;
        }
        s.readOnly = true;
        if (row_ >= 0) {
            s.focusable = s.selectable = true;
            s.selected = isSelected();
            s.focused = view_->hasFocus() && view_->CurrentRow() == row_ &&
                        view_->CurrentColumn() == column_;
        }
        return s;
    }
    void *interface_cast(QAccessible::InterfaceType t) override {
        if (t == QAccessible::TableCellInterface && row_ >= 0)
            return static_cast<QAccessibleTableCellInterface *>(this);
        return nullptr;
    }

    bool isSelected() const override { return isValid() && view_->List().ListIndex() == row_; }
    QList<QAccessibleInterface *> columnHeaderCells() const override;
    QList<QAccessibleInterface *> rowHeaderCells() const override { return {}; }
    int columnIndex() const override { return column_; }
    int rowIndex() const override { return row_; }
    int columnExtent() const override { return 1; }
    int rowExtent() const override { return 1; }
    QAccessibleInterface *table() const override { return parent(); }

    int Row() const { return row_; }
    int Column() const { return column_; }

  private:
    QPointer<ListboxView> view_;
    int row_;
    int column_;
};

// The list as a table: the headings first among its children, then the
// cells row by row. Cells are made when first asked for and kept, one
// interface per place, as assistive technology expects.
class ListboxAccessible : public QAccessibleWidget, public QAccessibleTableInterface {
  public:
    explicit ListboxAccessible(ListboxView *view) : QAccessibleWidget(view, QAccessible::Table) {}
    ~ListboxAccessible() override {
        for (const auto &[key, id] : cells_)
            QAccessible::deleteAccessibleInterface(id);
    }

    void *interface_cast(QAccessible::InterfaceType t) override {
        if (t == QAccessible::TableInterface)
            return static_cast<QAccessibleTableInterface *>(this);
        return QAccessibleWidget::interface_cast(t);
    }

    int childCount() const override { return (rowCount() + 1) * columnCount(); }
    QAccessibleInterface *child(int index) const override {
        const int columns = columnCount();
        if (index < 0 || index >= childCount())
            return nullptr;
        return Cell(index / columns - 1, index % columns);
    }
    int indexOfChild(const QAccessibleInterface *child) const override {
        const auto *cell = dynamic_cast<const CellAccessible *>(child);
        if (!cell || !cell->isValid() || cell->parent() != this)
            return -1;
        return (cell->Row() + 1) * columnCount() + cell->Column();
    }
    QAccessibleInterface *childAt(int x, int y) const override {
        const QPoint at = View()->mapFromGlobal(QPoint(x, y));
        const int top = View()->frameWidth() + kListboxHeadingHeight;
        if (at.y() < View()->frameWidth())
            return nullptr;
        const int row =
            at.y() < top ? -1 : static_cast<int>((at.y() - top) / List().DefaultRowHeight());
        for (int column = 0; column < columnCount(); ++column) {
            const QRect r = ListboxCellRect(List(), View()->size(), 0, column);
            if (at.x() >= r.left() && at.x() <= r.right())
                return row < 0 ? Cell(-1, column) : cellAt(row, column);
        }
        return nullptr;
    }
    QAccessibleInterface *focusChild() const override {
        if (!View()->hasFocus())
            return nullptr;
        return cellAt(static_cast<int>(View()->CurrentRow()),
                      static_cast<int>(View()->CurrentColumn()));
    }

    QAccessibleInterface *caption() const override { return nullptr; }
    QAccessibleInterface *summary() const override { return nullptr; }
    QAccessibleInterface *cellAt(int row, int column) const override {
        if (row < 0 || row >= rowCount() || column < 0 || column >= columnCount())
            return nullptr;
        return Cell(row, column);
    }
    int selectedCellCount() const override { return selectedRowCount() * columnCount(); }
    QList<QAccessibleInterface *> selectedCells() const override {
        QList<QAccessibleInterface *> cells;
        for (const int row : selectedRows())
            for (int column = 0; column < columnCount(); ++column)
                cells.append(Cell(row, column));
        return cells;
    }
    QString columnDescription(int column) const override { return Q(List().Heading(column)); }
    QString rowDescription(int) const override { return {}; }
    int selectedColumnCount() const override { return 0; }
    int selectedRowCount() const override { return static_cast<int>(selectedRows().size()); }
    int columnCount() const override { return static_cast<int>(List().ColumnCount()); }
    int rowCount() const override { return static_cast<int>(List().ListCount()); }
    QList<int> selectedColumns() const override { return {}; }
    QList<int> selectedRows() const override {
        const Int selected = List().ListIndex();
        return selected >= 0 ? QList<int>{static_cast<int>(selected)} : QList<int>{};
    }
    bool isColumnSelected(int) const override { return false; }
    bool isRowSelected(int row) const override { return row >= 0 && List().ListIndex() == row; }
    bool selectRow(int row) override {
        if (row < 0 || row >= rowCount())
            return false;
        List().SetListIndex(row);
        return true;
    }
    bool selectColumn(int) override { return false; }
    bool unselectRow(int row) override {
        if (!isRowSelected(row))
            return false;
        List().SetListIndex(-1);
        return true;
    }
    bool unselectColumn(int) override { return false; }
    // Cells read the list afresh, so only those of rows that went away go.
    void modelChange(QAccessibleTableModelChangeEvent *) override {
        for (auto it = cells_.begin(); it != cells_.end();) {
            if (it->first.first >= rowCount()) {
                QAccessible::deleteAccessibleInterface(it->second);
                it = cells_.erase(it);
            } else {
                ++it;
            }
        }
    }

  private:
    ListboxView *View() const { return static_cast<ListboxView *>(widget()); }
    Listbox &List() const { return View()->List(); }
    QAccessibleInterface *Cell(int row, int column) const {
        QAccessible::Id &id = cells_[{row, column}];
        if (!id)
            id = QAccessible::registerAccessibleInterface(new CellAccessible(View(), row, column));
        return QAccessible::accessibleInterface(id);
    }

    mutable std::map<std::pair<int, int>, QAccessible::Id> cells_;
};

QList<QAccessibleInterface *> CellAccessible::columnHeaderCells() const {
    QAccessibleInterface *table = parent();
    if (!table || !isValid())
        return {};
    return {table->child(column_)};
}

QAccessibleInterface *Factory(const QString &, QObject *object) {
    if (auto *view = dynamic_cast<ListboxView *>(object))
        return new ListboxAccessible(view);
    return nullptr;
}

} // namespace

void InstallListboxAccessibility() {
    static const bool installed = (QAccessible::installFactory(Factory), true);
    (void)installed;
}

std::string ListboxCellName(const std::string &heading, const std::string &text) {
    const std::string shown = text.empty() ? "(empty)" : text;
    return heading.empty() ? shown : heading + ": " + shown;
}

void AnnounceListboxCell(ListboxView &view, bool selection) {
    if (!QAccessible::isActive())
        return;
    QAccessibleInterface *table = QAccessible::queryAccessibleInterface(&view);
    QAccessibleInterface *cell =
        table && table->tableInterface()
            ? table->tableInterface()->cellAt(static_cast<int>(view.CurrentRow()),
                                              static_cast<int>(view.CurrentColumn()))
            : nullptr;
    if (!cell)
        return;
    if (selection) {
        QAccessibleEvent event(cell, QAccessible::Selection);
        QAccessible::updateAccessibility(&event);
    }
    if (view.hasFocus()) {
        QAccessibleEvent event(cell, QAccessible::Focus);
        QAccessible::updateAccessibility(&event);
    }
}

void AnnounceListboxContent(ListboxView &view) {
    if (!QAccessible::isActive())
        return;
    QAccessibleTableModelChangeEvent event(&view, QAccessibleTableModelChangeEvent::ModelReset);
    QAccessible::updateAccessibility(&event);
}

} // namespace varnock
