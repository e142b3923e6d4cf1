#pragma once

// Where the settings file lives: "Varnock.ini" in the folder "HelmfordVarnock"
// of the user's data folder. Older versions kept that folder in the user's
// configuration folder; it is copied over once, when the new one is absent.

#include "settings/iniclass.h"

#include <memory>
#include <optional>
#include <string>

namespace varnock {

// The program's one settings store. Empty until SetupINI has run, then set for
// good.
extern std::shared_ptr<iniClass> myINI;

// Copies the folder `folderName` from the configuration folder to the data
// folder when it is in the first and not yet in the second. Never raises and
// never says anything: a failed copy just leaves nothing to read.
void CheckINILocation(const std::string &folderName);

// Brings the folder over if need be, creates it (every start; an existing one
// stays as it is; failure is not looked at), and points myINI at the file in
// it. The file itself is not created. Catches nothing: a nil data folder
// raises NilObjectException.
void SetupINI();

// The settings file in the user's data folder, there or not; nil when the
// platform names no data folder.
std::optional<FolderItem> SettingsFile();

} // namespace varnock
