#include "platform/popupmenu.h"

namespace varnock {

void PopupMenu::SetListIndex(Int value) {
    if (value == index_)
        return;
    if (!IndexBeyondItems && (value < 0 || value >= ListCount()))
        return;
    index_ = value;
    Notify();
    if (Change)
        Change(*this);
}

void PopupMenu::AddRow(const std::string &text) {
    items_.push_back(text);
    Notify();
}

std::string PopupMenu::List(Int index) const {
    if (index < 0 || index >= ListCount())
        throw OutOfBoundsException("popup item " + std::to_string(index));
    return items_[static_cast<std::size_t>(index)];
}

void PopupMenu::SetVisible(bool visible) {
    visible_ = visible;
    Notify();
}

} // namespace varnock
