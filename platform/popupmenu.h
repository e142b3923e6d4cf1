#pragma once

// A popup menu as the program sees it: a list of item texts and an integer
// ListIndex. Setting ListIndex to a new value runs the Change handler at
// once, before the setter returns, just as a choice by the user does;
// setting the current value runs nothing. The object has no widget: a view
// (PopupMenuView) shows it and hands the user's choices back to it, and the
// same object works where nothing is ever shown.

#include "platform/basic.h"

#include <functional>
#include <string>
#include <vector>

namespace varnock {

class PopupMenu {
  public:
    PopupMenu() = default;
    PopupMenu(const PopupMenu &) = delete;
    PopupMenu &operator=(const PopupMenu &) = delete;

    Int ListIndex() const { return index_; }
    // A value outside the items (say from a hand-edited settings file) is
    // ignored: the popup keeps its selection and no handler runs, so whatever
    // else is being restored goes on. A popup made with IndexBeyondItems
    // takes any value; its items then only name some of its indices.
    void SetListIndex(Int value);
    bool IndexBeyondItems = false;

    void AddRow(const std::string &text);
    Int ListCount() const { return static_cast<Int>(items_.size()); }
    // The text of an item; OutOfBoundsException for an index it lacks.
    std::string List(Int index) const;

    // The control's own visibility flag, whether or not anything shows it.
    bool Visible() const { return visible_; }
    void SetVisible(bool visible);

    std::function<void(PopupMenu &)> Change;

    // Told after every change of items, selection or visibility, so that a
    // view can follow. One observer; the view that shows the popup.
    std::function<void()> Observer;

  private:
    void Notify() const {
        if (Observer)
            Observer();
    }

    std::vector<std::string> items_;
    Int index_ = 0;
    bool visible_ = true;
};

} // namespace varnock
