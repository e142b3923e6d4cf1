#include "music/layouts.h"

#include <stdexcept>

namespace varnock::music {

const FretLayout &Layout(int mode) {
    if (mode < 0 || mode >= kLayoutCount)
        throw std::out_of_range("no fret layout " + std::to_string(mode));
    return kLayouts[static_cast<std::size_t>(mode)];
}

std::string LayoutName(int mode) {
    if (mode >= 0 && mode < kMenuLayouts)
        return std::string(kLayouts[static_cast<std::size_t>(mode)].name);
    return "Layout " + std::to_string(mode);
}

std::vector<std::string> FretNames(int mode) {
    const FretLayout &layout = Layout(mode);
    std::vector<std::string> names;
    for (int p = 0; p < kPositions; ++p)
        names.emplace_back(HeadingName(layout, p).View());
    return names;
}

std::vector<std::string> DiatonicNames(int mode) {
    const FretLayout &layout = Layout(mode);
    std::vector<std::string> names;
    if (layout.labels == LabelRow::Diatonic)
        for (int p = 0; p < kPositions; ++p)
            names.emplace_back(DiatonicName(FretSemitones(layout, p)).View());
    return names;
}

} // namespace varnock::music
