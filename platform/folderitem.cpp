#include "platform/folderitem.h"

#include "platform/basic.h"
#include "platform/textstream.h"

#include <QByteArray>
#include <QFile>
#include <QStandardPaths>
#include <QString>

#include <system_error>

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
std::optional<FolderItem> Writable(QStandardPaths::StandardLocation location) {
    // Asked afresh each time: the place follows HOME and the XDG variables as
    // they are now.
    const QString place = QStandardPaths::writableLocation(location);
    if (place.isEmpty())
        return std::nullopt;
    // Back to the file system's own bytes, the way Qt read them from the
    // environment.
    const QByteArray native = QFile::encodeName(place);
    return FolderItem(
        fs::path(std::string(native.constData(), static_cast<std::size_t>(native.size()))));
}
} // namespace

std::optional<FolderItem> SpecialFolderApplicationData() {
    return Writable(QStandardPaths::GenericDataLocation);
}

std::optional<FolderItem> SpecialFolderPreferences() {
    return Writable(QStandardPaths::GenericConfigLocation);
}

} // namespace varnock
