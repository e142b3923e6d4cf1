#pragma once

// The chart's controller: the selections as popups, the chart and notes
// tables, and the one recompute pipeline, FindFrets, that every change of a
// selection runs. Everything here works on plain objects that have no
// widget; the main window is a view of them, and the export command runs
// the very same pipeline and paint events without ever showing anything.

#include "music/chartsheet.h"
#include "model/chordmodel.h"
#include "platform/listbox.h"
#include "platform/popupmenu.h"

#include <array>
#include <memory>
#include <string>
#include <vector>

namespace varnock {

class Graphics;

class ChartController {
  public:
    // Makes the controls of the window's table; nothing is computed yet.
    ChartController();
    virtual ~ChartController();
    ChartController(const ChartController &) = delete;
    ChartController &operator=(const ChartController &) = delete;

    // The opening: the Open events of the two lists, then Event_Open.
    void Open();

    // Fills the layout popup, gives the selection properties their start
    // values, restores the saved selections and draws the first chart.
    void Event_Open();

    // The chord model with the selection properties, TableOne and Note1..Note4.
    ChordModel Model;
    bool isOpening = false;

    // Controls, by the names the rest of the program knows them by.
    PopupMenu *PopupMenu2 = nullptr;
    PopupMenu *PopupMenu4 = nullptr;
    PopupMenu *PopupMenu1 = nullptr;
    PopupMenu *PopupMenu5 = nullptr;
    PopupMenu *PopupMenu6 = nullptr;
    PopupMenu *PopupMenu7 = nullptr;
    Listbox *Listbox1 = nullptr;
    Listbox *Listbox2 = nullptr;
    PopupMenu *PopupMenu8 = nullptr;
    PopupMenu *PopupMenu9 = nullptr;
    PopupMenu *PopupMenu10 = nullptr;

    // The popups by name, as the window's table knows them; nullptr for a
    // name that is no popup.
    PopupMenu *PopupByName(const std::string &name) const;
    Listbox *ListByName(const std::string &name) const;

    // The six popups the settings file keeps, in the order of its keys:
    // layout, strings, then the four tunings.
    std::array<PopupMenu *, 6> SavedPopups() const;

    // The four tuning popups, Bass first.
    std::array<PopupMenu *, 4> TuningPopups() const;
    // 4 when PopupMenu10 says so, else 3.
    Int StringCount() const;

    // What the last recompute shows; empty before the first.
    const ChartSheet &Sheet() const { return *sheet_; }

    // The recompute pipeline and what it fills.
    void FindFrets();
    void PopulateList();
    void PopulateNotes(const std::string &notes);
    void SetListHeaders();

    void PopupMenu1_Change(PopupMenu &);
    void PopupMenu2_Change(PopupMenu &);
    void PopupMenu4_Change(PopupMenu &);
    void PopupMenu5_Change(PopupMenu &);
    void PopupMenu6_Change(PopupMenu &);
    void PopupMenu7_Change(PopupMenu &);
    void PopupMenu8_Change(PopupMenu &);
    void PopupMenu9_Change(PopupMenu &);
    void PopupMenu10_Change(PopupMenu &);

    void Listbox1_Open(Listbox &);
    void Listbox2_Open(Listbox &);
    bool Listbox1_CellBackgroundPaint(const Listbox &, Graphics &g, Int row, Int column);
    bool Listbox1_CellTextPaint(const Listbox &, Graphics &g, Int row, Int column, Int x, Int y);
    bool Listbox2_CellBackgroundPaint(const Listbox &, Graphics &g, Int row, Int column);
    bool Listbox2_CellTextPaint(const Listbox &, Graphics &g, Int row, Int column, Int x, Int y);

  protected:
    // Brings back the saved selections, between the start values and the
    // first chart; nothing where no settings are kept.
    virtual void RestoreSaved() {}

  private:
    void MakeSheet();

    std::shared_ptr<const ChartSheet> sheet_ = std::make_shared<const ChartSheet>();
    std::vector<std::pair<std::string, std::unique_ptr<PopupMenu>>> popups_;
    std::vector<std::pair<std::string, std::unique_ptr<Listbox>>> lists_;
};

} // namespace varnock
