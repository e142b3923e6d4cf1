#pragma once

// The small runtime the chord model and the settings store are written against:
// signed 64-bit integers, arrays told by their upper bound, checked indexing that
// throws instead of wrapping, and the text helpers with the exact behaviour the
// rest of the program relies on (Split keeps empty fields, Val reads a leading
// number, InStr is 1-based and case-insensitive).

#include <cstdint>
#include <stdexcept>
#include <string>
#include <vector>

namespace varnock {

using Int = std::int64_t;

// Raised for any read or write outside an array's bounds. Nothing in the chord
// model catches it: it leaves the handler that started the recompute.
class OutOfBoundsException : public std::out_of_range {
  public:
    using std::out_of_range::out_of_range;
};

// Raised by file operations that cannot be carried out.
class IOException : public std::runtime_error {
  public:
    using std::runtime_error::runtime_error;
};

// Raised when an object that is not there is used.
class NilObjectException : public std::runtime_error {
  public:
    using std::runtime_error::runtime_error;
};

// A 0-based array told by its inclusive upper bound (-1 when empty). Every
// access is checked. Arrays are replaced whole, never edited in place.
template <class T> class Array {
  public:
    Array() = default;
    Array(std::initializer_list<T> values) : items_(values) {}
    explicit Array(std::vector<T> values) : items_(std::move(values)) {}
    // An array of `count` default values (empty strings, zeros).
    static Array Sized(Int count) { return Array(std::vector<T>(static_cast<std::size_t>(count))); }

    Int Ubound() const { return static_cast<Int>(items_.size()) - 1; }
    Int Count() const { return static_cast<Int>(items_.size()); }

    const T &operator()(Int i) const { return items_.at(Check(i)); }
    T &operator()(Int i) { return items_.at(Check(i)); }

    const std::vector<T> &Items() const { return items_; }
    bool operator==(const Array &) const = default;

  private:
    std::size_t Check(Int i) const {
        if (i < 0 || i >= Count())
            throw OutOfBoundsException("index " + std::to_string(i) + " outside 0.." +
                                       std::to_string(Ubound()));
        return static_cast<std::size_t>(i);
    }
    std::vector<T> items_;
};

// A two-dimensional array with inclusive upper bounds, every access checked.
template <class T> class Array2 {
  public:
    Array2(Int ubound1, Int ubound2)
        : rows_(ubound1 + 1), cols_(ubound2 + 1), items_(static_cast<std::size_t>(rows_ * cols_)) {}

    Int Ubound1() const { return rows_ - 1; }
    Int Ubound2() const { return cols_ - 1; }

    const T &operator()(Int r, Int c) const { return items_[Check(r, c)]; }
    T &operator()(Int r, Int c) { return items_[Check(r, c)]; }

  private:
    std::size_t Check(Int r, Int c) const {
        if (r < 0 || r >= rows_ || c < 0 || c >= cols_)
            throw OutOfBoundsException("cell (" + std::to_string(r) + ", " + std::to_string(c) +
                                       ") outside the table");
        return static_cast<std::size_t>(r * cols_ + c);
    }
    Int rows_;
    Int cols_;
    std::vector<T> items_;
};

// The fields between separators, empty ones kept, also a trailing one:
// Split("A,E,", ",") gives "A", "E", "".
std::vector<std::string> Split(const std::string &text, const std::string &separator);

// The number at the start of the text (after leading blanks), 0 when there is
// none: an optional sign, digits, an optional fraction and exponent.
double Val(const std::string &text);

// A number cut toward zero to an integer. Values beyond the 64-bit range are
// held at its ends and NaN gives 0, so no input can make this undefined.
Int Truncate(double value);

// Decimal digits of the integer, no leading zeros, a "-" for negatives.
std::string Str(Int value);

// 1-based position of the first case-insensitive (ASCII) match of pattern in
// text, 0 when there is none. An empty pattern matches at 1 unless text is empty.
Int InStr(const std::string &text, const std::string &pattern);

// The first / last n characters; n <= 0 gives "", n beyond the length the whole.
std::string Left(const std::string &text, Int n);
std::string Right(const std::string &text, Int n);
Int Len(const std::string &text);

// The text with its ASCII letters in lower case, for words typed in any case.
std::string LCase(std::string text);

// The parts with the separator between them.
std::string Join(const std::vector<std::string> &parts, const std::string &separator);
// The text without the spaces around it: those are only typing comfort.
std::string TrimSpaces(std::string text);
// "a, b , c" as its entries trimmed of spaces; "" gives one empty entry.
std::vector<std::string> SplitList(const std::string &text);

// A word as compared with what a hurried player types: ASCII letters in lower
// case, the accented Latin letters as their plain ones ("R\u00e9" is "re"), and
// '_' and blanks as '-'.
std::string FoldWord(const std::string &text);
// Insertions, deletions, substitutions and swaps of two neighbours each count one.
std::size_t EditDistance(const std::string &a, const std::string &b);

} // namespace varnock
