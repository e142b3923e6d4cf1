#pragma once

// How varnock-chart's outputs reach the disk, the same for every writer.
// A name is the bytes the user typed, never re-encoded. A regular file, or a
// name not yet taken, is written to a temporary file beside it and renamed
// over it, keeping the old file's permissions; a symbolic link is followed
// and its target written so; a device, a pipe or any other special file is
// opened and written in place, never replaced.
//
// While a Batch is open, writers only hand their bytes to it; it checks
// every output before anything is made and writes them all, or none, when
// it commits.

#include <QBuffer>
#include <QString>

#include <memory>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace varnock::output {

// A file that could not be written.
struct WriteFailed : std::runtime_error {
    using std::runtime_error::runtime_error;
};

// A file name as the file system's bytes.
struct FileName {
    std::string bytes;
    FileName(std::string name) : bytes(std::move(name)) {}
    FileName(const char *name) : bytes(name) {}
    // A name made in Qt, in the file system's encoding.
    FileName(const QString &name);
};

// The text fit for a one-line message: control characters and bytes that
// are not UTF-8 escaped ("\n", "\x1b", "\xe9"); the rest as it is.
std::string Printable(std::string_view text);

// An output being made: the writer fills it as a file, Commit hands the
// bytes on.
class OutputFile : public QBuffer {
  public:
    explicit OutputFile(FileName name) : name_(std::move(name)) {}
    const FileName &Name() const { return name_; }

  private:
    FileName name_;
};

// Writes `bytes` to `name` now, or, while a Batch is open, hands them to it.
// WriteFailed when they cannot be written.
void Deliver(const FileName &name, std::string bytes);

class Batch {
  public:
    Batch();
    // Without Commit nothing is written.
    ~Batch();
    Batch(const Batch &) = delete;
    Batch &operator=(const Batch &) = delete;

    // One output named by `option`, checked now: BadInput for an empty name
    // or a file already named by another option, WriteFailed for one that
    // cannot be written (a missing folder, a link that loops).
    void Expect(const std::string &option, const std::string &name);
    // Every file, then `text` on standard output; on a failure, nothing
    // printed and no file left behind.
    void Commit(const std::string &text);

  private:
    struct Staged;
    std::vector<std::unique_ptr<Staged>> staged_;
    friend void Deliver(const FileName &, std::string);
};

// `text` on standard output, flushed; WriteFailed when it does not all get there.
void PrintOut(std::string_view text);
// Standard output closed when the program started: nothing printed can arrive.
void NoteClosedStdout();

} // namespace varnock::output
