#pragma once

// The settings store: named string values in sections of one small text file.
// Nothing is kept in memory but where the file is; every read scans the file
// and every write rewrites it whole, so hand edits take effect at once.
//
// The file is worked on as one string that is searched and cut, not parsed
// line by line, and the odd results that gives on odd files are intended:
//  - lines end with a single CR; no LF is ever written;
//  - a reader needs "[section]" followed directly by CR, a writer only
//    "[section]";
//  - the reader looks for "key=" anywhere after its header, running on into
//    later sections; the writer stops at the next CR + "[";
//  - keys match as substrings, sections and keys without regard to ASCII case;
//  - a value runs from the first "=" to the line end and may hold "=";
//  - an empty value reads as not found;
//  - a rewrite keeps every byte it does not have to change.
// Each operation catches everything and tells the user with MsgBox.

#include "platform/basic.h"
#include "platform/folderitem.h"

#include <optional>
#include <string>

namespace varnock {

class iniClass {
  public:
    // Remembers the file; touches nothing on disk.
    explicit iniClass(std::optional<FolderItem> file);
    virtual ~iniClass() = default;

    // The length of the value of `key` in `section`, with the value in
    // `value`; 0, and `value` empty, when there is none or it is empty.
    virtual Int GetPreference(const std::string &section, const std::string &key,
                              std::string &value);

    // Stores `value` under `key` in `section`, creating the file, the section
    // or the entry as needed.
    virtual void SetPreference(const std::string &section, const std::string &key,
                               const std::string &value);

    std::optional<FolderItem> iniFileName;
};

} // namespace varnock
