// What a screen reader gets from the window's two tables, through Qt's
// accessibility interfaces, and the arrow keys that move its current cell
// without changing a pixel; and the one-shape gradient tiles of vector files.

#include "chart/cellpaint.h"
#include "platform/graphics.h"
#include "support.h"

#include <QAccessible>
#include <QBuffer>
#include <QPainter>
#include <QPdfWriter>
#include <QTest>
#include <gtest/gtest.h>

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

TEST(ListAccess, EverySelectorIsNamedForAScreenReader) {
    OpenWindow w;
    const std::pair<const char *, const char *> names[] = {
        {"PopupMenu9", "Frets"},
        {"PopupMenu10", "Strings"},
        {"PopupMenu1", "Chord root"},
        {"PopupMenu2", "Chord type"},
        {"PopupMenu5", "Tuning of string 1"},
        {"PopupMenu8", "Tuning of string 4"},
    };
    for (const auto &[control, spoken] : names)
        EXPECT_EQ(Text(QAccessible::queryAccessibleInterface(w->ControlView(control)),
                       QAccessible::Description),
                  spoken);
    // A label is the label of the control it names.
    const auto labels = QAccessible::queryAccessibleInterface(w->ControlView("PopupMenu9"))
                            ->relations(QAccessible::Label);
    ASSERT_EQ(labels.size(), 1);
    EXPECT_EQ(Text(labels[0].first), "Frets:");
}

TEST(ListAccess, TablesShowTheirShapeAndHeadings) {
    OpenWindow w; // A Maj on D A D
    const struct {
        const char *list, *name;
        int rows, columns;
        const char *firstHeading;
    } tables[] = {{"Listbox1", "Chart", 4, 23, "0"}, {"Listbox2", "Notes", 1, 4, "Root"}};
    for (const auto &t : tables) {
        SCOPED_TRACE(t.list);
        QAccessibleInterface *table = TableOf(*w, t.list);
        ASSERT_TRUE(table && table->tableInterface());
        QAccessibleTableInterface *grid = table->tableInterface();
        EXPECT_EQ(table->role(), QAccessible::Table);
        EXPECT_EQ(Text(table), t.name);
        EXPECT_EQ(grid->rowCount(), t.rows);
        EXPECT_EQ(grid->columnCount(), t.columns);
        EXPECT_EQ(grid->columnDescription(0).toStdString(), t.firstHeading);
        // The headings come first among the children, then the cells.
        EXPECT_EQ(table->childCount(), (t.rows + 1) * t.columns);
        EXPECT_EQ(table->child(0)->role(), QAccessible::ColumnHeader);
        EXPECT_EQ(Text(table->child(0)), t.firstHeading);
    }
}

TEST(ListAccess, CellsReadHeadingAndTextAndFollowTheList) {
    OpenWindow w;
    const struct {
        const char *list;
        int row, column;
        const char *name, *value;
    } cells[] = {
        {"Listbox1", 0, 7, "7: 7", "7"},    {"Listbox1", 1, 1, "1: E", "E"},
        {"Listbox1", 2, 2, "2: C#", "C#"},  {"Listbox1", 1, 0, "0: (empty)", ""},
        {"Listbox2", 0, 0, "Root: A", "A"}, {"Listbox2", 0, 3, "4th Note: (empty)", ""},
    };
    for (const auto &c : cells) {
        SCOPED_TRACE(c.name);
        QAccessibleInterface *table = TableOf(*w, c.list);
        QAccessibleInterface *cell = table->tableInterface()->cellAt(c.row, c.column);
        ASSERT_NE(cell, nullptr);
        EXPECT_EQ(cell->role(), QAccessible::Cell);
        EXPECT_EQ(Text(cell), c.name);
        EXPECT_EQ(Text(cell, QAccessible::Value), c.value);
        QAccessibleTableCellInterface *at = cell->tableCellInterface();
        ASSERT_NE(at, nullptr);
        EXPECT_EQ(std::pair(at->rowIndex(), at->columnIndex()), std::pair(c.row, c.column));
        EXPECT_EQ(at->columnHeaderCells(), QList{table->child(c.column)});
        // One interface per place, found again as a child and by its place.
        EXPECT_EQ(table->child(table->indexOfChild(cell)), cell);
        EXPECT_EQ(table->childAt(cell->rect().center().x(), cell->rect().center().y()), cell);
        const QWidget *view = w->ControlView(c.list);
        const QRect local = ListboxCellRect(static_cast<const ListboxView *>(view)->List(),
                                            view->size(), c.row, c.column);
        EXPECT_EQ(cell->rect(), QRect(view->mapToGlobal(local.topLeft()), local.size()));
    }
    // Cells read the list afresh and know its selection.
    QAccessibleInterface *notes = TableOf(*w, "Listbox2");
    QAccessibleInterface *fourth = notes->tableInterface()->cellAt(0, 3);
    w->PopupMenu2->SetListIndex(1); // A7: A C# E G
    EXPECT_EQ(Text(fourth), "4th Note: G");
    w->PopupMenu10->SetListIndex(1); // four strings
    EXPECT_EQ(TableOf(*w, "Listbox1")->tableInterface()->rowCount(), 5);
    EXPECT_TRUE(notes->tableInterface()->selectRow(0));
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
    QAccessibleInterface *table = TableOf(*w, "Listbox1");
    // Up and Down move the selected row as they always did; the first key
    // lands on the first cell.
    const struct {
        Qt::Key key;
        Int row, column, selected;
    } steps[] = {
        {Qt::Key_Right, 0, 0, -1}, {Qt::Key_Right, 0, 1, -1}, {Qt::Key_Right, 0, 2, -1},
        {Qt::Key_Left, 0, 1, -1},  {Qt::Key_Left, 0, 0, -1},  {Qt::Key_Left, 0, 0, -1},
        {Qt::Key_Down, 0, 0, 0},   {Qt::Key_Down, 1, 0, 1},   {Qt::Key_Right, 1, 1, 1},
        {Qt::Key_Up, 0, 1, 0},
    };
    QImage before = Grab(w.window.get());
    for (const auto &s : steps) {
        QTest::keyClick(view, s.key);
        EXPECT_EQ(std::pair(view->CurrentRow(), view->CurrentColumn()), std::pair(s.row, s.column));
        EXPECT_EQ(table->focusChild(), table->tableInterface()->cellAt(s.row, s.column));
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

TEST(VectorTiles, TheShapePassesThroughEachRowsColour) {
    for (const auto &[height, bottom] :
         {std::pair{23, colors::kGradientGreen}, std::pair{22, colors::kGradientGrey}}) {
        std::vector<Color> rows;
        for (int y = 0; y < height; ++y)
            rows.push_back(GradientColor(colors::kGradientTop, bottom, y, height));
        QImage image(30, height + 10, QImage::Format_RGB32);
        image.fill(Qt::white);
        QPainter painter(&image);
        Graphics(painter, QRect(5, 5, 20, height)).FillVerticalGradient(0, 0, 20, height, rows);
        painter.end();
        for (int y = 0; y < height; ++y)
            for (const int x : {5, 15, 24})
                ASSERT_EQ(testsupport::Pixel(image, x, y + 5), rows[y]) << height << " " << y;
        EXPECT_EQ(testsupport::Pixel(image, 4, 10), 0xFFFFFFu); // cut to the cell
        EXPECT_EQ(testsupport::Pixel(image, 25, 10), 0xFFFFFFu);
    }
}
