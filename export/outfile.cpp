#include "export/outfile.h"

#include "music/errors.h"

#include <QFile>

#include <algorithm>
#include <cerrno>
#include <climits>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace varnock::output {

using music::BadInput;

namespace {

Batch *gathering = nullptr; // the Batch open, if any
bool stdoutClosed = false;

[[noreturn]] void Fail(const std::string &name, const std::string &why) {
    throw WriteFailed("cannot write " + name + ": " + why);
}

[[noreturn]] void FailErrno(const std::string &name, int error) {
    Fail(name, std::strerror(error));
}

std::string Folder(const std::string &path) {
    const auto slash = path.rfind('/');
    if (slash == std::string::npos)
        return ".";
    return slash == 0 ? "/" : path.substr(0, slash);
}

// Where a name leads once its symbolic links are followed.
struct Target {
    std::string path;
    bool exists = false;
    bool inPlace = false; // a device, a pipe, a socket: written, never replaced
    struct stat status = {};
};

Target Find(const std::string &name) {
    if (name.ends_with('/'))
        FailErrno(name, EISDIR);
    Target t{name};
    // What the kernel reaches through every link: a pipe or device behind a
    // link it alone can follow (/dev/stdout to a pipe) is written in place.
    struct stat reached;
    if (stat(name.c_str(), &reached) == 0 && !S_ISREG(reached.st_mode) &&
        !S_ISDIR(reached.st_mode)) {
        t.status = reached;
        t.exists = t.inPlace = true;
        return t;
    }
    // As the kernel counts: past 40 links it is a loop.
    for (int links = 0;; ++links) {
        if (lstat(t.path.c_str(), &t.status) != 0) {
            if (errno != ENOENT)
                FailErrno(name, errno);
            struct stat folder;
            if (stat(Folder(t.path).c_str(), &folder) != 0)
                FailErrno(name, errno);
            if (!S_ISDIR(folder.st_mode))
                FailErrno(name, ENOTDIR);
            return t;
        }
        if (!S_ISLNK(t.status.st_mode))
            break;
        if (links == 40)
            FailErrno(name, ELOOP);
        // Some file systems give a link no size.
        std::string to(
            std::max<std::size_t>(static_cast<std::size_t>(t.status.st_size), PATH_MAX) + 1, '\0');
        const ssize_t n = readlink(t.path.c_str(), to.data(), to.size());
        if (n < 0)
            FailErrno(name, errno);
        to.resize(static_cast<std::size_t>(n));
        t.path = to.starts_with('/') ? to : Folder(t.path) + "/" + to;
    }
    if (S_ISDIR(t.status.st_mode))
        FailErrno(name, EISDIR);
    t.exists = true;
    t.inPlace = !S_ISREG(t.status.st_mode);
    return t;
}

// One name for one file, however it was reached, to tell two outputs apart.
std::string Identity(const Target &t) {
    if (t.exists)
        return std::to_string(t.status.st_dev) + ":" + std::to_string(t.status.st_ino);
    const auto slash = t.path.rfind('/');
    char *folder = realpath(Folder(t.path).c_str(), nullptr);
    std::string id = folder ? folder : Folder(t.path);
    std::free(folder);
    return id + "/" + (slash == std::string::npos ? t.path : t.path.substr(slash + 1));
}

void WriteAll(int fd, std::string_view bytes, const std::string &name) {
    while (!bytes.empty()) {
        const ssize_t n = ::write(fd, bytes.data(), bytes.size());
        if (n < 0 && errno == EINTR)
            continue;
        if (n <= 0)
            FailErrno(name, n < 0 ? errno : EIO);
        bytes.remove_prefix(static_cast<std::size_t>(n));
    }
}

// How many bytes of `s` make its first character: 1 for ASCII, 2..4 for a
// well-formed UTF-8 sequence of a printable character, 0 for anything else
// (a stray byte, an overlong or cut-off form, a C1 control character).
std::size_t Utf8Length(std::string_view s) {
    const auto b = [&](std::size_t i) { return static_cast<unsigned char>(s[i]); };
    const unsigned char c = b(0);
    if (c < 0x80)
        return 1;
    const std::size_t n = c >= 0xf0 && c <= 0xf4  ? 4
                          : c >= 0xe0 && c < 0xf0 ? 3
                          : c >= 0xc2 && c < 0xe0 ? 2
                                                  : 0;
    if (n == 0 || s.size() < n)
        return 0;
    for (std::size_t i = 1; i < n; ++i)
        if ((b(i) & 0xc0) != 0x80)
            return 0;
    if ((c == 0xc2 && b(1) < 0xa0) || (c == 0xe0 && b(1) < 0xa0) || (c == 0xed && b(1) >= 0xa0) ||
        (c == 0xf0 && b(1) < 0x90) || (c == 0xf4 && b(1) >= 0x90))
        return 0;
    return n;
}

mode_t NewFileMode() {
    const mode_t mask = umask(0);
    umask(mask);
    return 0666 & ~mask;
}

} // namespace

FileName::FileName(const QString &name) : bytes(QFile::encodeName(name).toStdString()) {}

