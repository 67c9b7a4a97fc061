#include "tools/vsqexport/word_completion.h"

#include <algorithm>

namespace vsqexport {

namespace {

bool needs_quotes(const std::string& word) {
    return word.empty() || word[0] == '#' || word.find_first_of(" \"") != std::string::npos;
}

std::string with_open_quote(const std::string& word) {
    std::string text = "\"";
    for (const char c : word) {
        text.append(c == '"' ? 2 : 1, c);
    }
    return text;
}

// Whole UTF-8 characters that all `words`, of which there are some, begin with.
std::string common_start(const std::vector<std::string>& words) {
    const std::string& first = words.front();
    size_t length = first.size();
    for (const std::string& word : words) {
        const size_t most = std::min(length, word.size());
        const auto end = first.begin() + static_cast<std::ptrdiff_t>(most);
        length = static_cast<size_t>(std::mismatch(first.begin(), end, word.begin()).first -
                                     first.begin());
    }
    while (length > 0 && length < first.size() && (first[length] & 0xc0) == 0x80) {
        --length;
    }
    return first.substr(0, length);
}

// The terminal takes some control characters for keys.
bool can_be_typed(const std::string& word) {
    return std::none_of(word.begin(), word.end(),
                        [](unsigned char c) { return c < 0x20 || c == 0x7f; });
}

}  // namespace

Completion complete_word(const std::string& typed, const std::string& word, bool is_in_quotes,
                         std::vector<std::string> words) {
    words.erase(std::remove_if(words.begin(), words.end(),
                               [&](const std::string& one) {
                                   return one.compare(0, word.size(), word) != 0 ||
                                          !can_be_typed(one);
                               }),
                words.end());
    std::sort(words.begin(), words.end());
    words.erase(std::unique(words.begin(), words.end()), words.end());
    if (words.empty()) {
        return {typed.size(), typed, {}};
    }
    if (words.size() == 1) {
        const std::string& only = words.front();
        const bool quotes = is_in_quotes || needs_quotes(only);
        return {typed.size(), (quotes ? with_open_quote(only) + '"' : only) + ' ', {}};
    }
    const std::string start = common_start(words);
    const bool quotes = is_in_quotes || (!start.empty() && needs_quotes(start));
    return {typed.size(),
            start == word ? typed
            : quotes      ? with_open_quote(start)
                          : start,
            std::move(words)};
}

}  // namespace vsqexport
