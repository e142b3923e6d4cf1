#pragma once

// What the model tests share: the start tuning and one recompute in the main
// window's order.

#include "model/chordmodel.h"

#include <string>

namespace modelsupport {

inline void DefaultTuning(varnock::ChordModel &m) {
    m.SetStartValues();
}

inline std::string Recompute(varnock::ChordModel &m, varnock::Int mode, varnock::Int root,
                             varnock::Int chord) {
    m.SelectedChord = root;
    m.ModeSelectMajor = chord;
    m.M.Startup(mode);
    m.Init();
    return m.DisplayChord();
}

} // namespace modelsupport
