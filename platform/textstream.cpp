#include "platform/textstream.h"

#include "platform/basic.h"

#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace varnock {

namespace {

std::string Describe(const std::filesystem::path &path, int error) {
    return path.string() + ": " + std::strerror(error);
}

// O_NONBLOCK keeps a pipe at the path from stalling the open; it changes
// nothing for the regular files we go on with.
int OpenRegular(const std::filesystem::path &path, int flags) {
    const int fd = ::open(path.c_str(), flags | O_CLOEXEC | O_NONBLOCK, 0666);
    if (fd < 0)
        return -1;
    struct stat info {};
    if (::fstat(fd, &info) != 0 || !S_ISREG(info.st_mode)) {
        const int error = S_ISDIR(info.st_mode) ? EISDIR : EINVAL;
        ::close(fd);
        errno = error;
        return -1;
    }
    return fd;
}

// A file with no write bit is read-only to us even when the process could
// write it anyway (root).
bool IsMarkedReadOnly(const std::filesystem::path &path) {
    struct stat info {};
    if (::stat(path.c_str(), &info) != 0)
        return false;
    return S_ISREG(info.st_mode) && (info.st_mode & (S_IWUSR | S_IWGRP | S_IWOTH)) == 0;
}

int OpenForWriting(const std::filesystem::path &path) {
    if (IsMarkedReadOnly(path)) {
        errno = EACCES;
        return -1;
    }
    // Not truncated on open: a folder or pipe at the path must be turned away
    // before anything is cut.
    const int fd = OpenRegular(path, O_WRONLY | O_CREAT);
    if (fd < 0)
        return -1;
    if (::ftruncate(fd, 0) != 0) {
        const int error = errno;
        ::close(fd);
        errno = error;
        return -1;
    }
    return fd;
}

} // namespace

std::unique_ptr<TextInputStream> TextInputStream::Open(const std::optional<FolderItem> &file) {
    const FolderItem item = NotNil(file);
    const int fd = OpenRegular(item.Path(), O_RDONLY);
    if (fd < 0)
        throw IOException(Describe(item.Path(), errno));
    return std::unique_ptr<TextInputStream>(new TextInputStream(fd));
}

TextInputStream::~TextInputStream() {
    Close();
}

std::string TextInputStream::ReadAll() {
    if (fd_ < 0)
        throw IOException("read from a closed stream");
    std::string text;
    char buffer[65536];
    for (;;) {
        const ssize_t got = ::read(fd_, buffer, sizeof buffer);
        if (got > 0) {
            text.append(buffer, static_cast<std::size_t>(got));
        } else if (got == 0) {
            return text;
        } else if (errno != EINTR) {
            throw IOException(std::string("read: ") + std::strerror(errno));
        }
    }
}

void TextInputStream::Close() {
    if (fd_ >= 0)
        ::close(fd_);
    fd_ = -1;
}

std::unique_ptr<TextOutputStream> TextOutputStream::Create(const std::optional<FolderItem> &file) {
    const FolderItem item = NotNil(file);
    const int fd = OpenForWriting(item.Path());
    if (fd < 0)
        throw IOException(Describe(item.Path(), errno));
    return std::unique_ptr<TextOutputStream>(new TextOutputStream(fd));
}

std::unique_ptr<TextOutputStream>
TextOutputStream::OpenTruncated(const std::filesystem::path &path) {
    const int fd = OpenForWriting(path);
    if (fd < 0)
        return nullptr;
    return std::unique_ptr<TextOutputStream>(new TextOutputStream(fd));
}

TextOutputStream::~TextOutputStream() {
    if (fd_ >= 0)
        ::close(fd_);
}

void TextOutputStream::Write(const std::string &text) {
    if (fd_ < 0)
        throw IOException("write to a closed stream");
    const char *next = text.data();
    std::size_t left = text.size();
    while (left > 0) {
        const ssize_t put = ::write(fd_, next, left);
        if (put > 0) {
            next += put;
            left -= static_cast<std::size_t>(put);
        } else if (put == 0) {
            throw IOException("write: no progress");
        } else if (errno != EINTR) {
            throw IOException(std::string("write: ") + std::strerror(errno));
        }
    }
}

void TextOutputStream::Close() {
    if (fd_ < 0)
        return;
    const int fd = fd_;
    fd_ = -1;
    if (::close(fd) != 0 && errno != EINTR)
        throw IOException(std::string("close: ") + std::strerror(errno));
}

} // namespace varnock
