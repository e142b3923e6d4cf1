#include "chart/controls.h"

#include "music/catalogue.h"
#include "music/chartsheet.h"
#include "music/layouts.h"

#include <stdexcept>
#include <string>

namespace varnock {

namespace {
// The root popup names both spellings where a note has two: "A# / Bb".
std::array<std::string, 12> RootTexts() {
    std::array<std::string, 12> texts;
    for (std::size_t i = 0; i < texts.size(); ++i)
        texts[i] = catalogue::RootItem(static_cast<int>(i));
    return texts;
}
const std::array<std::string, 12> kRootTexts = RootTexts();

// The catalogue's names are string literals, so their text ends in a zero.
constexpr std::array<const char *, 32> ChordTexts() {
    std::array<const char *, 32> texts{};
    for (std::size_t i = 0; i < texts.size(); ++i)
        texts[i] = catalogue::kChordTypes[i].name.data();
    return texts;
}

// The tuning popups run from D, the model's sharps.
constexpr std::array<const char *, 12> TuningTexts() {
    std::array<const char *, 12> texts{};
    for (std::size_t i = 0; i < texts.size(); ++i)
        texts[i] = catalogue::kNotes[(i + 5) % 12].sharp.data();
    return texts;
}

// The chart's column names of a layout, all 24 columns of its list, from the
// layout's one octave of frets.
using ColumnNames = std::array<music::FretName, 24>;
constexpr ColumnNames Columns(int mode, bool labels) {
    ColumnNames names{};
    const music::FretLayout &layout = music::kLayouts[static_cast<std::size_t>(mode)];
    for (int c = 0; c < 24; ++c)
        names[static_cast<std::size_t>(c)] =
            labels ? music::LabelName(layout, c) : music::HeadingName(layout, c);
    return names;
}
constexpr ColumnNames kMode1Headings = Columns(1, false);
constexpr ColumnNames kMode2Headings = Columns(2, false);
constexpr ColumnNames kChromaticNames = Columns(3, true);

// The columns the window shows, 0..22, as one line, to hold them to what it
// has always shown.
constexpr bool Shows(const ColumnNames &names, std::string_view line) {
    std::string_view rest = line;
    for (int c = 0; c < music::kPositions; ++c) {
        const std::string_view name = names[static_cast<std::size_t>(c)].View();
        if (!rest.starts_with(name))
            return false;
        rest.remove_prefix(name.size());
        if (c < music::kLastPosition && !rest.starts_with(' '))
            return false;
        rest.remove_prefix(c < music::kLastPosition ? 1 : 0);
    }
    return rest.empty();
}
static_assert(Shows(kMode1Headings, "0 1 2 3 4 5 6 6+ 7 8 9 10 11 12 13 13+ 14 15 16 17 18 19 20"));
static_assert(Shows(kMode2Headings,
                    "0 1 1+ 2 3 4 5 6 6+ 7 8 8+ 9 10 11 12 13 13+ 14 15 15+ 16 17"));
static_assert(Shows(kChromaticNames,
                    "0 0+ 1 1+ 2 3 3+ 4 4+ 5 6 6+ 7 7+ 8 8+ 9 10 10+ 11 11+ 12 13"));

std::array<const char *, 24> Texts(const ColumnNames &names) {
    std::array<const char *, 24> texts{};
    for (std::size_t i = 0; i < texts.size(); ++i)
        texts[i] = names[i].CStr();
    return texts;
}
} // namespace

namespace items {
const std::array<const char *, 12> kRoots = [] {
    std::array<const char *, 12> texts{};
    for (std::size_t i = 0; i < texts.size(); ++i)
        texts[i] = kRootTexts[i].c_str();
    return texts;
}();
const std::array<const char *, 32> kChords = ChordTexts();
const std::array<const char *, 18> kOtherChords = {
    "---", "-5",   "maj7+5", "m7-5",  "7-9",  "7+9",  "7-5",   "7+5",  "9-5",
    "9+5", "11-9", "13-9",   "13+11", "7/13", "-9+5", "-9+11", "-9-5", "+11"};
const std::array<const char *, 12> kTuning = TuningTexts();
const std::array<const char *, 4> kLayouts = [] {
    std::array<const char *, 4> texts{};
    for (std::size_t i = 0; i < texts.size(); ++i)
        texts[i] = music::kLayouts[i].name.data();
    return texts;
}();
const std::array<const char *, 4> kNotesHeadings = [] {
    std::array<const char *, 4> texts{};
    for (std::size_t i = 0; i < texts.size(); ++i)
        texts[i] = kNotesTableHeadings[i].data();
    return texts;
}();
const std::array<const char *, 24> kHeadingsMode1 = Texts(kMode1Headings);
const std::array<const char *, 24> kHeadingsMode2 = Texts(kMode2Headings);
const std::array<const char *, 24> kChromaticLabels = Texts(kChromaticNames);
} // namespace items

namespace {
const std::array<const char *, 2> kStringCounts = {"3", "4"};
const std::array<const char *, 1> kChordLabel = {"Chord:"};
const std::array<const char *, 1> kFretsLabel = {"Frets:"};
const std::array<const char *, 1> kStringsLabel = {"Strings:"};
const std::array<const char *, 1> kNotesLabel = {"Notes:"};
constexpr std::span<const char *const> kNone;
using K = ControlKind;
} // namespace

// clang-format off
const std::array<ControlSpec, 15> kControls = {{
    // name          kind          left top  width height tab visible items
    {"PopupMenu2",  K::PopupMenu, 235,  77, 138,  20,    2,  true,  items::kChords},
    {"PopupMenu4",  K::PopupMenu, 523,  78, 138,  20,    4,  false, items::kOtherChords},
    {"PopupMenu1",  K::PopupMenu, 125,  77,  85,  20,    1,  true,  items::kRoots},
    {"PopupMenu5",  K::PopupMenu,  20, 153,  49,  20,    5,  true,  items::kTuning},
    {"PopupMenu6",  K::PopupMenu,  20, 175,  49,  20,    6,  true,  items::kTuning, 7},
    {"PopupMenu7",  K::PopupMenu,  20, 199,  49,  20,    7,  true,  items::kTuning},
    {"Listbox1",    K::Listbox,    76, 111, 810, 136,    8,  true,  kNone, 0, 23, 23},
    {"Listbox2",    K::Listbox,   125, 256, 761,  44,    9,  true,  kNone, 0, 4, 22},
    {"Label1",      K::Label,      76,  78,  49,  20,   10,  true,  kChordLabel},
    {"PopupMenu8",  K::PopupMenu,  20, 224,  49,  20,   11,  false, items::kTuning},
    {"PopupMenu9",  K::PopupMenu, 125,  13, 248,  20,   12,  true,  kNone},
    {"Label2",      K::Label,      76,  14,  49,  20,   13,  true,  kFretsLabel},
    {"PopupMenu10", K::PopupMenu, 125,  45,  85,  20,   14,  true,  kStringCounts},
    {"Label3",      K::Label,      76,  46,  49,  20,   15,  true,  kStringsLabel},
    {"Label4",      K::Label,      76, 279,  49,  20,   16,  true,  kNotesLabel},
}};
// clang-format on

const ControlSpec &ControlByName(std::string_view name) {
    for (const ControlSpec &control : kControls)
        if (name == control.name)
            return control;
    throw std::out_of_range("no control named " + std::string(name));
}

} // namespace varnock
