#pragma once

// The main window: the selectors, the chart with a tuning popup beside each
// string, and the notes table. Every change of a selection runs FindFrets,
// which recomputes the whole chart from nothing.

#include "chart/listbox.h"
#include "chart/popupmenu.h"
#include "model/chordmodel.h"

#include <QMainWindow>

class QLabel;

namespace varnock {

class Window1 : public QMainWindow {
  public:
    // Builds the window and its controls; nothing is computed yet.
    Window1();

    // The window's opening: the Open events of the two lists, then Event_Open.
    void Open();

    // The chord model with the window's selection properties, TableOne and
    // Note1..Note4.
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
    QLabel *Label1 = nullptr;
    PopupMenu *PopupMenu8 = nullptr;
    PopupMenu *PopupMenu9 = nullptr;
    QLabel *Label2 = nullptr;
    PopupMenu *PopupMenu10 = nullptr;
    QLabel *Label3 = nullptr;
    QLabel *Label4 = nullptr;

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
    bool Listbox1_CellBackgroundPaint(Listbox &, Graphics &g, Int row, Int column);
    bool Listbox1_CellTextPaint(Listbox &, Graphics &g, Int row, Int column, Int x, Int y);
    bool Listbox2_CellBackgroundPaint(Listbox &, Graphics &g, Int row, Int column);
    bool Listbox2_CellTextPaint(Listbox &, Graphics &g, Int row, Int column, Int x, Int y);

    // Restores the saved selections and draws the first chart.
    void Event_Open();
    // Saves the selections and ends the program.
    void Event_Close();

    // The About command of the menu bar.
    bool _mnuAbout_Action();

    // Content area size; the window cannot be resized.
    static constexpr int kWidth = 906;
    static constexpr int kHeight = 320;

  protected:
    void closeEvent(QCloseEvent *event) override;

  private:
    void Layout();
    void CreateControls();
    void _CreateControls0();

    bool closed_ = false;
};

} // namespace varnock
