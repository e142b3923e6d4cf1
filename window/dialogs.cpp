#include "window/dialogs.h"

#include "platform/msgbox.h"

#include <QCoreApplication>
#include <QMessageBox>
#include <QString>

namespace varnock {

void UseMessageDialogs() {
    SetMsgBoxDialog([](const std::string &text) {
        QMessageBox box(QMessageBox::NoIcon, QStringLiteral("Varnock"),
                        QString::fromStdString(text), QMessageBox::Ok);
        // Names come from a hand-editable file: never let Qt take them for markup.
        box.setTextFormat(Qt::PlainText);
        box.exec();
    });
}

void ReportUnhandledException(const char *what) {
    qCritical("%s: unhandled exception: %s", qPrintable(QCoreApplication::applicationName()), what);
    QMessageBox::critical(nullptr, QCoreApplication::applicationName(),
                          QStringLiteral("An unexpected error occurred:\n%1").arg(what));
}

} // namespace varnock
