#include "platform/words.h"

#include "platform/basic.h"

#include <algorithm>

namespace varnock {

namespace {

// Each word a rule picks, once, in list order.
template <typename Rule>
std::vector<const Word *> Picked(const std::vector<Word> &words, Rule rule) {
    std::vector<const Word *> picked;
    for (const Word &word : words)
        if (rule(word))
            picked.push_back(&word);
    return picked;
}

// Whether the word or another taken for it passes.
template <typename Test> bool Any(const Word &word, Test test) {
    return test(word.word) || std::any_of(word.also.begin(), word.also.end(), test);
}

std::vector<const Word *> Meant(const std::vector<Word> &words, const std::string &typed) {
    const std::string key = FoldWord(typed);
    const auto parts = Picked(words, [&](const Word &w) {
        std::vector<std::string> parts = Split(FoldWord(w.word), "-");
        return !key.empty() && parts.size() > 1 &&
               std::find(parts.begin(), parts.end(), key) != parts.end();
    });
    if (!parts.empty() || key.size() < 2)
        return parts;
    const auto distance = [&](const Word &w) {
        std::size_t d = EditDistance(FoldWord(w.word), key);
        for (const std::string &name : w.also)
            d = std::min(d, EditDistance(FoldWord(name), key));
        return d;
    };
    std::size_t best = std::max<std::size_t>(1, key.size() / 3);
    for (const Word &word : words)
        best = std::min(best, distance(word));
    auto near = Picked(words, [&](const Word &w) { return distance(w) == best; });
    return near.size() > 2 ? std::vector<const Word *>{} : near;
}

} // namespace

WordMatch MatchWord(const std::vector<Word> &words, const std::string &typed) {
    const auto exact = Picked(words, [&](const Word &w) {
        return Any(w, [&](const std::string &n) { return n == typed; });
    });
    if (!exact.empty())
        return {exact.front()};
    const auto folded = [&](const std::string &n) { return FoldWord(n) == FoldWord(typed); };
    const auto alike = Picked(words, [&](const Word &w) { return Any(w, folded); });
    if (alike.size() == 1)
        return {alike.front()};
    return {nullptr, Meant(words, typed)};
}

} // namespace varnock
