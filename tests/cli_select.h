#pragma once

// The window set from varnock-chart's own arguments, as a user would set
// its popups, so the two can be compared.

#include "chart/controller.h"
#include "chart/controls.h"
#include "cli/names.h"
#include "music/catalogue.h"

#include <algorithm>
#include <string_view>

namespace testsupport {

inline void Apply(varnock::ChartController &chart, const varnock::cli::Selection &s) {
    if (s.frets) {
        // The layouts the menu lacks are reached by their mode number.
        chart.PopupMenu9->IndexBeyondItems = true;
        chart.PopupMenu9->SetListIndex(*s.frets);
        chart.PopupMenu9->IndexBeyondItems = false;
    }
    if (s.strings)
        chart.PopupMenu10->SetListIndex(*s.strings);
    const auto tunings = chart.TuningPopups();
    const auto &items = varnock::items::kTuning;
    for (std::size_t i = 0; i < s.tuning.size(); ++i) {
        const std::string name = varnock::catalogue::SharpName(s.tuning[i]);
        tunings[i]->SetListIndex(std::find(items.begin(), items.end(), std::string_view(name)) -
                                 items.begin());
    }
    if (s.root)
        chart.PopupMenu1->SetListIndex(*s.root);
    if (s.chord)
        chart.PopupMenu2->SetListIndex(*s.chord);
}

} // namespace testsupport
