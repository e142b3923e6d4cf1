#include "platform/termination.h"

#include <QMetaObject>
#include <QPointer>
#include <QSocketNotifier>

#include <csignal>
#include <fcntl.h>
#include <unistd.h>

namespace varnock {

namespace {
int g_pipe[2] = {-1, -1};

// Only async-signal-safe work here: the event loop does the rest.
void OnSignal(int) {
    const char byte = 1;
    [[maybe_unused]] const auto n = ::write(g_pipe[1], &byte, 1);
}
} // namespace

void InstallTerminationHandlers() {
    if (g_pipe[0] >= 0 || ::pipe2(g_pipe, O_CLOEXEC | O_NONBLOCK) != 0)
        return;
    struct sigaction action = {};
    action.sa_handler = OnSignal;
    sigemptyset(&action.sa_mask);
    action.sa_flags = SA_RESTART;
    for (int sig : {SIGTERM, SIGINT, SIGHUP})
        sigaction(sig, &action, nullptr);
}

void CloseOnTerminationSignals(QObject *window) {
    InstallTerminationHandlers();
    if (g_pipe[0] < 0)
        return;
    auto *notifier = new QSocketNotifier(g_pipe[0], QSocketNotifier::Read, window);
    QPointer<QObject> target(window);
    QObject::connect(notifier, &QSocketNotifier::activated, window, [target] {
        char buffer[16];
        while (::read(g_pipe[0], buffer, sizeof buffer) > 0) {
        }
        if (target)
            QMetaObject::invokeMethod(target, "close");
    });
}

} // namespace varnock
