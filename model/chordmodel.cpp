#include "model/chordmodel.h"

#include "music/catalogue.h"
#include "music/layouts.h"

#include <cstdint>

namespace varnock {

namespace {

// The last fret position: every layout has 23 columns, 0..22.
constexpr Int kLastPosition = music::kLastPosition;

// Sums wrap at the 64-bit ends as the platform's integers do, rather than
// being undefined. No value the popups give comes anywhere near those ends.
Int Add(Int a, Int b) {
    return static_cast<Int>(static_cast<std::uint64_t>(a) + static_cast<std::uint64_t>(b));
}

// One pass of Init: the spelling of every type of a name list on every root,
// as note indices, into the matching All array. The bound comes from the name
// list, which stays empty, so the inner loop body never runs.
void SpellAll(const Array<std::string> &names, const Array<std::string> &formulas,
              Array<std::string> &all) {
    Int k = 0;
    for (Int root = 0; root <= 11; ++root) {
        for (Int t = 0; t <= names.Ubound(); ++t) {
            const std::string &formula = formulas(t);
            std::string line = Str(root) + " ";
            const Array<std::string> steps(Split(formula, ","));
            Int current = root;
            for (Int i = 0; i <= steps.Ubound(); ++i) {
                current = Truncate(static_cast<double>(current) + Val(steps(i))) % 12;
                line += Str(current) + " ";
            }
            all(k) = line;
            ++k;
        }
    }
}

} // namespace

void Module1::Startup(Int mode) {
    // Entry i pairs with item i of the chord type popup; both come from the catalogue.
    std::vector<std::string> formulas;
    for (const catalogue::ChordType &type : catalogue::kChordTypes)
        formulas.emplace_back(type.formula);
    MajorChordsInt = Array<std::string>(std::move(formulas));

    // Each layout's octave of frets, taken mod 12, at the 23 positions. An
    // unknown mode keeps the table in force.
    if (mode >= 0 && mode < music::kLayoutCount) {
        std::vector<Int> indices;
        for (int p = 0; p <= kLastPosition; ++p)
            indices.push_back(
                music::FretSemitones(music::kLayouts[static_cast<std::size_t>(mode)], p) % 12);
        Fret_Indices = Array<Int>(std::move(indices));
    }

    Melody_List = Array<std::string>::Sized(kLastPosition + 1);
    Middle_List = Array<std::string>::Sized(kLastPosition + 1);
    Bass_List = Array<std::string>::Sized(kLastPosition + 1);
    Forth_List = Array<std::string>::Sized(kLastPosition + 1);

    // Sharps only: the names are also the keys ListUpdate compares by.
    std::vector<std::string> names;
    for (const catalogue::NoteNames &note : catalogue::kNotes)
        names.emplace_back(note.sharp);
    NoteList = Array<std::string>(std::move(names));
}

void ChordModel::SetStartValues() {
    MiddleSelectMenu = -12;
    BassSelectMenu = -31;
    MelodySelectMenu = -31;
    ForthSelectMenu = -31;
    ModeSelectMajor = 0;
    ModeSelectOther = -1;
}

void ChordModel::Init() {
    SpellAll(M.MajorChords, M.MajorChordsInt, M.AllMajorChords);
    SpellAll(M.ExtendedChords, M.ExtendedChordsInt, M.AllExtendedChords);
    SpellAll(M.ObscureChords, M.ObscureChordsInt, M.AllObscureChords);
    // Uses the open notes the last recompute left; DisplayChord redoes it.
    FretArrayUpdate();
}

void ChordModel::FretArrayUpdate() {
    for (Int p = 0; p <= kLastPosition; ++p) {
        M.nBassIndex = Add(M.Fret_Indices(p), M.nOpenBassString) % 12;
        M.nMiddleIndex = Add(M.Fret_Indices(p), M.nOpenMiddleString) % 12;
        M.nMelodyIndex = Add(M.Fret_Indices(p), M.nOpenMelodyString) % 12;
        M.nForthIndex = Add(M.Fret_Indices(p), M.nOpenForthString) % 12;
        M.Bass_List(p) = M.NoteList(M.nBassIndex);
        M.Middle_List(p) = M.NoteList(M.nMiddleIndex);
        M.Melody_List(p) = M.NoteList(M.nMelodyIndex);
        M.Forth_List(p) = M.NoteList(M.nForthIndex);
    }
}

std::string ChordModel::DisplayChord() {
    const Int root = SelectedChord;
    const Int major = ModeSelectMajor;
    const Int other = ModeSelectOther;

    ResetFretboard();

    // A tuning property is the popup index minus 31; adding 36 makes it
    // positive before the remainder, giving the NoteList index of the item.
    M.nOpenBassString = Add(BassSelectMenu, 36) % 12;
    M.nOpenMiddleString = Add(MiddleSelectMenu, 36) % 12;
    M.nOpenMelodyString = Add(MelodySelectMenu, 36) % 12;
    M.nOpenForthString = Add(ForthSelectMenu, 36) % 12;

    FretArrayUpdate();

    if (major >= 0) {
        ModeSelectOther = -1;
        DisplayNotes(root, M.MajorChordsInt(major));
    } else {
        // Not reachable from the popups, which always select a chord type.
        DisplayNotes(root, M.ObscureChordsInt(other));
    }

    // Note3 goes through even when empty; an empty name matches no list entry.
    ListUpdate(Note1);
    ListUpdate(Note2);
    ListUpdate(Note3);
    if (!Note4.empty())
        ListUpdate(Note4);

    // Always three fields, so a two-note chord keeps its trailing comma.
    std::string notes = Note1 + "," + Note2 + "," + Note3;
    if (!Note4.empty())
        notes += "," + Note4;
    return notes;
}

void ChordModel::ResetFretboard() {
    for (Int row = 1; row <= 4; ++row) {
        for (Int col = 0; col <= kLastPosition; ++col)
            TableOne(row, col).assign(1, ','); // an empty cell is one comma
    }
}

void ChordModel::ListUpdate(const std::string &note) {
    // The four tests are independent: one note may land on every string at a position.
    for (Int p = 0; p <= kLastPosition; ++p) {
        if (M.Bass_List(p) == note)
            TableOne(1, p) = note + ",";
        if (M.Middle_List(p) == note)
            TableOne(2, p) = note + ",";
        if (M.Melody_List(p) == note)
            TableOne(3, p) = note + ",";
        if (M.Forth_List(p) == note)
            TableOne(4, p) = note + ",";
    }
}

void ChordModel::DisplayNotes(Int root, const std::string &formula) {
    // The root is used as given: one outside 0..11 fails at this first read,
    // before any name changes.
    Int current = root;
    Note1 = M.NoteList(root);
    Note2.clear();
    Note3.clear();
    Note4.clear();

    Int slot = 2;
    const Array<std::string> steps(Split(formula, ","));
    for (Int i = 0; i <= steps.Ubound(); ++i) {
        // Each step counts from the previous note, not from the root.
        const Int step = Truncate(Val(steps(i)));
        current = Add(step, current) % 12;
        if (slot == 2)
            Note2 = M.NoteList(current);
        else if (slot == 3)
            Note3 = M.NoteList(current);
        else if (slot == 4)
            Note4 = M.NoteList(current);
        // Beyond the fourth note there is no slot; such steps are dropped.
        ++slot;
    }
}

} // namespace varnock
