// How varnock-chart writes its outputs, run as the command on every kind of
// target a user may name, each file read back by the tool a user would open
// it with (qpdf, file, rsvg-convert, pdfinfo).

#include "support.h"

#include <gtest/gtest.h>

#include <fcntl.h>
#include <spawn.h>
#include <sys/stat.h>
#include <sys/sysmacros.h>
#include <sys/wait.h>
#include <unistd.h>

#include <functional>
#include <future>
#include <string>
#include <vector>

extern char **environ;

namespace {

using namespace testsupport;

struct Ran {
    int status;
    std::string out, err;
};

enum class Stdout { Captured, Full, Closed };

// The command with its arguments as bytes (no text encoding on the way) in
// `dir`, so relative names land there.
Ran RunIn(const fs::path &dir, const std::vector<std::string> &args,
          Stdout out = Stdout::Captured) {
    const fs::path outFile = dir / ".out", errFile = dir / ".err";
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_addchdir_np(&actions, dir.c_str());
    if (out == Stdout::Closed)
        posix_spawn_file_actions_addclose(&actions, 1);
    else
        posix_spawn_file_actions_addopen(&actions, 1,
                                         out == Stdout::Full ? "/dev/full" : outFile.c_str(),
                                         O_WRONLY | O_CREAT | O_TRUNC, 0600);
    posix_spawn_file_actions_addopen(&actions, 2, errFile.c_str(), O_WRONLY | O_CREAT | O_TRUNC,
                                     0600);
    std::vector<std::string> all{VARNOCK_CHART_EXE};
    all.insert(all.end(), args.begin(), args.end());
    std::vector<char *> argv;
    for (std::string &a : all)
        argv.push_back(a.data());
    argv.push_back(nullptr);
    pid_t pid = 0;
    int status = -1;
    if (posix_spawn(&pid, argv[0], &actions, nullptr, argv.data(), environ) == 0)
        waitpid(pid, &status, 0);
    posix_spawn_file_actions_destroy(&actions);
    Ran run{WIFEXITED(status) ? WEXITSTATUS(status) : -1, ReadBytes(outFile), ReadBytes(errFile)};
    fs::remove(outFile);
    fs::remove(errFile);
    return run;
}

// A tool's exit status and what it printed.
Ran Tool(const std::string &command) {
    const fs::path log = fs::temp_directory_path() / ("varnock-tool-" + std::to_string(getpid()));
    const int status = std::system((command + " >'" + log.string() + "' 2>&1").c_str());
    Ran run{WIFEXITED(status) ? WEXITSTATUS(status) : -1, ReadBytes(log), ""};
    fs::remove(log);
    return run;
}

std::string Quoted(const fs::path &path) {
    std::string out = "'";
    for (const char c : path.string())
        out += c == '\'' ? std::string("'\\''") : std::string(1, c);
    return out + "'";
}

enum class Kind { Text, Png, Pdf, Svg, Wav };

// What a reader of the file makes of it: empty when it opens cleanly.
std::string Fault(Kind kind, const fs::path &file, const std::string &text) {
    if (!fs::is_regular_file(file))
        return "no file";
    switch (kind) {
    case Kind::Text:
        return ReadBytes(file) == text ? "" : "not the text printed";
    case Kind::Png:
    case Kind::Wav: {
        const Ran file_ = Tool("file -b " + Quoted(file));
        const char *want = kind == Kind::Png ? "PNG image data" : "WAVE audio";
        return file_.out.find(want) != std::string::npos ? "" : file_.out;
    }
    case Kind::Pdf: {
        // Damage and warnings alike: a strict reader would ask to repair it.
        const Ran qpdf = Tool("qpdf --check " + Quoted(file));
        return qpdf.status == 0 && qpdf.out.find("WARNING") == std::string::npos ? "" : qpdf.out;
    }
    case Kind::Svg: {
        const fs::path png = file.string() + ".png";
        const Ran rsvg = Tool("rsvg-convert -o " + Quoted(png) + " " + Quoted(file));
        fs::remove(png);
        return rsvg.status == 0 ? "" : rsvg.out;
    }
    }
    return "";
}

struct Writer {
    const char *name;
    std::vector<std::string> args; // then the option and the file
    const char *option;
    Kind kind;
};

const Writer kWriters[] = {
    {"text", {"--root", "D", "--tsv"}, "-o", Kind::Text},
    {"image", {"--root", "D"}, "--png", Kind::Png},
    {"pdf", {"--root", "D"}, "--pdf", Kind::Pdf},
    {"book", {"--roots", "D,Gb", "--chords", "Maj,m,7"}, "--book", Kind::Pdf},
    {"sound", {"--root", "D"}, "--wav", Kind::Wav},
};

// A target made in a scratch folder: the name to give, and a reader on the
// other end of a pipe.
struct Made {
    std::string name;
    std::future<std::string> reader = {};
    int hold = -1; // our own end of the pipe, so its reader sees an end whatever happens
};

struct Target {
    const char *name;
    std::function<Made(const fs::path &)> make;
    int status;
    const char *lands; // where the bytes must be found afterwards; nullptr: nowhere
    mode_t mode;       // that file's permissions, when they are known beforehand
    mode_t stays;      // the file type the name keeps (a link, a pipe, a device)
};

const bool kRoot = geteuid() == 0;

// The system's null (minor 3) or full (7) device. Root could replace the
// real one under a fault of the write path, so root gets one of its own in
// the test folder; anyone else may use the real one, which they cannot harm.
std::string Device(const fs::path &dir, const char *name, unsigned minor) {
    if (!kRoot)
        return std::string("/dev/") + name;
    mknod((dir / name).c_str(), S_IFCHR | 0666, makedev(1, minor));
    return name;
}

Made File(const fs::path &dir, const char *name, mode_t mode) {
    WriteBytes(dir / name, "old");
    fs::permissions(dir / name, static_cast<fs::perms>(mode));
    return {name};
}

Made Link(const fs::path &dir, const char *name, const char *to) {
    fs::create_symlink(to, dir / name);
    return {name};
}

const Target kTargets[] = {
    {"new name", [](const fs::path &) { return Made{"new.out"}; }, 0, "new.out", 0, S_IFREG},
    {"existing file", [](const fs::path &d) { return File(d, "old.out", 0640); }, 0, "old.out",
     0640, S_IFREG},
    // Root may write any file, as it could in place; anyone else is refused.
    {"read-only file", [](const fs::path &d) { return File(d, "ro.out", 0444); }, kRoot ? 0 : 1,
     kRoot ? "ro.out" : nullptr, 0444, S_IFREG},
    {"symlink",
     [](const fs::path &d) {
         File(d, "target.out", 0600);
         return Link(d, "link.out", "target.out");
     },
     0, "target.out", 0600, S_IFLNK},
    {"dangling symlink", [](const fs::path &d) { return Link(d, "dangling.out", "made.out"); }, 0,
     "made.out", 0, S_IFLNK},
    {"dangling symlink into a missing folder",
     [](const fs::path &d) { return Link(d, "lost.out", "nowhere/made.out"); }, 1, nullptr, 0,
     S_IFLNK},
    {"symlink loop",
     [](const fs::path &d) {
         Link(d, "b.out", "a.out");
         return Link(d, "a.out", "b.out");
     },
     1, nullptr, 0, S_IFLNK},
    {"fifo with a reader",
     [](const fs::path &d) {
         mkfifo((d / "pipe").c_str(), 0600);
         Made made{"pipe",
                   std::async(std::launch::async, [p = d / "pipe"] { return ReadBytes(p); })};
         made.hold = open((d / "pipe").c_str(), O_WRONLY);
         return made;
     },
     0, "pipe.read", 0, S_IFIFO},
    // The null device under another name, made where the test may make one.
    {"device",
     [](const fs::path &d) {
         return Made{mknod((d / "null").c_str(), S_IFCHR | 0666, makedev(1, 3)) == 0 ? "null" : ""};
     },
     0, nullptr, 0, S_IFCHR},
    {"/dev/null", [](const fs::path &d) { return Made{Device(d, "null", 3)}; }, 0, nullptr, 0,
     S_IFCHR},
    {"non-UTF-8 name", [](const fs::path &) { return Made{"caf\xe9.out"}; }, 0, "caf\xe9.out", 0,
     S_IFREG},
    {"name with a newline", [](const fs::path &) { return Made{"two\nlines.out"}; }, 0,
     "two\nlines.out", 0, S_IFREG},
};

TEST(ChartOutput, EveryWriterOnEveryKindOfTarget) {
    for (const Writer &writer : kWriters) {
        TempDir reference;
        const std::string text = RunIn(reference.Path(), writer.args).out;
        for (const Target &target : kTargets) {
            SCOPED_TRACE(std::string(writer.name) + " to " + target.name);
            TempDir dir;
            Made made = target.make(dir.Path());
            if (made.name.empty()) {
                // Only root may make a device.
                EXPECT_FALSE(kRoot) << "cannot make the target";
                continue;
            }
            std::vector<std::string> args = writer.args;
            args.insert(args.end(), {writer.option, made.name});
            const Ran run = RunIn(dir.Path(), args);
            if (made.reader.valid()) {
                close(made.hold);
                WriteBytes(dir.Path() / "pipe.read", made.reader.get());
            }
            EXPECT_EQ(run.status, target.status) << run.err;
            EXPECT_TRUE(run.out.empty()) << run.out;
            if (target.status != 0) {
                EXPECT_EQ(std::count(run.err.begin(), run.err.end(), '\n'), 1) << run.err;
            }
            if (target.lands) {
                EXPECT_EQ(Fault(writer.kind, dir.Path() / target.lands, text), "");
                if (target.mode) {
                    EXPECT_EQ(fs::status(dir.Path() / target.lands).permissions(),
                              static_cast<fs::perms>(target.mode));
                }
            }
            struct stat st {};
            const fs::path name =
                made.name.starts_with('/') ? fs::path(made.name) : dir.Path() / made.name;
            EXPECT_EQ(lstat(name.c_str(), &st), 0) << "the name is gone";
            EXPECT_EQ(st.st_mode & S_IFMT, target.stays);
            for (const auto &entry : fs::directory_iterator(dir.Path()))
                EXPECT_FALSE(entry.path().filename().string().starts_with(".varnock-chart-"))
                    << "left behind: " << entry.path();
        }
    }
}

// Standard output by name, when it is a pipe (the test reads the command
// through one): /dev/stdout leads there through a link only the kernel
// follows, and is written in place.
TEST(ChartOutput, DevStdoutOnAPipe) {
    // /dev/stdout as the system makes it, a link to the process's own
    // standard output, made in a scratch folder: a fault that replaced the
    // link would replace ours, never the system's.
    testsupport::TempDir dir;
    fs::create_symlink("/proc/self/fd/1", dir.Path() / "stdout");
    const std::string text = testsupport::RunChart({"--root", "D"}).out;
    const testsupport::Outcome run = testsupport::RunChart(
        {"--root", "D", "-o", QString::fromStdString((dir.Path() / "stdout").string())});
    EXPECT_EQ(run.status, 0) << run.err;
    EXPECT_EQ(run.out, text);
    EXPECT_TRUE(fs::is_symlink(dir.Path() / "stdout"));
}

// Runs that must write nothing at all and print nothing on standard output.
struct Refused {
    const char *why;
    std::vector<std::string> args;
    int status;
    const char *says; // in the one line on standard error
    Stdout out = Stdout::Captured;
};

const Refused kRefused[] = {
    {"two outputs, one file", {"--png", "same.out", "--svg", "same.out"}, 2, "same file"},
    {"one file by two names", {"--png", "same.out", "--svg", "./same.out"}, 2, "same file"},
    {"empty file name", {"--png", ""}, 2, "needs a file name"},
    {"empty roots", {"--book", "b.pdf", "--roots", ""}, 2, "--roots \"\""},
    {"empty chords", {"--book", "b.pdf", "--chords", ""}, 2, "--chords \"\""},
    {"empty tuning", {"--tuning", "", "--png", "x.png"}, 2, "tuning \"\""},
    {"missing folder", {"--tsv", "--png", "nope/x.png"}, 1, "nope/x.png"},
    {"a failing device after a good file",
     {"--png", "ok.png", "--svg", "@full"},
     1,
     "No space left"},
    {"a folder", {"--png", "."}, 1, "Is a directory"},
    {"full standard output", {"--root", "D"}, 1, "standard output", Stdout::Full},
    {"closed standard output",
     {"--root", "D", "--text", "--png", "x.png"},
     1,
     "standard output",
     Stdout::Closed},
    {"control characters", {"--root", "D\nE\x1b"}, 2, "D\\nE\\x1b"},
    {"a name not UTF-8", {"--png", "nope\xe9/x.png"}, 1, "nope\\xe9/x.png"},
    {"a value longer than any", {"--root", std::string(100000, 'A')}, 2, "at most 100"},
    {"too many diagrams for an image",
     {"--frets", "Chromatic", "--strings", "4", "--tuning", "D,A,D,G", "--voicings", "--count",
      "999", "--reach", "22", "--muted-ok", "--png", "x.png"},
     2,
     "--count"},
};

TEST(ChartOutput, AllOrNothing) {
    for (const Refused &row : kRefused) {
        SCOPED_TRACE(row.why);
        TempDir dir;
        std::vector<std::string> args = row.args;
        for (std::string &arg : args)
            if (arg == "@full")
                arg = Device(dir.Path(), "full", 7);
        const Ran run = RunIn(dir.Path(), args, row.out);
        EXPECT_EQ(run.status, row.status) << run.err;
        EXPECT_TRUE(run.out.empty());
        EXPECT_EQ(std::count(run.err.begin(), run.err.end(), '\n'), 1) << run.err;
        EXPECT_NE(run.err.find(row.says), std::string::npos) << run.err;
        for (const auto &entry : fs::directory_iterator(dir.Path()))
            EXPECT_EQ(entry.path().filename(), "full") << "something was written";
    }
}

TEST(ChartOutput, FilesOpenCleanly) {
    TempDir dir;
    // Without --root a scale stands on the default root, A.
    const Ran scale = RunIn(dir.Path(), {"--scale", "dorian"});
    EXPECT_EQ(scale.status, 0) << scale.err;
    EXPECT_NE(scale.out.find("A dorian"), std::string::npos) << scale.out;
    // More diagrams than a page holds go on more pages, each at its size.
    const std::vector<std::string> many = {"--frets",  "Chromatic", "--strings",  "4",
                                           "--tuning", "D,A,D,G",   "--voicings", "--count",
                                           "999",      "--reach",   "22",         "--muted-ok"};
    std::vector<std::string> pdf = many;
    pdf.insert(pdf.end(), {"--pdf", "many.pdf"});
    ASSERT_EQ(RunIn(dir.Path(), pdf).status, 0);
    EXPECT_EQ(Fault(Kind::Pdf, dir.Path() / "many.pdf", ""), "");
    const Ran info = Tool("pdfinfo " + Quoted(dir.Path() / "many.pdf"));
    EXPECT_GT(std::stoi(info.out.substr(info.out.find("Pages:") + 6)), 5) << info.out;
    for (const auto &svg :
         {std::vector<std::string>{"--root", "D", "--svg", "chart.svg"},
          std::vector<std::string>{"--root", "D", "--voicings", "--svg", "chart.svg"}}) {
        ASSERT_EQ(RunIn(dir.Path(), svg).status, 0);
        EXPECT_EQ(Fault(Kind::Svg, dir.Path() / "chart.svg", ""), "");
        const std::string text = ReadBytes(dir.Path() / "chart.svg");
        EXPECT_EQ(text.find("font-family=\"Sans Serif\""), std::string::npos);
        EXPECT_NE(text.find("', sans-serif\""), std::string::npos);
    }
}

} // namespace
