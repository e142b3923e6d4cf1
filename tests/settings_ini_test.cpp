// The settings store against real files in a scratch folder, as rows of
// (file before, operation, file after, value read, messages).

#include "platform/msgbox.h"
#include "settings/iniclass.h"
#include "support.h"

#include <gtest/gtest.h>

#include <csignal>
#include <sys/resource.h>

using namespace varnock;
namespace fs = std::filesystem;
using namespace testsupport;

namespace {

// What stands at the file's place before the operation.
enum class Place {
    File,     // the bytes of `before`, or nothing when it is absent
    ReadOnly, // the bytes of `before`, no write permission
    Folder,   // a folder where the file should be
    NoParent, // the parent is a plain file, so nothing can be made there
    Nil,      // no FolderItem at all
    FullDisk, // writes fail once the file is open (a file-size limit of 0)
};

struct Case {
    const char *name;
    Place place;
    std::optional<std::string> before;
    // A read when `value` is absent, else a write of `value`.
    const char *section;
    const char *key;
    std::optional<std::string> value;
    // The file afterwards (absent: no file); for reads, the value read.
    std::optional<std::string> after;
    std::string read;
    std::vector<std::string> messages;
};

const std::string kSix =
    "[Settings]\rFrets=0\rStrings=0\r[Strings]\rOne=5\rTwo=7\rThree=0\rFour=0\r";
const std::string kHand = "junk line\r[SETTINGS]\rfrets=0\r\r; note\rStrings=0\r[strings]\r";
const std::string kBinary =
    std::string("\xff\xfe\0\n[Settings]\rFrets=0\r\r\n\0\x80[O]\rz=\x01\r", 36);
const std::string kBinaryAfter =
    std::string("\xff\xfe\0\n[Settings]\rFrets=2\r\r\n\0\x80[O]\rz=\x01\r", 36);

// clang-format off
const Case kCases[] = {
    // Writing: new file, new key, new section, rewrites that keep every other byte.
    {"NoFileReadsAbsent", Place::File, {}, "Settings", "Frets", {}, {}, "", {}},
    {"FirstWriteMakesTheFile", Place::File, {}, "Settings", "Frets", "2", "[Settings]\rFrets=2\r", "", {}},
    {"EmptyFileGetsItsFirstSection", Place::File, "", "Settings", "Frets", "1",
     "[Settings]\rFrets=1\r", "", {}},
    {"NewKeyEndsItsSection", Place::File, kSix, "Settings", "Extra", "x",
     "[Settings]\rFrets=0\rStrings=0\rExtra=x\r[Strings]\rOne=5\rTwo=7\rThree=0\rFour=0\r", "", {}},
    {"NewSectionEndsTheFile", Place::File, kSix, "More", "Key", "v", kSix + "[More]\rKey=v\r", "", {}},
    {"RewriteChangesOnlyTheValue", Place::File, kSix, "Strings", "Two", "11",
     "[Settings]\rFrets=0\rStrings=0\r[Strings]\rOne=5\rTwo=11\rThree=0\rFour=0\r", "", {}},
    {"SameValueKeepsEveryByte", Place::File, kHand, "settings", "Strings", "0", kHand, "", {}},
    {"RewriteKeepsTheFilesSpelling", Place::File, "[settings]\rfReTs=1\r", "SETTINGS", "FRETS",
     "2", "[settings]\rfReTs=2\r", "", {}},
    {"BytesOutsideTheEditSurvive", Place::File, kBinary, "Settings", "Frets", "2", kBinaryAfter, "", {}},
    {"ValueMayHoldEquals", Place::File, "[S]\rk=a=b=c\r", "S", "k", "d", "[S]\rk=d\r", "", {}},
    {"EmptyValueIsStored", Place::File, {}, "Settings", "Frets", "", "[Settings]\rFrets=\r", "", {}},
    // Reading: the search runs forward over later sections and matches substrings.
    {"ReadsAValue", Place::File, kSix, "Strings", "Two", {}, kSix, "7", {}},
    {"ReaderRunsIntoLaterSections", Place::File, kSix, "Settings", "One", {}, kSix, "5", {}},
    {"ReaderNeverGoesBack", Place::File, kSix, "Strings", "Frets", {}, kSix, "", {}},
    {"SectionAndKeyIgnoreCase", Place::File, kSix, "strings", "ONE", {}, kSix, "5", {}},
    {"KeyMatchesAsSubstring", Place::File, "[Strings]\rXFour=3\r", "Strings", "Four", {},
     "[Strings]\rXFour=3\r", "3", {}},
    {"ValueRunsToTheLineEnd", Place::File, "[S]\rk=a=b=c\r", "S", "k", {}, "[S]\rk=a=b=c\r", "a=b=c", {}},
    {"EmptyValueReadsAbsent", Place::File, "[S]\rk=\r", "S", "k", {}, "[S]\rk=\r", "", {}},
    {"LastLineWithoutLineEndReadsEmpty", Place::File, "[S]\rk=5", "S", "k", {}, "[S]\rk=5", "", {}},
    {"CrLfFileReads", Place::File, "[S]\r\nk=2\r\n", "S", "k", {}, "[S]\r\nk=2\r\n", "2", {}},
    {"LineFeedFileReadsAbsent", Place::File, "[S]\nk=2\n", "S", "k", {}, "[S]\nk=2\n", "", {}},
    {"HeaderNeedsItsLineEndRightBehind", Place::File, "[S] \rk=1\r", "S", "k", {}, "[S] \rk=1\r", "", {}},
    {"HeaderWithoutLineEndIsUnseen", Place::File, "[A]\rx=1\r[S]", "S", "k", {}, "[A]\rx=1\r[S]", "", {}},
    // The writer stops at the next CR + "[", which the reader does not.
    {"WriterStaysInItsSection", Place::File, kSix, "Settings", "One", "9",
     "[Settings]\rFrets=0\rStrings=0\rOne=9\r[Strings]\rOne=5\rTwo=7\rThree=0\rFour=0\r", "", {}},
    {"WriterChangesASubstringKey", Place::File, "[Strings]\rXFour=3\r", "Strings", "Four", "8",
     "[Strings]\rXFour=8\r", "", {}},
    {"EmptySectionIsTakenForTheLast", Place::File, "[Settings]\r[Strings]\rOne=0\r", "Settings",
     "One", "7", "[Settings]\r[Strings]\rOne=7\r", "", {}},
    {"CrLfFileIsOneSectionToTheWriter", Place::File, "[A]\r\nx=1\r\n[B]\r\ny=2\r\n", "A", "z", "3",
     "[A]\r\nx=1\r\n[B]\r\ny=2\r\nz=3\r", "", {}},
    {"LineFeedFileLosesTheBracket", Place::File, "[S]\nk=2\n", "S", "k", "3", "S]\nk=3\r=2\n", "", {}},
    {"HeaderWithoutLineEndIsFoundByTheWriter", Place::File, "[A]\rx=1\r[S]", "S", "k", "2",
     "[A]\rx=1\rS]k=2\r", "", {}},
    // Failures: each operation says what went wrong in its own words.
    {"FolderCannotBeRead", Place::Folder, {}, "Settings", "Frets", {}, {}, "",
     {"Error reading preference: Settings - Frets"}},
    {"FolderCannotBeWritten", Place::Folder, {}, "Settings", "Frets", "1", {}, "",
     {"Error writing Preference: Settings - Frets - 1"}},
    {"ReadOnlyFileReads", Place::ReadOnly, "[S]\rk=2\r", "S", "k", {}, "[S]\rk=2\r", "2", {}},
    {"ReadOnlyFileRefusesAWrite", Place::ReadOnly, "[S]\rk=2\r", "S", "k", "1", "[S]\rk=2\r", "",
     {"Error creating preference stream: S - k - 1"}},
    {"MissingFileThatCannotBeMade", Place::NoParent, {}, "Strings", "Two", "7", {}, "",
     {"Error writing Preference: Strings - Two - 7"}},
    {"NilReadsSilently", Place::Nil, {}, "Settings", "Frets", {}, {}, "", {}},
    {"NilCannotBeWritten", Place::Nil, {}, "a - b", "", "<b>x</b>", {}, "",
     {"Error writing Preference: a - b -  - <b>x</b>"}},
    {"FailedWriteLosesTheOldContent", Place::FullDisk, kSix, "Strings", "Two", "9", "", "",
     {"Error writing Preference: Strings - Two - 9"}},
    {"FailedFirstWrite", Place::FullDisk, {}, "Settings", "Frets", "0", "", "",
     {"Error writing Preference: Settings - Frets - 0"}},
};
// clang-format on

void PrintTo(const Case &c, std::ostream *os) {
    *os << c.name;
}

// Every write to a regular file fails with EFBIG, for this process only.
class FileSizeLimit {
  public:
    FileSizeLimit() : handler_(std::signal(SIGXFSZ, SIG_IGN)) {
        getrlimit(RLIMIT_FSIZE, &previous_);
        rlimit zero = previous_;
        zero.rlim_cur = 0;
        setrlimit(RLIMIT_FSIZE, &zero);
    }
    ~FileSizeLimit() {
        setrlimit(RLIMIT_FSIZE, &previous_);
        std::signal(SIGXFSZ, handler_);
    }

