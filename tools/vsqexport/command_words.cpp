#include "tools/vsqexport/command_words.h"

#include <stdexcept>

namespace vsqexport {

std::vector<std::string> command_words(const std::string& line) {
    constexpr char kBlanks[] = " \t\r\n";
    std::vector<std::string> words;
    bool in_word = false;
    bool in_quotes = false;
    for (size_t i = 0; i < line.size(); ++i) {
        const bool is_blank = std::string(kBlanks).find(line[i]) != std::string::npos;
        if (!in_quotes && is_blank) {
            in_word = false;
            continue;
        }
        if (!in_word) {
            words.emplace_back();
            in_word = true;
        }
        if (line[i] != '"') {
            words.back() += line[i];
        } else if (in_quotes && i + 1 < line.size() && line[i + 1] == '"') {
            words.back() += '"';
            ++i;
        } else {
            in_quotes = !in_quotes;
        }
    }
    if (in_quotes) {
        throw std::invalid_argument("a quotation mark is not closed");
    }
    return words;
}

}  // namespace vsqexport
