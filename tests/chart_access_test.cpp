// What a screen reader gets from the window's two tables: their shape,
// headings and cell texts through Qt's accessibility interfaces, and a
// current cell that the arrow keys move without changing a pixel.

#include "platform/listboxaccessible.h"
#include "support.h"

#include <QAccessible>
#include <QTest>
#include <gtest/gtest.h>

#include <iterator>
#include <string>
#include <vector>

using namespace varnock;
using testsupport::Grab;
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

TEST(ListAccess, ArrowKeysMoveTheCurrentCellAndNothingElse) {
    OpenWindow w;
    w->show();
    w->activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(w.window.get()));
    auto *view = static_cast<ListboxView *>(w->ControlView("Listbox1"));
    view->setFocus();
    ASSERT_TRUE(view->hasFocus());
    // Up and Down move the selected row as they always did; the first key
    // lands on the first cell.
    const struct {
        Qt::Key key;
        int row, column, selected;
    } steps[] = {
        {Qt::Key_Right, 0, 0, -1}, {Qt::Key_Right, 0, 1, -1}, {Qt::Key_Right, 0, 2, -1},
        {Qt::Key_Left, 0, 1, -1},  {Qt::Key_Left, 0, 0, -1},  {Qt::Key_Left, 0, 0, -1},
        {Qt::Key_Down, 0, 0, 0},   {Qt::Key_Down, 1, 0, 1},   {Qt::Key_Right, 1, 1, 1},
        {Qt::Key_Up, 0, 1, 0},
    };
    QImage before = Grab(w.window.get());
    for (const auto &s : steps) {
        QTest::keyClick(view, s.key);
        EXPECT_EQ(view->CurrentRow(), s.row);
        EXPECT_EQ(view->CurrentColumn(), s.column);
        EXPECT_EQ(
            Text(TableOf(*w, "Listbox1")->focusChild()),
            ListboxCellName(w->Listbox1->Heading(s.column), w->Listbox1->Cell(s.row, s.column)));
        EXPECT_EQ(w->Listbox1->ListIndex(), s.selected);
        // Only the selected row's highlight, which Up and Down always moved,
        // may change the window.
        const QImage after = Grab(w.window.get());
        if (s.key == Qt::Key_Left || s.key == Qt::Key_Right) {
            EXPECT_EQ(after, before) << "key " << s.key;
        }
        before = after;
    }
}
