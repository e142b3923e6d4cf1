#include "platform/msgbox.h"

#include <QApplication>
#include <QMessageBox>
#include <QString>

#include <cstdio>
#include <utility>

namespace varnock {

namespace {
MsgBoxHandler &Handler() {
    static MsgBoxHandler handler;
    return handler;
}
} // namespace

void MsgBox(const std::string &text) {
    if (const MsgBoxHandler &handler = Handler()) {
        handler(text);
        return;
    }
    // Without a widget application there is no box to show; say it on stderr
    // rather than crash inside Qt.
    if (qobject_cast<QApplication *>(QCoreApplication::instance()) == nullptr) {
        std::fprintf(stderr, "Varnock: %s\n", text.c_str());
        return;
    }
    QMessageBox box(QMessageBox::NoIcon, QStringLiteral("Varnock"), QString::fromStdString(text),
                    QMessageBox::Ok);
    // Names come from a hand-editable file: never let Qt take them for markup.
    box.setTextFormat(Qt::PlainText);
    box.exec();
}

MsgBoxHandler SetMsgBoxHandler(MsgBoxHandler handler) {
    return std::exchange(Handler(), std::move(handler));
}

} // namespace varnock
