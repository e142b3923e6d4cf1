#include "settings/selections.h"

#include "chart/window1.h"
#include "settings/location.h"

namespace varnock {

namespace {

struct SavedPopup {
    const char *section;
    const char *key;
    PopupMenu *Window1::*popup;
};

// In the order they are restored and saved.
const SavedPopup kSaved[] = {
    {"Settings", "Frets", &Window1::PopupMenu9}, {"Settings", "Strings", &Window1::PopupMenu10},
    {"Strings", "One", &Window1::PopupMenu5},    {"Strings", "Two", &Window1::PopupMenu6},
    {"Strings", "Three", &Window1::PopupMenu7},  {"Strings", "Four", &Window1::PopupMenu8},
};

iniClass &Store() {
    if (!myINI)
        throw NilObjectException("the settings store is not set up");
    return *myINI;
}

} // namespace

void RestoreSelections(Window1 &window) {
    bool first = true;
    for (const SavedPopup &saved : kSaved) {
        std::string value;
        const Int found = Store().GetPreference(saved.section, saved.key, value);
        if (found > 0)
            (window.*saved.popup)->SetListIndex(Truncate(Val(value)));
        else if (first)
            (window.*saved.popup)->SetListIndex(0);
        first = false;
    }
}

void SaveSelections(Window1 &window) {
    for (const SavedPopup &saved : kSaved)
        Store().SetPreference(saved.section, saved.key, Str((window.*saved.popup)->ListIndex()));
}

} // namespace varnock
