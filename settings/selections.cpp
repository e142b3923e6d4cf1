#include "settings/selections.h"

#include "platform/popupmenu.h"

namespace varnock {

namespace {

struct Key {
    const char *section;
    const char *key;
};

// In the order they are restored and saved, one for each saved popup.
const Key kKeys[] = {
    {"Settings", "Frets"}, {"Settings", "Strings"}, {"Strings", "One"},
    {"Strings", "Two"},    {"Strings", "Three"},    {"Strings", "Four"},
};

} // namespace

void RestoreSelections(iniClass &store, const SavedPopups &popups) {
    for (std::size_t i = 0; i < popups.size(); ++i) {
        std::string value;
        const Int found = store.GetPreference(kKeys[i].section, kKeys[i].key, value);
        if (found > 0)
            popups[i]->SetListIndex(Truncate(Val(value)));
        else if (i == 0)
            popups[i]->SetListIndex(0);
    }
}

void SaveSelections(iniClass &store, const SavedPopups &popups) {
    for (std::size_t i = 0; i < popups.size(); ++i)
        store.SetPreference(kKeys[i].section, kKeys[i].key, Str(popups[i]->ListIndex()));
}

} // namespace varnock
