#include "chart/popupmenu.h"

#include <QMessageBox>
#include <QSignalBlocker>

#include <exception>

namespace varnock {

PopupMenu::PopupMenu(QWidget *parent) : QComboBox(parent) {
    setMaxVisibleItems(32);
    connect(this, &QComboBox::currentIndexChanged, this, [this](int i) { UserChose(i); });
}

void PopupMenu::SetListIndex(Int value) {
    if (value == index_)
        return;
    if (value < 0 || value >= ListCount())
        return;
    index_ = value;
    ShowIndex();
    if (Change)
        Change(*this);
}

void PopupMenu::AddRow(const std::string &text) {
    const QSignalBlocker quiet(this);
    addItem(QString::fromStdString(text));
    ShowIndex();
}

std::string PopupMenu::List(Int index) const {
    if (index < 0 || index >= ListCount())
        throw OutOfBoundsException("popup item " + std::to_string(index));
    return itemText(static_cast<int>(index)).toStdString();
}

void PopupMenu::ShowIndex() {
    const QSignalBlocker quiet(this);
    setCurrentIndex(index_ < ListCount() ? static_cast<int>(index_) : -1);
}

void PopupMenu::UserChose(int index) {
    // Programmatic changes are made with signals blocked, so this is the user.
    try {
        SetListIndex(index);
    } catch (const std::exception &e) {
        ReportUnhandledException(e.what());
    }
    ShowIndex();
}

void ReportUnhandledException(const char *what) {
    qCritical("Varnock: unhandled exception: %s", what);
    QMessageBox::critical(nullptr, QStringLiteral("Varnock"),
                          QStringLiteral("An unexpected error occurred:\n%1").arg(what));
}

} // namespace varnock
