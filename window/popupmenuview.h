#pragma once

// A popup menu on screen: shows a PopupMenu's items, selection and visibility
// and follows every change of them; a choice by the user is set on the
// PopupMenu, whose Change handling then runs.

#include "platform/popupmenu.h"

#include <QComboBox>

namespace varnock {

class PopupMenuView : public QComboBox {
  public:
    PopupMenuView(PopupMenu &popup, QWidget *parent = nullptr);
    ~PopupMenuView() override;

    PopupMenu &Popup() const { return popup_; }

  private:
    void Follow();
    void UserChose(int index);

    PopupMenu &popup_;
};

} // namespace varnock
