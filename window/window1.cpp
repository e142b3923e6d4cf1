#include "window/window1.h"

#include "chart/controls.h"
#include "chart/sheet.h"
#include "platform/application.h"
#include "settings/location.h"
#include "settings/selections.h"
#include "window/listboxview.h"
#include "window/popupmenuview.h"

#include <QCloseEvent>
#include <QLabel>
#include <QLayout>
#include <QMenuBar>

#include <algorithm>
#include <string_view>
#include <vector>

namespace varnock {

namespace {

// What a screen reader calls the two tables.
// What a screen reader calls each control that takes the focus; nothing on
// screen shows these names.
QString SpokenName(std::string_view control) {
    static const std::pair<std::string_view, const char *> names[] = {
        {"PopupMenu1", "Chord root"},
        {"PopupMenu2", "Chord type"},
        {"PopupMenu4", "Further chord type"},
        {"PopupMenu5", "Tuning of string 1"},
        {"PopupMenu6", "Tuning of string 2"},
        {"PopupMenu7", "Tuning of string 3"},
        {"PopupMenu8", "Tuning of string 4"},
        {"PopupMenu9", "Frets"},
        {"PopupMenu10", "Strings"},
        {"Listbox1", "Chart"},
        {"Listbox2", "Notes"},
    };
    for (const auto &[name, spoken] : names)
        if (name == control)
            return QString::fromLatin1(spoken);
    return {};
}

iniClass &Store() {
    if (!myINI)
        throw NilObjectException("the settings store is not set up");
    return *myINI;
}

} // namespace

Window1::Window1() {
    Layout();
    CreateControls();
}

void Window1::Layout() {
    if (Application *app = CurrentApplication(); app && app->MenuBar())
        setMenuBar(app->MenuBar());
    AddMenuHandler(this, "mnuAbout", [this] { return _mnuAbout_Action(); });
    setWindowTitle(QStringLiteral("Varnock"));
    // A plain document window with close and minimise buttons only.
    setWindowFlags(Qt::Window | Qt::CustomizeWindowHint | Qt::WindowTitleHint |
                   Qt::WindowSystemMenuHint | Qt::WindowMinimizeButtonHint |
                   Qt::WindowCloseButtonHint);
    auto *content = new QWidget(this);
    content->setObjectName(QStringLiteral("content"));
    content->setFixedSize(kWindowWidth, kWindowHeight);
    setCentralWidget(content);
    layout()->setSizeConstraint(QLayout::SetFixedSize);
}

void Window1::CreateControls() {
    _CreateControls0();
}

void Window1::_CreateControls0() {
    QWidget *content = centralWidget();
    std::vector<std::pair<int, QWidget *>> focusOrder;
    for (const ControlSpec &c : kControls) {
        QWidget *view = nullptr;
        switch (c.kind) {
        case ControlKind::PopupMenu:
            view = new PopupMenuView(*PopupByName(c.name), content);
            view->setAccessibleName(SpokenName(c.name));
            // Linux screen readers take a popup's name from its current item
            // and read the description as well.
            view->setAccessibleDescription(SpokenName(c.name));
            focusOrder.emplace_back(c.tabIndex, view);
            break;
        case ControlKind::Listbox:
            view = new ListboxView(*ListByName(c.name), content);
            view->setFont(ListFont());
            view->setAccessibleName(SpokenName(c.name));
            focusOrder.emplace_back(c.tabIndex, view);
            break;
        case ControlKind::Label:
            // A label takes no focus, so it has no place in the focus chain.
            view = new QLabel(QString::fromLatin1(c.items[0]), content);
            view->setFont(LabelFont());
            break;
        }
        view->setObjectName(QString::fromLatin1(c.name));
        view->setGeometry(c.left, c.top, c.width, c.height);
    }
    // Each label is tied to the control it names, which a screen reader reads
    // with that control. The labels have no mnemonic, so nothing else changes.
    for (const auto &[label, named] :
         {std::pair{"Label1", "PopupMenu1"}, std::pair{"Label2", "PopupMenu9"},
          std::pair{"Label3", "PopupMenu10"}, std::pair{"Label4", "Listbox2"}})
        static_cast<QLabel *>(ControlView(label))->setBuddy(ControlView(named));
    // Focus moves by TabIndex, which is not the order of creation: the two
    // selectors at the top come after the chart.
    std::stable_sort(focusOrder.begin(), focusOrder.end(),
                     [](const auto &a, const auto &b) { return a.first < b.first; });
    for (std::size_t i = 0; i + 1 < focusOrder.size(); ++i)
        QWidget::setTabOrder(focusOrder[i].second, focusOrder[i + 1].second);
}

QWidget *Window1::ControlView(const std::string &name) const {
    return centralWidget()->findChild<QWidget *>(QString::fromStdString(name),
                                                 Qt::FindDirectChildrenOnly);
}

void Window1::RestoreSaved() {
    RestoreSelections(Store(), SavedPopups());
}

void Window1::Event_Close() {
    SaveSelections(Store(), SavedPopups());
    AppQuit();
}

void Window1::closeEvent(QCloseEvent *event) {
    // Closing the main window ends the program; save once however it is closed.
    if (!closed_) {
        closed_ = true;
        Event_Close();
    }
    event->accept();
}

bool Window1::_mnuAbout_Action() {
    if (Application *app = CurrentApplication())
        app->ShowAboutBox(this);
    return true;
}

} // namespace varnock