std::string Printable(std::string_view text) {
    static const char kHex[] = "0123456789abcdef";
    std::string out;
    for (std::size_t i = 0; i < text.size();) {
        const auto c = static_cast<unsigned char>(text[i]);
        const std::size_t n = Utf8Length(text.substr(i));
        if (n > 1 || (n == 1 && c >= 0x20 && c != 0x7f)) {
            out.append(text.substr(i, n));
            i += n;
            continue;
        }
        out += c == '\n' ? "\\n" : c == '\r' ? "\\r" : c == '\t' ? "\\t" : "";
        if (c != '\n' && c != '\r' && c != '\t')
            out += std::string("\\x") + kHex[c >> 4] + kHex[c & 15];
        ++i;
    }
    return out;
}

struct Batch::Staged {
    std::string option; // "" for an output no option named
    std::string name;
    Target target;
    std::string id;
    std::string bytes;
    std::string temporary; // while it is one
};

Batch::Batch() {
    gathering = this;
}

Batch::~Batch() {
    for (const auto &s : staged_)
        if (!s->temporary.empty())
            unlink(s->temporary.c_str());
    gathering = nullptr;
}

void Batch::Expect(const std::string &option, const std::string &name) {
    if (name.empty())
        throw BadInput("option " + option + " needs a file name, not \"\"");
    auto s = std::make_unique<Staged>();
    s->option = option;
    s->name = name;
    s->target = Find(name);
    // What writing would need, asked now: the folder for a temporary file,
    // the file itself for what is replaced or written in place.
    const std::string &path = s->target.path;
    if (!s->target.inPlace && access(Folder(path).c_str(), W_OK) != 0)
        FailErrno(name, errno);
    if (s->target.exists && access(path.c_str(), W_OK) != 0)
        FailErrno(name, errno);
    s->id = Identity(s->target);
    for (const auto &other : staged_)
        if (other->id == s->id)
            throw BadInput(option + " and " + other->option + " name the same file, " + name);
    staged_.push_back(std::move(s));
}

void Deliver(const FileName &name, std::string bytes) {
    if (!gathering) {
        Batch now;
        now.Expect("--output", name.bytes);
        now.staged_.back()->bytes = std::move(bytes);
        now.Commit("");
        return;
    }
    for (const auto &s : gathering->staged_)
        if (s->name == name.bytes) {
            s->bytes = std::move(bytes);
            return;
        }
    // A writer's own file no option announced: checked now, as late as may be.
    gathering->Expect("another output", name.bytes);
    gathering->staged_.back()->bytes = std::move(bytes);
}

void Batch::Commit(const std::string &text) {
    if (!text.empty() && stdoutClosed)
        FailErrno("standard output", EBADF);
    // Regular files first, each to a temporary file beside it, so a failure
    // leaves nothing behind...
    for (const auto &s : staged_) {
        if (s->target.inPlace)
            continue;
        std::string pattern = Folder(s->target.path) + "/.varnock-chart-XXXXXX";
        const int fd = mkostemp(pattern.data(), O_CLOEXEC);
        if (fd < 0)
            FailErrno(s->name, errno);
        s->temporary = pattern;
        const struct stat &old = s->target.status;
        const bool ok = fchmod(fd, s->target.exists ? old.st_mode & 07777 : NewFileMode()) == 0;
        // Root may keep the owner as well; anyone else keeps their own.
        if (s->target.exists && geteuid() == 0)
            (void)!fchown(fd, old.st_uid, old.st_gid);
        try {
            if (!ok)
                FailErrno(s->name, errno);
            WriteAll(fd, s->bytes, s->name);
            if (fsync(fd) != 0)
                FailErrno(s->name, errno);
        } catch (...) {
            close(fd);
            throw;
        }
        if (close(fd) != 0)
            FailErrno(s->name, errno);
    }
    // ...then what is written in place, which no rename could take back...
    for (const auto &s : staged_) {
        if (!s->target.inPlace)
            continue;
        const int fd = ::open(s->target.path.c_str(), O_WRONLY | O_NOCTTY | O_CLOEXEC);
        if (fd < 0)
            FailErrno(s->name, errno);
        try {
            WriteAll(fd, s->bytes, s->name);
        } catch (...) {
            close(fd);
            throw;
        }
        if (close(fd) != 0)
            FailErrno(s->name, errno);
    }
    // ...then the text, which no rename could take back either...
    PrintOut(text);
    // ...and every file into place at once.
    for (const auto &s : staged_) {
        if (s->temporary.empty())
            continue;
        if (rename(s->temporary.c_str(), s->target.path.c_str()) != 0)
            FailErrno(s->name, errno);
        s->temporary.clear();
    }
}

void NoteClosedStdout() {
    if (fcntl(STDOUT_FILENO, F_GETFD) != -1)
        return;
    // Held by /dev/null so no file we open takes its place.
    stdoutClosed = true;
    const int fd = ::open("/dev/null", O_WRONLY);
    if (fd >= 0 && fd != STDOUT_FILENO)
        close(fd);
}

void PrintOut(std::string_view text) {
    if (text.empty())
        return;
    if (stdoutClosed)
        FailErrno("standard output", EBADF);
    WriteAll(STDOUT_FILENO, text, "standard output");
}

} // namespace varnock::output
