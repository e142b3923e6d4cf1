#pragma once

// Whole-file text streams for the settings store. Text is bytes: nothing is
// decoded, translated or added, so whatever a file holds comes back out
// unchanged. Only regular files are opened; anything else at the path (a
// folder, a pipe, a device) counts as a file that cannot be opened, which
// also means no open can ever block. A nil stream is an empty unique_ptr.

#include "platform/folderitem.h"

#include <filesystem>
#include <memory>
#include <optional>
#include <string>

namespace varnock {

class TextInputStream {
  public:
    // NilObjectException for a nil file, IOException when it can't be opened.
    static std::unique_ptr<TextInputStream> Open(const std::optional<FolderItem> &file);

    ~TextInputStream();
    TextInputStream(const TextInputStream &) = delete;
    TextInputStream &operator=(const TextInputStream &) = delete;

    // Everything from here to the end of the file. IOException on a read error.
    std::string ReadAll();
    void Close();

  private:
    explicit TextInputStream(int fd) : fd_(fd) {}
    int fd_;
};

class TextOutputStream {
  public:
    // Creates the file, or empties an existing one. NilObjectException for a
    // nil file, IOException when that is refused.
    static std::unique_ptr<TextOutputStream> Create(const std::optional<FolderItem> &file);

    // The same, but refusal gives nil instead of an exception; what
    // FolderItem::CreateTextFile uses.
    static std::unique_ptr<TextOutputStream> OpenTruncated(const std::filesystem::path &path);

    // Closes quietly if Close was never called.
    ~TextOutputStream();
    TextOutputStream(const TextOutputStream &) = delete;
    TextOutputStream &operator=(const TextOutputStream &) = delete;

    // Writes the bytes as they stand. IOException when not all of them land.
    void Write(const std::string &text);
    // IOException when the system reports a failure on closing.
    void Close();

  private:
    explicit TextOutputStream(int fd) : fd_(fd) {}
    int fd_;
};

} // namespace varnock
