#pragma once

// The chord model: note names, the chord catalogue, fret layouts, the tuning,
// the notes under every fret position and the spelling and location of a chord.
// Module1 holds the module-level data; ChordModel holds the properties and the
// chord routines that belong to the main window, so the whole computation runs
// (and is tested) without a window.

#include "platform/basic.h"

#include <string>

namespace varnock {

struct Module1 {
    // Note names by note index (semitones above A), sharps only.
    Array<std::string> NoteList;
    // The 32 chord formulas, in the order of the chord type popup.
    Array<std::string> MajorChordsInt;
    // Exist and stay empty by design; Init and DisplayChord refer to them.
    Array<std::string> MajorChords, ExtendedChords, ExtendedChordsInt, ObscureChords,
        ObscureChordsInt, AllMajorChords, AllExtendedChords, AllObscureChords;
    // Semitones above the open string, mod 12, for the 23 fret positions.
    Array<Int> Fret_Indices;
    // Note name under each fret position, per string.
    Array<std::string> Bass_List, Middle_List, Melody_List, Forth_List;
    // Open note of each string, a note index.
    Int nOpenBassString = 5, nOpenMiddleString = 0, nOpenMelodyString = 5, nOpenForthString = 5;
    // Working indices of FretArrayUpdate; hold position 22's values afterwards.
    Int nBassIndex = 0, nMiddleIndex = 0, nMelodyIndex = 0, nForthIndex = 0;

    // Rebuilds MajorChordsInt, Fret_Indices for the mode (an unknown mode keeps
    // the table in force), four empty note lists and NoteList.
    void Startup(Int mode);
};

class ChordModel {
  public:
    Module1 M;

    // Selection properties (signed 64-bit, 0 / False at creation).
    Int SelectedChord = 0;   // the root's note index
    Int ModeSelectMajor = 0; // index of MajorChordsInt
    Int ModeSelectOther = 0; // index of ObscureChordsInt, -1 for none
    // Rows 0..4, columns 0..24; rows 1..4 and columns 0..22 are used.
    Array2<std::string> TableOne{4, 24};
    // Tuning properties: popup index minus 31 (any value congruent mod 12 names the same note).
    Int MiddleSelectMenu = 0, MelodySelectMenu = 0, BassSelectMenu = 0;
    std::string Note1, Note2, Note3, Note4;
    Int ForthSelectMenu = 0;

    // The values the window gives the selection properties as it opens: the
    // tuning D, A, D and D (the middle string's -12 names A as -24 would),
    // the first chord type and none of the other list.
    void SetStartValues();

    void Init();
    void FretArrayUpdate();
    // Spells the chord, marks TableOne and returns the notes joined by ",".
    std::string DisplayChord();
    void ResetFretboard();
    void ListUpdate(const std::string &note);
    void DisplayNotes(Int root, const std::string &formula);
};

} // namespace varnock
