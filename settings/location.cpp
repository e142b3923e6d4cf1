#include "settings/location.h"

#include "platform/folderitem.h"

namespace varnock {

namespace {
const std::string kFolderName = "HelmfordVarnock";
const std::string kFileName = "Varnock.ini";
} // namespace

std::shared_ptr<iniClass> myINI;

void CheckINILocation(const std::string &folderName) {
    try {
        const std::optional<FolderItem> newPlace =
            NotNil(SpecialFolderApplicationData()).Child(folderName);
        if (!newPlace)
            return;
        // Once the new folder is there, even empty, the old one is never read.
        if (newPlace->Exists())
            return;
        const std::optional<FolderItem> oldPlace =
            NotNil(SpecialFolderPreferences()).Child(folderName);
        if (!oldPlace)
            return;
        // A copy, not a move: the old folder stays as it was.
        if (oldPlace->Exists())
            oldPlace->CopyFileTo(*newPlace);
    } catch (...) {
        // Nothing to bring over is not the user's problem.
    }
}

std::optional<FolderItem> SettingsFile() {
    const std::optional<FolderItem> data = SpecialFolderApplicationData();
    const std::optional<FolderItem> folder = data ? data->Child(kFolderName) : std::nullopt;
    return folder ? folder->Child(kFileName) : std::nullopt;
}

void SetupINI() {
    CheckINILocation(kFolderName);
    NotNil(NotNil(SpecialFolderApplicationData()).Child(kFolderName)).CreateAsFolder();
    auto ini = std::make_shared<iniClass>(
        NotNil(NotNil(SpecialFolderApplicationData()).Child(kFolderName)).Child(kFileName));
    myINI = ini;
}

} // namespace varnock
