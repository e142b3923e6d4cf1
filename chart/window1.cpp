#include "chart/window1.h"

#include "chart/cellpaint.h"
#include "settings/selections.h"
#include "shell/app.h"
#include "shell/frmabout.h"
#include "shell/menubar1.h"

#include <QCloseEvent>
#include <QLabel>
#include <QLayout>

#include <array>

namespace varnock {

namespace {

const std::array<const char *, 12> kRootItems = {
    "A", "A# / Bb", "B", "C", "C# / Db", "D", "D# / Eb", "E", "F", "F# / Gb", "G", "G# / Ab"};
const std::array<const char *, 32> kChordItems = {
    "Maj",   "7",  "maj7",   "m",     "m7",    "Dim", "Dim7", "Sus2", "Sus4", "add9", "madd9",
    "Aug",   "2",  "5",      "6",     "6/9",   "9/6", "9",    "11",   "13",   "maj9", "maj11",
    "maj13", "m6", "maj6/9", "mmaj7", "mmaj9", "m9",  "m11",  "m13",  "7/6",  "7sus4"};
const std::array<const char *, 18> kOtherChordItems = {
    "---", "-5",   "maj7+5", "m7-5",  "7-9",  "7+9",  "7-5",   "7+5",  "9-5",
    "9+5", "11-9", "13-9",   "13+11", "7/13", "-9+5", "-9+11", "-9-5", "+11"};
const std::array<const char *, 12> kTuningItems = {"D",  "D#", "E",  "F", "F#", "G",
                                                   "G#", "A",  "A#", "B", "C",  "C#"};
const std::array<const char *, 24> kHeadingsMode1 = {
    "0",  "1",  "2",  "3",   "4",  "5",  "6",  "6+", "7",  "8",  "9",  "10",
    "11", "12", "13", "13+", "14", "15", "16", "17", "18", "19", "20", "21"};
const std::array<const char *, 24> kHeadingsMode2 = {
    "0", "1",  "1+", "2",  "3",  "4",   "5",  "6",  "6+",  "7",  "8",  "8+",
    "9", "10", "11", "12", "13", "13+", "14", "15", "15+", "16", "17", "18"};
// The chromatic board's frets named as on a diatonic one, columns 0..23.
const std::array<const char *, 24> kChromaticLabels = {
    "0", "0+", "1", "1+", "2", "3",  "3+",  "4",  "4+",  "5",  "6",  "6+",
    "7", "7+", "8", "8+", "9", "10", "10+", "11", "11+", "12", "13", "13+"};

// What the platform's line ending is to the chart text; no cell holds it.
const std::string kEndOfLine = "\n";

template <std::size_t N> void AddRows(PopupMenu *popup, const std::array<const char *, N> &items) {
    for (const char *item : items)
        popup->AddRow(item);
}

} // namespace

Window1::Window1() {
    Layout();
    CreateControls();
}

void Window1::Layout() {
    setMenuBar(&TheMenuBar1());
    TheMenuBar1().SetAboutHandler([this] { _mnuAbout_Action(); });
    setWindowTitle(QStringLiteral("Varnock"));
    // A plain document window with close and minimise buttons only.
    setWindowFlags(Qt::Window | Qt::CustomizeWindowHint | Qt::WindowTitleHint |
                   Qt::WindowSystemMenuHint | Qt::WindowMinimizeButtonHint |
                   Qt::WindowCloseButtonHint);
    auto *content = new QWidget(this);
    content->setObjectName(QStringLiteral("content"));
    content->setFixedSize(kWidth, kHeight);
    setCentralWidget(content);
    layout()->setSizeConstraint(QLayout::SetFixedSize);
}

void Window1::CreateControls() {
    _CreateControls0();
}

void Window1::_CreateControls0() {
    QWidget *content = centralWidget();
    QFont bold = font();
    bold.setBold(true);
    bold.setPixelSize(12);

    const auto popup = [&](const char *name, int left, int top, int width, bool visible) {
        auto *p = new PopupMenu(content);
        p->setObjectName(QString::fromLatin1(name));
        p->setGeometry(left, top, width, 20);
        p->setVisible(visible);
        return p;
    };
    const auto label = [&](const char *name, int left, int top, const char *text) {
        auto *l = new QLabel(QString::fromLatin1(text), content);
        l->setObjectName(QString::fromLatin1(name));
        l->setGeometry(left, top, 49, 20);
        // A touch smaller than the lists' text so "Strings:" fits its 49 pixels.
        QFont labelFont = bold;
        labelFont.setPixelSize(11);
        l->setFont(labelFont);
        return l;
    };
    const auto list = [&](const char *name, int left, int top, int width, int height, Int columns,
                          Int rowHeight) {
        auto *l = new Listbox(columns, rowHeight, content);
        l->setObjectName(QString::fromLatin1(name));
        l->setGeometry(left, top, width, height);
        l->setFont(bold);
        return l;
    };

    PopupMenu2 = popup("PopupMenu2", 235, 77, 138, true);
    AddRows(PopupMenu2, kChordItems);
    PopupMenu2->Change = [this](PopupMenu &p) { PopupMenu2_Change(p); };

    PopupMenu4 = popup("PopupMenu4", 523, 78, 138, false);
    AddRows(PopupMenu4, kOtherChordItems);
    PopupMenu4->Change = [this](PopupMenu &p) { PopupMenu4_Change(p); };

    PopupMenu1 = popup("PopupMenu1", 125, 77, 85, true);
    AddRows(PopupMenu1, kRootItems);
    PopupMenu1->Change = [this](PopupMenu &p) { PopupMenu1_Change(p); };

    PopupMenu5 = popup("PopupMenu5", 20, 153, 49, true);
    AddRows(PopupMenu5, kTuningItems);
    PopupMenu5->Change = [this](PopupMenu &p) { PopupMenu5_Change(p); };

    PopupMenu6 = popup("PopupMenu6", 20, 175, 49, true);
    AddRows(PopupMenu6, kTuningItems);
    PopupMenu6->SetListIndex(7); // no handler is bound yet
    PopupMenu6->Change = [this](PopupMenu &p) { PopupMenu6_Change(p); };

    PopupMenu7 = popup("PopupMenu7", 20, 199, 49, true);
    AddRows(PopupMenu7, kTuningItems);
    PopupMenu7->Change = [this](PopupMenu &p) { PopupMenu7_Change(p); };

    Listbox1 = list("Listbox1", 76, 111, 810, 136, 23, 23);
    Listbox1->CellBackgroundPaint = [this](Listbox &l, Graphics &g, Int r, Int c) {
        return Listbox1_CellBackgroundPaint(l, g, r, c);
    };
    Listbox1->Open = [this](Listbox &l) { Listbox1_Open(l); };
    Listbox1->CellTextPaint = [this](Listbox &l, Graphics &g, Int r, Int c, Int x, Int y) {
        return Listbox1_CellTextPaint(l, g, r, c, x, y);
    };

    Listbox2 = list("Listbox2", 125, 256, 761, 44, 4, 22);
    Listbox2->Open = [this](Listbox &l) { Listbox2_Open(l); };
    Listbox2->CellBackgroundPaint = [this](Listbox &l, Graphics &g, Int r, Int c) {
        return Listbox2_CellBackgroundPaint(l, g, r, c);
    };
    Listbox2->CellTextPaint = [this](Listbox &l, Graphics &g, Int r, Int c, Int x, Int y) {
        return Listbox2_CellTextPaint(l, g, r, c, x, y);
    };

    Label1 = label("Label1", 76, 78, "Chord:");

    PopupMenu8 = popup("PopupMenu8", 20, 224, 49, false);
    AddRows(PopupMenu8, kTuningItems);
    PopupMenu8->Change = [this](PopupMenu &p) { PopupMenu8_Change(p); };

    PopupMenu9 = popup("PopupMenu9", 125, 13, 248, true);
    PopupMenu9->Change = [this](PopupMenu &p) { PopupMenu9_Change(p); };

    Label2 = label("Label2", 76, 14, "Frets:");

    PopupMenu10 = popup("PopupMenu10", 125, 45, 85, true);
    PopupMenu10->AddRow("3");
    PopupMenu10->AddRow("4");
    PopupMenu10->Change = [this](PopupMenu &p) { PopupMenu10_Change(p); };

    Label3 = label("Label3", 76, 46, "Strings:");
    Label4 = label("Label4", 76, 279, "Notes:");

    // Focus order by TabIndex, which is not the order of creation: the two
    // selectors at the top come after the chart.
    QWidget *order[] = {PopupMenu1, PopupMenu2, PopupMenu4, PopupMenu5, PopupMenu6, PopupMenu7,
                        Listbox1,   Listbox2,   PopupMenu8, PopupMenu9, PopupMenu10};
    for (std::size_t i = 0; i + 1 < std::size(order); ++i)
        QWidget::setTabOrder(order[i], order[i + 1]);
}

void Window1::Open() {
    Listbox1->RaiseOpen();
    Listbox2->RaiseOpen();
    Event_Open();
}

// ---- the recompute pipeline ----

void Window1::FindFrets() {
    if (isOpening)
        return;
    Model.SelectedChord = PopupMenu1->ListIndex();
    Model.ModeSelectMajor = PopupMenu2->ListIndex();
    Model.ModeSelectOther = PopupMenu4->ListIndex() - 1;
    Model.M.Startup(PopupMenu9->ListIndex());
    Model.Init();
    const std::string notes = Model.DisplayChord();
    PopulateNotes(notes);
    SetListHeaders();
    PopulateList();
}

void Window1::PopulateList() {
    const Int strings = PopupMenu10->ListIndex() == 1 ? 4 : 3;

    // The rows travel through one text: each cell brings its own comma.
    std::string chart;
    for (Int r = 1; r <= strings; ++r) {
        for (Int c = 0; c <= 22; ++c)
            chart += Model.TableOne(r, c);
        chart += kEndOfLine;
    }

    Listbox1->DeleteAllRows();
    Listbox1->AddRow("0");

    const Int mode = PopupMenu9->ListIndex();
    if (mode == 0 || mode == 1 || mode == 2) {
        for (Int c = 1; c <= 22; ++c)
            Listbox1->SetCell(Listbox1->LastIndex(), c, Listbox1->Heading(c));
    } else if (mode == 3) {
        for (Int c = 1; c <= 23; ++c)
            Listbox1->SetCell(Listbox1->LastIndex(), c, kChromaticLabels[c]);
    } else if (mode == 4 || mode == 5) {
        for (Int c = 1; c <= 23; ++c)
            Listbox1->SetCell(Listbox1->LastIndex(), c, "");
    }

    // The text ends in a line end, so its last field is empty and skipped.
    const std::vector<std::string> lines = Split(chart, kEndOfLine);
    const Int lastLine = static_cast<Int>(lines.size()) - 1;
    for (Int i = 0; i <= lastLine - 1; ++i) {
        const std::vector<std::string> fields = Split(lines[static_cast<std::size_t>(i)], ",");
        Listbox1->AddRow(fields.at(0));
        const Int lastField = static_cast<Int>(fields.size()) - 1;
        for (Int k = 1; k <= lastField; ++k)
            Listbox1->SetCell(Listbox1->LastIndex(), k, fields[static_cast<std::size_t>(k)]);
    }
}

void Window1::PopulateNotes(const std::string &notes) {
    Listbox2->DeleteAllRows();
    const std::vector<std::string> fields = Split(notes, ",");
    const Int last = static_cast<Int>(fields.size()) - 1;
    for (Int i = 0; i <= last; ++i) {
        if (i == 0)
            Listbox2->AddRow(fields[0]);
        else
            Listbox2->SetCell(Listbox2->LastIndex(), i, fields[static_cast<std::size_t>(i)]);
    }
}

void Window1::SetListHeaders() {
    const Int mode = PopupMenu9->ListIndex();
    if (mode == 0 || mode == 3 || mode == 4 || mode == 5) {
        for (Int i = 0; i <= 23; ++i)
            Listbox1->SetHeading(i, Str(i));
    } else if (mode == 1) {
        for (Int i = 0; i <= 23; ++i)
            Listbox1->SetHeading(i, kHeadingsMode1[static_cast<std::size_t>(i)]);
    } else if (mode == 2) {
        for (Int i = 0; i <= 23; ++i)
            Listbox1->SetHeading(i, kHeadingsMode2[static_cast<std::size_t>(i)]);
    }
    for (Int c = 0; c <= Listbox1->ColumnCount() - 1; ++c)
        Listbox1->SetColumnSortDirection(c, 0);
}

// ---- change handlers ----

void Window1::PopupMenu1_Change(PopupMenu &) {
    FindFrets();
}

void Window1::PopupMenu2_Change(PopupMenu &p) {
    Model.ModeSelectMajor = p.ListIndex();
    if (p.ListIndex() > 0)
        PopupMenu4->SetListIndex(0);
    FindFrets();
}

void Window1::PopupMenu4_Change(PopupMenu &p) {
    Model.ModeSelectOther = p.ListIndex() - 1;
    if (p.ListIndex() > 0)
        PopupMenu2->SetListIndex(0);
    FindFrets();
}

void Window1::PopupMenu5_Change(PopupMenu &p) {
    Model.BassSelectMenu = p.ListIndex() - 31;
    FindFrets();
}

void Window1::PopupMenu6_Change(PopupMenu &p) {
    Model.MiddleSelectMenu = p.ListIndex() - 31;
    FindFrets();
}

void Window1::PopupMenu7_Change(PopupMenu &p) {
    Model.MelodySelectMenu = p.ListIndex() - 31;
    FindFrets();
}

void Window1::PopupMenu8_Change(PopupMenu &p) {
    Model.ForthSelectMenu = p.ListIndex() - 31;
    FindFrets();
}

void Window1::PopupMenu9_Change(PopupMenu &) {
    if (isOpening)
        return;
    FindFrets();
}

void Window1::PopupMenu10_Change(PopupMenu &p) {
    if (isOpening)
        return;
    PopupMenu8->SetVisible(p.ListIndex() != 0);
    FindFrets();
}

// ---- list events ----

void Window1::Listbox1_Open(Listbox &) {
    SetListHeaders();
}

void Window1::Listbox2_Open(Listbox &l) {
    l.SetHeading(0, "Root");
    l.SetHeading(1, "2nd Note");
    l.SetHeading(2, "3rd Note");
    l.SetHeading(3, "4th Note");
    for (Int c = 0; c <= l.ColumnCount() - 1; ++c)
        l.SetColumnSortDirection(c, 0);
}

bool Window1::Listbox1_CellBackgroundPaint(Listbox &, Graphics &g, Int row, Int column) {
    PaintTile(g, ChartFillRule(row, column, Listbox1->ListCount()));
    return false;
}

bool Window1::Listbox1_CellTextPaint(Listbox &l, Graphics &g, Int row, Int column, Int x, Int y) {
    const auto color =
        ChartTextColor(l.Cell(row, column), Model.Note1, Model.Note2, Model.Note3, Model.Note4);
    if (!color)
        return false;
    g.ForeColor(*color);
    g.DrawString(l.Cell(row, column), static_cast<double>(x), static_cast<double>(y), 0, false);
    return true;
}

bool Window1::Listbox2_CellBackgroundPaint(Listbox &l, Graphics &g, Int row, Int) {
    PaintTile(g, NotesFillRule(row, l.ListCount()));
    return false;
}

bool Window1::Listbox2_CellTextPaint(Listbox &l, Graphics &g, Int row, Int column, Int x, Int y) {
    const auto color = NotesTextColor(column);
    if (!color)
        return false;
    g.ForeColor(*color);
    g.DrawString(l.Cell(row, column), static_cast<double>(x), static_cast<double>(y), 0, false);
    return true;
}

// ---- opening and closing ----

void Window1::Event_Open() {
    isOpening = true;
    PopupMenu9->AddRow("Diatonic");
    PopupMenu9->AddRow("Diatonic with 6+");
    PopupMenu9->AddRow("Diatonic with 1+ and 6+");
    PopupMenu9->AddRow("Chromatic");
    Model.MiddleSelectMenu = -12;
    Model.BassSelectMenu = -31;
    Model.MelodySelectMenu = -31;
    Model.ForthSelectMenu = -31;
    Model.ModeSelectMajor = 0;
    Model.ModeSelectOther = -1;
    isOpening = false;
    RestoreSelections(*this);
    FindFrets();
}

void Window1::Event_Close() {
    SaveSelections(*this);
    AppQuit();
}

void Window1::closeEvent(QCloseEvent *event) {
    // Closing the main window ends the program; save once however it is closed.
    if (!closed_) {
        closed_ = true;
        Event_Close();
    }
    event->accept();
}

bool Window1::_mnuAbout_Action() {
    ShowAbout(this);
    return true;
}

} // namespace varnock