  private:
    void (*handler_)(int);
    rlimit previous_{};
};

class Ini : public ::testing::TestWithParam<Case> {};

TEST_P(Ini, Row) {
    const Case &c = GetParam();
    TempDir dir;
    Messages messages;
    fs::path file = dir.Path() / "Varnock.ini";
    if (c.place == Place::Folder)
        fs::create_directory(file);
    if (c.place == Place::NoParent) {
        WriteBytes(dir.Path() / "plain", "x");
        file = dir.Path() / "plain" / "Varnock.ini";
    }
    if (c.before)
        WriteBytes(file, *c.before);
    if (c.place == Place::ReadOnly)
        fs::permissions(file, fs::perms::owner_read | fs::perms::group_read);
    iniClass ini(c.place == Place::Nil ? std::nullopt
                                       : std::optional<FolderItem>(FolderItem(file)));

    std::string value = "left over";
    if (c.value) {
        std::optional<FileSizeLimit> full;
        if (c.place == Place::FullDisk)
            full.emplace();
        ini.SetPreference(c.section, c.key, *c.value);
    } else {
        EXPECT_EQ(ini.GetPreference(c.section, c.key, value), static_cast<Int>(c.read.size()));
        EXPECT_EQ(value, c.read);
    }
    EXPECT_EQ(messages.texts, c.messages);
    if (c.after)
        EXPECT_EQ(ReadBytes(file), *c.after);
    else
        EXPECT_TRUE(!fs::exists(file) || fs::is_directory(file)) << "no file is made";
}

INSTANTIATE_TEST_SUITE_P(Store, Ini, ::testing::ValuesIn(kCases),
                         [](const auto &info) { return std::string(info.param.name); });

TEST(Ini, ReadsBackWhatWasWrittenAndHandEditsAtOnce) {
    TempDir dir;
    Messages messages;
    iniClass ini(FolderItem(dir.Path() / "Varnock.ini"));
    ini.SetPreference("Strings", "Three", "10");
    std::string value;
    EXPECT_EQ(ini.GetPreference("Strings", "Three", value), 2);
    EXPECT_EQ(value, "10");
    WriteBytes(dir.Path() / "Varnock.ini", "[Strings]\rThree=4\r");
    ini.GetPreference("Strings", "Three", value);
    EXPECT_EQ(value, "4");
    // The value may be the caller's own key variable.
    std::string shared = "Three";
    EXPECT_EQ(ini.GetPreference("Strings", shared, shared), 1);
    EXPECT_EQ(shared, "4");
    EXPECT_TRUE(messages.texts.empty());
}

TEST(Ini, GarbageAndOddNamesNeverBreakEitherOperation) {
    TempDir dir;
    Messages messages;
    const fs::path file = dir.Path() / "Varnock.ini";
    std::string junk(1u << 20, '=');
    for (std::size_t i = 0; i < junk.size(); i += 7)
        junk[i] = static_cast<char>((i * 131 + 7) % 256);
    junk += std::string("\0\r\r[\0]\r=\r[Settings", 18);
    WriteBytes(file, junk);
    iniClass ini{FolderItem(file)};
    for (const std::string &name : {std::string(), std::string("="), std::string("["),
                                    std::string("]\r["), std::string("\0", 1)}) {
        std::string value;
        ini.GetPreference(name, name, value);
        ini.GetPreference("Settings", name, value);
    }
    ini.SetPreference("Settings", "Frets", "1");
    // The header at the end has no line end, so it is new to the writer.
    EXPECT_EQ(ReadBytes(file), junk + "[Settings]\rFrets=1\r");
    EXPECT_TRUE(messages.texts.empty());
}

} // namespace
