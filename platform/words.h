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
    // Words written for it too close to another's to be taken, only offered
    // ("M7" for "maj7", as "m7" is a word too).
    std::vector<std::string> meant = {};
};

struct WordMatch {
    const Word *taken = nullptr;
    // None taken: the word written for one (as typed, else folded), else
    // every word with the one typed as a part ("pentatonic"), else the one
    // or two nearest by edit distance (for two or more letters typed).
    std::vector<const Word *> meant = {};
};

WordMatch MatchWord(const std::vector<Word> &words, const std::string &typed);

} // namespace varnock
