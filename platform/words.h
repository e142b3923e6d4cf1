#pragma once

// A word a hurried person typed, read against the words a list takes: the
// word or another taken for it; the same in other capitals, with accents or
// with '_' or a blank for '-', where no other word could be meant; else the
// words it most likely means, for an answer to offer.

#include <string>
#include <vector>

namespace varnock {

struct Word {
    std::string word;                   // as lists and answers write it
    int value = 0;                      // what it selects
    std::vector<std::string> also = {}; // other words taken for it ("color-blind")
};

struct WordMatch {
    const Word *taken = nullptr;
    // None taken: every word with the one typed as a part ("pentatonic"),
    // else the one or two nearest by edit distance (for two or more letters).
    std::vector<const Word *> meant = {};
};

WordMatch MatchWord(const std::vector<Word> &words, const std::string &typed);

} // namespace varnock
