#include "chart/controller.h"

#include "chart/cellpaint.h"
#include "chart/controls.h"
#include "music/catalogue.h"
#include "platform/graphics.h"

namespace varnock {

namespace {
// What the platform's line ending is to the chart text; no cell holds it.
const std::string kEndOfLine = "\n";
} // namespace

ChartController::ChartController() {
    for (const ControlSpec &c : kControls) {
        if (c.kind == ControlKind::PopupMenu) {
            auto popup = std::make_unique<PopupMenu>();
            for (const char *item : c.items)
                popup->AddRow(item);
            popup->SetListIndex(c.listIndex); // no handler is bound yet
            popup->SetVisible(c.visible);
            popups_.emplace_back(c.name, std::move(popup));
        } else if (c.kind == ControlKind::Listbox) {
            lists_.emplace_back(c.name, std::make_unique<Listbox>(c.columns, c.rowHeight));
        }
    }
    PopupMenu1 = PopupByName("PopupMenu1");
    PopupMenu2 = PopupByName("PopupMenu2");
    PopupMenu4 = PopupByName("PopupMenu4");
    PopupMenu5 = PopupByName("PopupMenu5");
    PopupMenu6 = PopupByName("PopupMenu6");
    PopupMenu7 = PopupByName("PopupMenu7");
    PopupMenu8 = PopupByName("PopupMenu8");
    PopupMenu9 = PopupByName("PopupMenu9");
    PopupMenu10 = PopupByName("PopupMenu10");
    Listbox1 = ListByName("Listbox1");
    Listbox2 = ListByName("Listbox2");

    PopupMenu1->Change = [this](PopupMenu &p) { PopupMenu1_Change(p); };
    PopupMenu2->Change = [this](PopupMenu &p) { PopupMenu2_Change(p); };
    PopupMenu4->Change = [this](PopupMenu &p) { PopupMenu4_Change(p); };
    PopupMenu5->Change = [this](PopupMenu &p) { PopupMenu5_Change(p); };
    PopupMenu6->Change = [this](PopupMenu &p) { PopupMenu6_Change(p); };
    PopupMenu7->Change = [this](PopupMenu &p) { PopupMenu7_Change(p); };
    PopupMenu8->Change = [this](PopupMenu &p) { PopupMenu8_Change(p); };
    PopupMenu9->Change = [this](PopupMenu &p) { PopupMenu9_Change(p); };
    PopupMenu10->Change = [this](PopupMenu &p) { PopupMenu10_Change(p); };
    Listbox1->Open = [this](Listbox &l) { Listbox1_Open(l); };
    Listbox1->CellBackgroundPaint = [this](const Listbox &l, Graphics &g, Int r, Int c) {
        return Listbox1_CellBackgroundPaint(l, g, r, c);
    };
    Listbox1->CellTextPaint = [this](const Listbox &l, Graphics &g, Int r, Int c, Int x, Int y) {
        return Listbox1_CellTextPaint(l, g, r, c, x, y);
    };
    Listbox2->Open = [this](Listbox &l) { Listbox2_Open(l); };
    Listbox2->CellBackgroundPaint = [this](const Listbox &l, Graphics &g, Int r, Int c) {
        return Listbox2_CellBackgroundPaint(l, g, r, c);
    };
    Listbox2->CellTextPaint = [this](const Listbox &l, Graphics &g, Int r, Int c, Int x, Int y) {
        return Listbox2_CellTextPaint(l, g, r, c, x, y);
    };
}

ChartController::~ChartController() = default;

PopupMenu *ChartController::PopupByName(const std::string &name) const {
    for (const auto &[n, popup] : popups_)
        if (n == name)
            return popup.get();
    return nullptr;
}

Listbox *ChartController::ListByName(const std::string &name) const {
    for (const auto &[n, list] : lists_)
        if (n == name)
            return list.get();
    return nullptr;
}

std::array<PopupMenu *, 6> ChartController::SavedPopups() const {
    return {PopupMenu9, PopupMenu10, PopupMenu5, PopupMenu6, PopupMenu7, PopupMenu8};
}

std::array<PopupMenu *, 4> ChartController::TuningPopups() const {
    return {PopupMenu5, PopupMenu6, PopupMenu7, PopupMenu8};
}

Int ChartController::StringCount() const {
    return PopupMenu10->ListIndex() == 1 ? 4 : 3;
}

void ChartController::Open() {
    Listbox1->RaiseOpen();
    Listbox2->RaiseOpen();
    Event_Open();
}

void ChartController::Event_Open() {
    isOpening = true;
    for (const char *layout : items::kLayouts)
        PopupMenu9->AddRow(layout);
    Model.SetStartValues();
    isOpening = false;
    RestoreSaved();
    FindFrets();
}

// ---- the recompute pipeline ----

void ChartController::FindFrets() {
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
    MakeSheet();
}

// The sheet is the one pure computation every export makes too, from the
// instrument and the chord the recompute settled on; the tests hold it to
// the lists, cell for cell.
void ChartController::MakeSheet() {
    const Int open[4] = {Model.M.nOpenBassString, Model.M.nOpenMiddleString,
                         Model.M.nOpenMelodyString, Model.M.nOpenForthString};
    music::Instrument instrument;
    instrument.layout = static_cast<int>(PopupMenu9->ListIndex());
    for (Int s = 0; s < StringCount(); ++s)
        instrument.openNotes.push_back(static_cast<int>(open[s]));
    sheet_ = std::make_shared<const ChartSheet>(ComputeSheet(
        instrument, static_cast<int>(Model.SelectedChord), static_cast<int>(Model.ModeSelectMajor)));
}

void ChartController::PopulateList() {
    const Int strings = StringCount();

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
            Listbox1->SetCell(Listbox1->LastIndex(), c,
                              items::kChromaticLabels[static_cast<std::size_t>(c)]);
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

void ChartController::PopulateNotes(const std::string &notes) {
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

void ChartController::SetListHeaders() {
    const Int mode = PopupMenu9->ListIndex();
    if (mode == 0 || mode == 3 || mode == 4 || mode == 5) {
        for (Int i = 0; i <= 23; ++i)
            Listbox1->SetHeading(i, Str(i));
    } else if (mode == 1) {
        for (Int i = 0; i <= 23; ++i)
            Listbox1->SetHeading(i, items::kHeadingsMode1[static_cast<std::size_t>(i)]);
    } else if (mode == 2) {
        for (Int i = 0; i <= 23; ++i)
            Listbox1->SetHeading(i, items::kHeadingsMode2[static_cast<std::size_t>(i)]);
    }
    for (Int c = 0; c <= Listbox1->ColumnCount() - 1; ++c)
        Listbox1->SetColumnSortDirection(c, 0);
}

// ---- change handlers ----

void ChartController::PopupMenu1_Change(PopupMenu &) {
    FindFrets();
}

void ChartController::PopupMenu2_Change(PopupMenu &p) {
    Model.ModeSelectMajor = p.ListIndex();
    if (p.ListIndex() > 0)
        PopupMenu4->SetListIndex(0);
    FindFrets();
}

void ChartController::PopupMenu4_Change(PopupMenu &p) {
    Model.ModeSelectOther = p.ListIndex() - 1;
    if (p.ListIndex() > 0)
        PopupMenu2->SetListIndex(0);
    FindFrets();
}

void ChartController::PopupMenu5_Change(PopupMenu &p) {
    Model.BassSelectMenu = p.ListIndex() - 31;
    FindFrets();
}

void ChartController::PopupMenu6_Change(PopupMenu &p) {
    Model.MiddleSelectMenu = p.ListIndex() - 31;
    FindFrets();
}

void ChartController::PopupMenu7_Change(PopupMenu &p) {
    Model.MelodySelectMenu = p.ListIndex() - 31;
    FindFrets();
}

void ChartController::PopupMenu8_Change(PopupMenu &p) {
    Model.ForthSelectMenu = p.ListIndex() - 31;
    FindFrets();
}

void ChartController::PopupMenu9_Change(PopupMenu &) {
    if (isOpening)
        return;
    FindFrets();
}

void ChartController::PopupMenu10_Change(PopupMenu &p) {
    if (isOpening)
        return;
    PopupMenu8->SetVisible(p.ListIndex() != 0);
    FindFrets();
}

// ---- list events ----

void ChartController::Listbox1_Open(Listbox &) {
    SetListHeaders();
}

void ChartController::Listbox2_Open(Listbox &l) {
    for (Int c = 0; c < static_cast<Int>(items::kNotesHeadings.size()); ++c)
        l.SetHeading(c, items::kNotesHeadings[static_cast<std::size_t>(c)]);
    for (Int c = 0; c <= l.ColumnCount() - 1; ++c)
        l.SetColumnSortDirection(c, 0);
}

bool ChartController::Listbox1_CellBackgroundPaint(const Listbox &, Graphics &g, Int row,
                                                   Int column) {
    PaintTile(g, ChartFillRule(row, column, Listbox1->ListCount()));
    return false;
}

bool ChartController::Listbox1_CellTextPaint(const Listbox &l, Graphics &g, Int row, Int column,
                                             Int x, Int y) {
    return PaintChartText(g, l.Cell(row, column),
                          {Model.Note1, Model.Note2, Model.Note3, Model.Note4}, x, y);
}

bool ChartController::Listbox2_CellBackgroundPaint(const Listbox &l, Graphics &g, Int row, Int) {
    PaintTile(g, NotesFillRule(row, l.ListCount()));
    return false;
}

bool ChartController::Listbox2_CellTextPaint(const Listbox &l, Graphics &g, Int row, Int column,
                                             Int x, Int y) {
    return PaintNotesText(g, l.Cell(row, column), column, x, y);
}

} // namespace varnock
