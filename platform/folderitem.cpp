#include "platform/folderitem.h"

#include "platform/basic.h"
#include "platform/textstream.h"

#include <cstdlib>
#include <pwd.h>
#include <system_error>
#include <unistd.h>

namespace varnock {

namespace fs = std::filesystem;

bool FolderItem::Exists() const {
    std::error_code ec;
    return fs::exists(path_, ec);
}

std::optional<FolderItem> FolderItem::Child(const std::string &name) const {
    if (name.empty() || name == "." || name == ".." || name.find('/') != std::string::npos ||
        name.find('\0') != std::string::npos)
        return std::nullopt;
    return FolderItem(path_ / name);
}

void FolderItem::CreateAsFolder() const {
    try {
        std::error_code ec;
        fs::create_directories(path_, ec);
    } catch (...) {
        // Only an allocation failure gets here; it is a failure like any other.
    }
}

void FolderItem::CopyFileTo(const FolderItem &destination) const {
    try {
        std::error_code ec;
        if (destination.path_.has_parent_path())
            fs::create_directories(destination.path_.parent_path(), ec);
        fs::copy(path_, destination.path_,
                 fs::copy_options::recursive | fs::copy_options::copy_symlinks, ec);
    } catch (...) {
        // As above: nothing is reported.
    }
}

std::unique_ptr<TextOutputStream> FolderItem::CreateTextFile() const {
    return TextOutputStream::OpenTruncated(path_);
}

FolderItem NotNil(const std::optional<FolderItem> &item) {
    if (!item)
        throw NilObjectException("nil FolderItem");
    return *item;
}

namespace {

// A variable's bytes as the environment holds them; nothing is decoded, so a
// folder whose name is not valid UTF-8 is still that folder.
std::optional<fs::path> FromEnvironment(const char *name) {
    const char *value = std::getenv(name);
    if (value == nullptr || *value == '\0')
        return std::nullopt;
    return fs::path(value);
}

std::optional<fs::path> Home() {
    if (std::optional<fs::path> home = FromEnvironment("HOME"))
        return home;
    // A session started without HOME still has the account's own folder.
    if (const passwd *account = ::getpwuid(::getuid());
        account != nullptr && account->pw_dir != nullptr && *account->pw_dir != '\0')
        return fs::path(account->pw_dir);
    return std::nullopt;
}

// The folder the variable names, or `fallback` in the home folder. Asked
// afresh each time, so the place follows the environment as it is now. A
// relative value is ignored, as the XDG base directory rules ask.
std::optional<FolderItem> UserFolder(const char *variable, const fs::path &fallback) {
    std::optional<fs::path> place = FromEnvironment(variable);
    if (!place || place->is_relative()) {
        const std::optional<fs::path> home = Home();
        if (!home)
            return std::nullopt;
        place = *home / fallback;
    }
    fs::path folder = place->lexically_normal();
    if (!folder.has_filename() && folder.has_relative_path())
        folder = folder.parent_path();
    return FolderItem(std::move(folder));
}

} // namespace

std::optional<FolderItem> SpecialFolderApplicationData() {
    return UserFolder("XDG_DATA_HOME", fs::path(".local") / "share");
}

std::optional<FolderItem> SpecialFolderPreferences() {
    return UserFolder("XDG_CONFIG_HOME", ".config");
}

} // namespace varnock
