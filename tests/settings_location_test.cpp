// Where the settings file lives: the special folders, the one-time copy from
// the older place and the start-up that points the store at the file. Every
// test runs with HOME and the XDG folders moved to a scratch folder of its own.

#include "platform/folderitem.h"
#include "platform/msgbox.h"
#include "settings/location.h"
#include "support.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <optional>
#include <pwd.h>
#include <sys/stat.h>
#include <unistd.h>

using namespace varnock;
namespace fs = std::filesystem;

namespace {

using namespace testsupport;

class LocationTest : public ::testing::Test {
  protected:
    void TearDown() override { myINI.reset(); }

    TempDir root;
    fs::path home = root.Path() / "home";
    fs::path data = root.Path() / "data";
    fs::path config = root.Path() / "config";
    EnvVar homeVar{"HOME", home.string()};
    EnvVar dataVar{"XDG_DATA_HOME", data.string()};
    EnvVar configVar{"XDG_CONFIG_HOME", config.string()};
    Messages messages;

    fs::path newFolder = data / "HelmfordVarnock";
    fs::path oldFolder = config / "HelmfordVarnock";
    fs::path newFile = newFolder / "Varnock.ini";

    void MakeOldFolder(const std::string &ini) const {
        fs::create_directories(oldFolder / "extra");
        WriteBytes(oldFolder / "Varnock.ini", ini);
        WriteBytes(oldFolder / "extra" / "notes.txt", "kept");
    }
    std::pair<Int, std::string> Get(const std::string &section, const std::string &key) const {
        std::string value = "left over";
        const Int length = myINI->GetPreference(section, key, value);
        return {length, value};
    }
};

// ---------------------------------------------------------------- folder items

// A byte that is not UTF-8, as a folder name may hold on Linux.
const std::string kOdd = "d\xe9ta";

TEST_F(LocationTest, SpecialFoldersAreTheEnvironmentsBytesAsTheyAreNow) {
    // What each variable holds (nullopt: unset), and the folders that follow;
    // names that are not UTF-8 are followed through the start-up below.
    struct Case {
        const char *what;
        std::optional<std::string> home, data, config;
        fs::path wantData, wantConfig;
    };
    const std::string r = root.Path().string();
    const Case cases[] = {
        {"both set", home.string(), data.string(), config.string(), data, config},
        {"neither set", home.string(), std::nullopt, std::nullopt, home / ".local" / "share",
         home / ".config"},
        {"empty is unset", home.string(), "", "", home / ".local" / "share", home / ".config"},
        {"relative is ignored", home.string(), "data", "./config", home / ".local" / "share",
         home / ".config"},
        {"trailing slashes", home.string(), r + "/data/", r + "//config//", data, config},
    };
    for (const Case &c : cases) {
        EnvVar h("HOME", c.home), d("XDG_DATA_HOME", c.data), k("XDG_CONFIG_HOME", c.config);
        EXPECT_EQ(NotNil(SpecialFolderApplicationData()).Path().native(), c.wantData.native())
            << c.what;
        EXPECT_EQ(NotNil(SpecialFolderPreferences()).Path().native(), c.wantConfig.native())
            << c.what;
    }
    // Without HOME the account's own folder stands in.
    EnvVar noHome("HOME", std::nullopt), noData("XDG_DATA_HOME", std::nullopt);
    const passwd *account = getpwuid(getuid());
    ASSERT_NE(account, nullptr);
    EXPECT_EQ(NotNil(SpecialFolderApplicationData()).Path(),
              fs::path(account->pw_dir) / ".local" / "share");
}

TEST_F(LocationTest, ChildIsNilOnlyForWhatCannotBeAName) {
    const FolderItem base(root.Path());
    EXPECT_EQ(base.Child("Varnock.ini"), FolderItem(root.Path() / "Varnock.ini"));
    EXPECT_FALSE(base.Child("Varnock.ini")->Exists());
    for (const std::string &bad : {std::string(), std::string("."), std::string(".."),
                                   std::string("a/b"), std::string("a\0b", 3)})
        EXPECT_FALSE(base.Child(bad).has_value()) << bad;
    EXPECT_THROW(NotNil(std::nullopt), NilObjectException);
}

TEST_F(LocationTest, CreateAsFolderMakesParentsKeepsContentAndReportsNothing) {
    const FolderItem folder(root.Path() / "a" / "b");
    folder.CreateAsFolder();
    EXPECT_TRUE(fs::is_directory(folder.Path()));
    WriteBytes(folder.Path() / "f", "x");
    folder.CreateAsFolder();
    EXPECT_EQ(ReadBytes(folder.Path() / "f"), "x");
    WriteBytes(root.Path() / "file", "x");
    EXPECT_NO_THROW(FolderItem(root.Path() / "file" / "sub").CreateAsFolder());
    EXPECT_FALSE(fs::exists(root.Path() / "file" / "sub"));
}

TEST_F(LocationTest, CopyFileToCopiesAFolderWithItsContentAndReportsNoFailure) {
    MakeOldFolder("[Settings]\rFrets=3\r");
    fs::create_symlink("Varnock.ini", oldFolder / "link");
    FolderItem(oldFolder).CopyFileTo(FolderItem(newFolder));
    EXPECT_EQ(ReadBytes(newFolder / "Varnock.ini"), "[Settings]\rFrets=3\r");
    EXPECT_EQ(ReadBytes(newFolder / "extra" / "notes.txt"), "kept");
    EXPECT_TRUE(fs::is_symlink(newFolder / "link"));
    EXPECT_NO_THROW(FolderItem(root.Path() / "none").CopyFileTo(FolderItem(root.Path() / "x")));
    EXPECT_FALSE(fs::exists(root.Path() / "x"));
}

// ---------------------------------------------------------------- start-up

TEST_F(LocationTest, FirstStartMakesAnEmptyFolderAndNoFile) {
    EXPECT_EQ(myINI, nullptr);
    SetupINI();
    ASSERT_NE(myINI, nullptr);
    EXPECT_EQ(myINI->iniFileName, FolderItem(newFile));
    EXPECT_TRUE(fs::is_directory(newFolder));
    EXPECT_TRUE(fs::is_empty(newFolder));
    EXPECT_FALSE(fs::exists(oldFolder));
    EXPECT_EQ(Get("Settings", "Frets"), std::make_pair(Int{0}, std::string()));
    EXPECT_TRUE(messages.texts.empty());

    myINI->SetPreference("Settings", "Frets", "0");
    EXPECT_EQ(ReadBytes(newFile), "[Settings]\rFrets=0\r");
}

TEST_F(LocationTest, SecondStartCopiesNothingEvenWhenTheOldFolderChanged) {
    MakeOldFolder("[Settings]\rFrets=3\r");
    SetupINI();
    WriteBytes(oldFolder / "Varnock.ini", "[Settings]\rFrets=2\r");
    WriteBytes(oldFolder / "new.txt", "late");
    myINI.reset();
    SetupINI();
    EXPECT_EQ(Get("Settings", "Frets"), std::make_pair(Int{1}, std::string("3")));
    EXPECT_FALSE(fs::exists(newFolder / "new.txt"));
    // Even an empty new folder wins over a full old one.
    fs::remove_all(newFolder);
    fs::create_directories(newFolder);
    myINI.reset();
    SetupINI();
    EXPECT_TRUE(fs::is_empty(newFolder));
}

TEST_F(LocationTest, FoldersWhoseNamesAreNotUtf8AreReadWrittenAndCopiedFromThemselves) {
    // Folders under the scratch root: what the variables name (nullopt:
    // unset), where the settings folder is found, and where it must end up.
    struct Case {
        const char *what;
        std::optional<std::string> home, data, config;
        fs::path found, used;
    };
    const fs::path oddHome = kOdd, oddShare = kOdd + "/.local/share";
    const Case cases[] = {
        {"data folder, new folder there", "home", kOdd, "config", kOdd, kOdd},
        {"configuration folder, copied", "home", "data", kOdd, kOdd, "data"},
        {"both, copied", "home", kOdd, "c\xff", "c\xff", kOdd},
        {"home folder, copied", kOdd, std::nullopt, std::nullopt, oddHome / ".config", oddShare},
    };
    const auto under = [&](const std::optional<std::string> &name) {
        return name ? std::optional<std::string>((root.Path() / *name).string()) : std::nullopt;
    };
    for (const Case &c : cases) {
        SCOPED_TRACE(c.what);
        fs::remove_all(root.Path());
        fs::create_directories(root.Path());
        EnvVar h("HOME", under(c.home)), d("XDG_DATA_HOME", under(c.data)),
            k("XDG_CONFIG_HOME", under(c.config));
        const fs::path found = root.Path() / c.found / "HelmfordVarnock";
        const fs::path used = root.Path() / c.used / "HelmfordVarnock";
        WriteBytes(found / "Varnock.ini", "[Settings]\rFrets=2\r");
        myINI.reset();
        SetupINI();
        EXPECT_EQ(Get("Settings", "Frets"), std::make_pair(Int{1}, std::string("2")));
        myINI->SetPreference("Settings", "Frets", "1");
        EXPECT_EQ(ReadBytes(used / "Varnock.ini"), "[Settings]\rFrets=1\r");
        if (found != used) {
            EXPECT_EQ(ReadBytes(found / "Varnock.ini"), "[Settings]\rFrets=2\r");
        }
        // No look-alike folder with U+FFFD in place of the byte.
        for (const auto &entry : fs::recursive_directory_iterator(root.Path()))
            EXPECT_EQ(entry.path().native().find("\xEF\xBF\xBD"), std::string::npos)
                << entry.path();
        EXPECT_TRUE(messages.texts.empty());
    }
}

TEST_F(LocationTest, CopyMakesTheDataFolderWhenEvenThatIsMissing) {
    // A fresh account may have no data folder at all yet.
    MakeOldFolder("[Settings]\rFrets=2\r");
    ASSERT_FALSE(fs::exists(data));
    CheckINILocation("HelmfordVarnock");
    EXPECT_EQ(ReadBytes(newFile), "[Settings]\rFrets=2\r");
    EXPECT_EQ(ReadBytes(newFolder / "extra" / "notes.txt"), "kept"); // the whole folder
    // Only the folder of the given name is looked at.
    fs::create_directories(config / "Other");
    fs::remove_all(newFolder);
    CheckINILocation("Other");
    EXPECT_TRUE(fs::is_directory(data / "Other"));
    EXPECT_FALSE(fs::exists(newFolder));
}

TEST_F(LocationTest, FolderThatCannotBeCreatedIsSilentUntilTheFirstSave) {
    // The data folder is a plain file, so nothing can be made inside it.
    WriteBytes(data, "in the way");
    MakeOldFolder("[Settings]\rFrets=3\r");
    SetupINI();
    ASSERT_NE(myINI, nullptr);
    EXPECT_TRUE(messages.texts.empty());
    EXPECT_EQ(Get("Settings", "Frets"), std::make_pair(Int{0}, std::string()));
    EXPECT_TRUE(messages.texts.empty());

    myINI->SetPreference("Settings", "Frets", "0");
    EXPECT_EQ(messages.texts,
              (std::vector<std::string>{"Error writing Preference: Settings - Frets - 0"}));
    EXPECT_EQ(ReadBytes(data), "in the way");
}

TEST_F(LocationTest, FailedCopyIsSilentAndLeavesAnEmptyNewFolder) {
    // A pipe among the old files can't be copied; the copy gives up quietly
    // and the start goes on with a folder of its own.
    fs::create_directories(oldFolder);
    ASSERT_EQ(mkfifo((oldFolder / "a-pipe").c_str(), 0600), 0);
    SetupINI();
    EXPECT_TRUE(messages.texts.empty());
    EXPECT_TRUE(fs::is_directory(newFolder));
    EXPECT_FALSE(fs::exists(newFolder / "a-pipe"));
    EXPECT_FALSE(fs::exists(newFile));
}

} // namespace
