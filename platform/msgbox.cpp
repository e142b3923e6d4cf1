#include "platform/msgbox.h"

#include <cstdio>
#include <utility>

namespace varnock {

namespace {
MsgBoxHandler &Handler() {
    static MsgBoxHandler handler;
    return handler;
}
MsgBoxHandler &Dialog() {
    static MsgBoxHandler dialog;
    return dialog;
}
} // namespace

void MsgBox(const std::string &text) {
    if (const MsgBoxHandler &handler = Handler()) {
        handler(text);
        return;
    }
    if (const MsgBoxHandler &dialog = Dialog()) {
        dialog(text);
        return;
    }
    std::fprintf(stderr, "Varnock: %s\n", text.c_str());
}

MsgBoxHandler SetMsgBoxHandler(MsgBoxHandler handler) {
    return std::exchange(Handler(), std::move(handler));
}

void SetMsgBoxDialog(MsgBoxHandler dialog) {
    Dialog() = std::move(dialog);
}

} // namespace varnock
