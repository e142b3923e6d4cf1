// What a screen reader gets from the window's two tables: their shape,
// headings and cell texts through Qt's accessibility interfaces.

#include "support.h"

#include <QAccessible>
#include <gtest/gtest.h>

#include <string>

using namespace varnock;
using testsupport::OpenWindow;

namespace {

QAccessibleInterface *TableOf(Window1 &w, const char *list) {
    return QAccessible::queryAccessibleInterface(w.ControlView(list));
}

std::string Text(QAccessibleInterface *iface, QAccessible::Text t = QAccessible::Name) {
    return iface ? iface->text(t).toStdString() : "(no interface)";
}

} // namespace

TEST(ListAccess, TablesShowTheirShapeAndHeadings) {
    OpenWindow w; // A Maj on D A D
    const struct {
        const char *list, *name;
        int rows, columns;
        const char *firstHeading;
    } tables[] = {{"Listbox1", "Chart", 4, 23, "0"}, {"Listbox2", "Notes", 1, 4, "Root"}};
    for (const auto &t : tables) {
        QAccessibleInterface *table = TableOf(*w, t.list);
        ASSERT_NE(table, nullptr) << t.list;
        ASSERT_NE(table->tableInterface(), nullptr) << t.list;
        EXPECT_EQ(table->role(), QAccessible::Table) << t.list;
        EXPECT_EQ(Text(table), t.name);
        EXPECT_EQ(table->tableInterface()->rowCount(), t.rows) << t.list;
        EXPECT_EQ(table->tableInterface()->columnCount(), t.columns) << t.list;
        EXPECT_EQ(table->tableInterface()->columnDescription(0).toStdString(), t.firstHeading);
        // The headings come first among the children, then the cells.
        EXPECT_EQ(table->childCount(), (t.rows + 1) * t.columns) << t.list;
        EXPECT_EQ(table->child(0)->role(), QAccessible::ColumnHeader) << t.list;
        EXPECT_EQ(Text(table->child(0)), t.firstHeading);
        EXPECT_EQ(table->tableInterface()->cellAt(t.rows, 0), nullptr) << t.list;
        EXPECT_EQ(table->tableInterface()->cellAt(0, t.columns), nullptr) << t.list;
    }
}

TEST(ListAccess, CellsReadHeadingAndText) {
    OpenWindow w;
    const struct {
        const char *list;
        int row, column;
        const char *name, *value;
    } cells[] = {
        {"Listbox1", 0, 7, "7: 7", "7"},
        {"Listbox1", 1, 1, "1: E", "E"},
        {"Listbox1", 2, 2, "2: C#", "C#"},
        {"Listbox1", 1, 0, "0: (empty)", ""},
        {"Listbox2", 0, 0, "Root: A", "A"},
        {"Listbox2", 0, 2, "3rd Note: E", "E"},
        {"Listbox2", 0, 3, "4th Note: (empty)", ""},
    };
    for (const auto &c : cells) {
        SCOPED_TRACE(std::string(c.list) + " " + std::to_string(c.row) + "," +
                     std::to_string(c.column));
        QAccessibleInterface *table = TableOf(*w, c.list);
        QAccessibleInterface *cell = table->tableInterface()->cellAt(c.row, c.column);
        ASSERT_NE(cell, nullptr);
        EXPECT_EQ(cell->role(), QAccessible::Cell);
        EXPECT_EQ(Text(cell), c.name);
        EXPECT_EQ(Text(cell, QAccessible::Value), c.value);
        QAccessibleTableCellInterface *at = cell->tableCellInterface();
        ASSERT_NE(at, nullptr);
        EXPECT_EQ(at->rowIndex(), c.row);
        EXPECT_EQ(at->columnIndex(), c.column);
        ASSERT_EQ(at->columnHeaderCells().size(), 1);
        EXPECT_EQ(Text(at->columnHeaderCells()[0]), Text(table->child(c.column)));
        EXPECT_EQ(cell->parent(), table);
        // One interface per place, found again by its index among the children.
        const int index = table->indexOfChild(cell);
        EXPECT_EQ(table->child(index), cell);
        EXPECT_EQ(table->childAt(cell->rect().center().x(), cell->rect().center().y()), cell);
        const QWidget *view = w->ControlView(c.list);
        const QRect local = testsupport::CellRect(
            *w, std::string(c.list) == "Listbox1" ? w->Listbox1 : w->Listbox2, c.row, c.column);
        EXPECT_EQ(cell->rect(), QRect(view->mapToGlobal(local.topLeft()), local.size()));
    }
}

TEST(ListAccess, CellsFollowTheListAndItsSelection) {
    OpenWindow w;
    QAccessibleInterface *notes = TableOf(*w, "Listbox2");
    QAccessibleInterface *fourth = notes->tableInterface()->cellAt(0, 3);
    w->PopupMenu2->SetListIndex(1); // A7: A C# E G
    EXPECT_EQ(Text(fourth), "4th Note: G");
    w->PopupMenu10->SetListIndex(1); // four strings
    EXPECT_EQ(TableOf(*w, "Listbox1")->tableInterface()->rowCount(), 5);
    EXPECT_TRUE(notes->tableInterface()->selectRow(0));
    EXPECT_EQ(w->Listbox2->ListIndex(), 0);
    EXPECT_TRUE(fourth->state().selected);
    EXPECT_EQ(notes->tableInterface()->selectedCellCount(), 4);
}
