#pragma once

// A popup menu whose selection is an integer ListIndex. Setting ListIndex to a
// new value runs the Change handler at once, before the setter returns, just
// as a choice by the user does; setting the current value runs nothing.

#include "model/basic.h"

#include <QComboBox>

#include <functional>
#include <string>

namespace varnock {

class PopupMenu : public QComboBox {
  public:
    explicit PopupMenu(QWidget *parent = nullptr);

    Int ListIndex() const { return index_; }
    // A value outside the items (say from a hand-edited settings file) is
    // ignored: the popup keeps its selection and no handler runs, so whatever
    // else is being restored goes on.
    void SetListIndex(Int value);

    void AddRow(const std::string &text);
    Int ListCount() const { return count(); }
    std::string List(Int index) const;

    // The control's own visibility flag, independent of whether its window is
    // on screen.
    bool Visible() const { return !isHidden(); }
    void SetVisible(bool visible) { setVisible(visible); }

    std::function<void(PopupMenu &)> Change;

  private:
    void UserChose(int index);
    void ShowIndex();

    Int index_ = 0;
};

// Where an exception that leaves a user's action ends up: reported, never
// thrown through Qt's event loop.
void ReportUnhandledException(const char *what);

} // namespace varnock
