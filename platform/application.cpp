#include "platform/application.h"

#include <QCoreApplication>
#include <QObject>

#include <map>
#include <utility>

namespace varnock {

namespace {

Application *&Current() {
    static Application *current = nullptr;
    return current;
}

std::function<void()> &QuitHandler() {
    static std::function<void()> handler;
    return handler;
}

using Handlers = std::map<std::string, std::function<bool()>>;

std::map<const QObject *, Handlers> &MenuHandlers() {
    static std::map<const QObject *, Handlers> handlers;
    return handlers;
}

} // namespace

Application::Application() {
    Current() = this;
}

Application::~Application() {
    if (Current() == this)
        Current() = nullptr;
}

Application *CurrentApplication() {
    return Current();
}

void AddMenuHandler(QObject *window, const std::string &item, std::function<bool()> handler) {
    auto &all = MenuHandlers();
    if (all.find(window) == all.end())
        QObject::connect(window, &QObject::destroyed, [window] { MenuHandlers().erase(window); });
    all[window][item] = std::move(handler);
}

bool RunMenuHandler(const QObject *window, const std::string &item) {
    const auto &all = MenuHandlers();
    const auto handlers = all.find(window);
    if (handlers == all.end())
        return false;
    const auto handler = handlers->second.find(item);
    return handler != handlers->second.end() && handler->second && handler->second();
}

void AppQuit() {
    if (QuitHandler()) {
        QuitHandler()();
        return;
    }
    QCoreApplication::exit(0);
}

std::function<void()> SetAppQuitHandler(std::function<void()> handler) {
    return std::exchange(QuitHandler(), std::move(handler));
}

} // namespace varnock
