#pragma once

// A place on disk, whether or not anything is there yet, and the few things
// the settings code does with one. A FolderItem that "is nil" is an empty
// std::optional<FolderItem>: every call that can fail to give an item gives
// an optional, and NotNil turns a nil one into NilObjectException at the
// point where it is used.

#include <filesystem>
#include <memory>
#include <optional>
#include <string>

namespace varnock {

class TextOutputStream;

class FolderItem {
  public:
    explicit FolderItem(std::filesystem::path path) : path_(std::move(path)) {}

    const std::filesystem::path &Path() const { return path_; }

    // True when something, file or folder, is there. Never throws.
    bool Exists() const;

    // The item `name` inside this folder, there or not. Nil when `name` is not
    // one plain path component ("", ".", "..", anything with a "/" or a NUL).
    std::optional<FolderItem> Child(const std::string &name) const;

    // Makes the folder and any missing parents. An existing folder, content
    // and all, is left alone. Failure is not reported.
    void CreateAsFolder() const;

    // Copies this item, a folder with everything in it or a single file, to
    // `destination`, making the destination's parent folders first. Links
    // are copied as links so a loop cannot run away. Failure is not reported.
    void CopyFileTo(const FolderItem &destination) const;

    // Opens the file for writing, creating it or emptying what is there.
    // Nil, and no exception, when that is refused. A file that has no write
    // permission bit at all counts as read-only and is refused even when the
    // process could override the bits (running as root); this is what makes
    // "chmod a-w" protect the settings file for every user.
    std::unique_ptr<TextOutputStream> CreateTextFile() const;

    bool operator==(const FolderItem &) const = default;

  private:
    std::filesystem::path path_;
};

// The item itself; NilObjectException when there is none.
FolderItem NotNil(const std::optional<FolderItem> &item);

// The user's data folder (XDG data home, ~/.local/share by default), where the
// settings folder lives. The environment's bytes are taken as they are, so a
// name that is not UTF-8 is kept; a relative XDG value is ignored, and without
// HOME the account's home folder stands in. Nil when there is no home at all.
std::optional<FolderItem> SpecialFolderApplicationData();

// The user's configuration folder (XDG config home, ~/.config by default),
// where older versions kept the settings folder. Found the same way.
std::optional<FolderItem> SpecialFolderPreferences();

} // namespace varnock
