#include "platform/basic.h"

#include <algorithm>
#include <cctype>
#include <charconv>
#include <cmath>
#include <limits>
#include <string_view>

namespace varnock {

namespace {
// ASCII only and locale-free: the program runs under whatever locale Qt sets.
bool IsDigit(char c) {
    return c >= '0' && c <= '9';
}
char Lower(char c) {
    return (c >= 'A' && c <= 'Z') ? static_cast<char>(c - 'A' + 'a') : c;
}
} // namespace

std::vector<std::string> Split(const std::string &text, const std::string &separator) {
    std::vector<std::string> fields;
    if (separator.empty()) {
        fields.push_back(text);
        return fields;
    }
    std::size_t start = 0;
    for (;;) {
        const std::size_t at = text.find(separator, start);
        if (at == std::string::npos) {
            fields.push_back(text.substr(start));
            return fields;
        }
        fields.push_back(text.substr(start, at - start));
        start = at + separator.size();
    }
}

double Val(const std::string &text) {
    std::size_t i = 0;
    const std::size_t n = text.size();
    while (i < n && (text[i] == ' ' || text[i] == '\t'))
        ++i;
    const std::size_t begin = i;
    if (i < n && (text[i] == '+' || text[i] == '-'))
        ++i;
    std::size_t digits = 0;
    while (i < n && IsDigit(text[i])) {
        ++i;
        ++digits;
    }
    if (i < n && text[i] == '.') {
        ++i;
        while (i < n && IsDigit(text[i])) {
            ++i;
            ++digits;
        }
    }
    if (digits == 0)
        return 0.0;
    // An exponent counts only when digits follow it.
    if (i < n && (text[i] == 'e' || text[i] == 'E')) {
        std::size_t j = i + 1;
        if (j < n && (text[j] == '+' || text[j] == '-'))
            ++j;
        if (j < n && IsDigit(text[j])) {
            while (j < n && IsDigit(text[j]))
                ++j;
            i = j;
        }
    }
    // The span is plain decimal; from_chars reads it without the locale and
    // never sees hex, "inf" or "nan". It takes no leading "+".
    const char *first = text.data() + begin;
    const char *last = text.data() + i;
    if (*first == '+')
        ++first;
    double value = 0.0;
    const auto result = std::from_chars(first, last, value);
    if (result.ec == std::errc::result_out_of_range) {
        // Too small to hold reads as 0, too large as an infinity of its sign.
        const std::string span(first, last);
        const bool tiny =
            span.find("e-") != std::string::npos || span.find("E-") != std::string::npos;
        if (tiny)
            return 0.0;
        return (*first == '-') ? -HUGE_VAL : HUGE_VAL;
    }
    return value;
}

Int Truncate(double value) {
    if (std::isnan(value))
        return 0;
    constexpr double kLimit = 9223372036854775807.0; // 2^63, the first value out of range
    if (value >= kLimit)
        return std::numeric_limits<Int>::max();
    if (value <= -kLimit)
        return std::numeric_limits<Int>::min();
    return static_cast<Int>(value);
}

std::string Str(Int value) {
    return std::to_string(value);
}

Int InStr(const std::string &text, const std::string &pattern) {
    if (pattern.size() > text.size())
        return 0;
    if (pattern.empty())
        return text.empty() ? 0 : 1;
    const std::size_t last = text.size() - pattern.size();
    for (std::size_t at = 0; at <= last; ++at) {
        std::size_t k = 0;
        while (k < pattern.size() && Lower(text[at + k]) == Lower(pattern[k]))
            ++k;
        if (k == pattern.size())
            return static_cast<Int>(at) + 1;
    }
    return 0;
}

std::string Left(const std::string &text, Int n) {
    if (n <= 0)
        return {};
    return text.substr(0, static_cast<std::size_t>(std::min<Int>(n, Len(text))));
}

std::string Right(const std::string &text, Int n) {
    if (n <= 0)
        return {};
    const Int len = Len(text);
    if (n >= len)
        return text;
    return text.substr(static_cast<std::size_t>(len - n));
}

Int Len(const std::string &text) {
    return static_cast<Int>(text.size());
}

std::string LCase(std::string text) {
    for (char &c : text)
        c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
    return text;
}

std::string Join(const std::vector<std::string> &parts, const std::string &separator) {
    std::string out;
    for (std::size_t i = 0; i < parts.size(); ++i)
        out += (i ? separator : "") + parts[i];
    return out;
}

std::string FoldWord(const std::string &text) {
    // U+00C0..U+00FF, C3 80..C3 BF in UTF-8, by their plain letters; '_'
    // for the ones without.
    static constexpr std::string_view kPlain =
        "aaaaaa_ceeeeiiii_nooooo_ouuuuy__aaaaaa_ceeeeiiii_nooooo_ouuuuy_y";
    std::string out;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const auto next = i + 1 < text.size() ? static_cast<unsigned char>(text[i + 1]) : 0;
        if (text[i] == '\xC3' && next >= 0x80 && next <= 0xBF && kPlain[next - 0x80] != '_') {
            out += kPlain[next - 0x80];
            ++i;
        } else {
            out += text[i] == '_' || text[i] == ' ' ? '-' : Lower(text[i]);
        }
    }
    return out;
}

std::size_t EditDistance(const std::string &a, const std::string &b) {
    std::vector<std::vector<std::size_t>> d(a.size() + 1, std::vector<std::size_t>(b.size() + 1));
    for (std::size_t i = 0; i <= a.size(); ++i)
        d[i][0] = i;
    for (std::size_t j = 0; j <= b.size(); ++j)
        d[0][j] = j;
    for (std::size_t i = 1; i <= a.size(); ++i)
        for (std::size_t j = 1; j <= b.size(); ++j) {
            d[i][j] = std::min(
                {d[i - 1][j] + 1, d[i][j - 1] + 1, d[i - 1][j - 1] + (a[i - 1] != b[j - 1])});
            if (i > 1 && j > 1 && a[i - 1] == b[j - 2] && a[i - 2] == b[j - 1])
                d[i][j] = std::min(d[i][j], d[i - 2][j - 2] + 1);
        }
    return d[a.size()][b.size()];
}

std::string TrimSpaces(std::string text) {
    text.erase(0, text.find_first_not_of(' '));
    text.erase(text.find_last_not_of(' ') + 1);
    return text;
}

std::vector<std::string> SplitList(const std::string &text) {
    std::vector<std::string> parts;
    std::string::size_type start = 0;
    for (;;) {
        const auto comma = text.find(',', start);
        parts.push_back(TrimSpaces(text.substr(start, comma - start)));
        if (comma == std::string::npos)
            return parts;
        start = comma + 1;
    }
}

} // namespace varnock
