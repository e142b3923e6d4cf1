// Varnock: the chord chart for three- and four-string fretted instruments.

#include "window/window1.h"
#include "platform/termination.h"
#include "shell/app.h"

#include <QApplication>

int main(int argc, char **argv) {
    varnock::InstallTerminationHandlers();
    // Qt's own options (-platform and the like) pass through; the program has none.
    QApplication qapp(argc, argv);
    QApplication::setApplicationName(QStringLiteral("Varnock"));
    QApplication::setApplicationDisplayName(QStringLiteral("Varnock"));
    QApplication::setDesktopFileName(QStringLiteral("varnock"));

    // The settings store exists before the main window opens.
    varnock::TheApp().Event_Open();

    auto *window = new varnock::Window1;
    window->setAttribute(Qt::WA_DeleteOnClose);
    window->Open();
    window->show();
    varnock::CloseOnTerminationSignals(window);
    return QApplication::exec();
}
