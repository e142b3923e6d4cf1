#include "window/popupmenuview.h"

#include "window/dialogs.h"

#include <QSignalBlocker>

#include <exception>

namespace varnock {

PopupMenuView::PopupMenuView(PopupMenu &popup, QWidget *parent) : QComboBox(parent), popup_(popup) {
    setMaxVisibleItems(32);
    connect(this, &QComboBox::currentIndexChanged, this, [this](int i) { UserChose(i); });
    popup_.Observer = [this] { Follow(); };
    Follow();
}

PopupMenuView::~PopupMenuView() {
    popup_.Observer = nullptr;
}

void PopupMenuView::Follow() {
    // Our own changes are made with signals blocked, so that only the user's
    // choices reach UserChose.
    const QSignalBlocker quiet(this);
    for (Int i = count(); i < popup_.ListCount(); ++i)
        addItem(QString::fromStdString(popup_.List(i)));
    const Int index = popup_.ListIndex();
    setCurrentIndex(index >= 0 && index < count() ? static_cast<int>(index) : -1);
    if (isHidden() == popup_.Visible())
        setVisible(popup_.Visible());
}

void PopupMenuView::UserChose(int index) {
    try {
        popup_.SetListIndex(index);
    } catch (const std::exception &e) {
        ReportUnhandledException(e.what());
    }
    Follow();
}

} // namespace varnock
