#include "tools/vsqexport/command_words.h"

#include <stdexcept>

namespace vsqexport {

CommandLineWords split_command(const std::string& line) {
    constexpr char kBlanks[] = " \t\r\n";
    CommandLineWords split;
    for (size_t i = 0; i < line.size(); ++i) {
        const bool is_blank = std::string(kBlanks).find(line[i]) != std::string::npos;
        if (!split.is_in_quotes && is_blank) {
            split.is_in_word = false;
            continue;
        }
        if (!split.is_in_word) {
            if (line[i] == '#') {
                split.is_in_comment = true;
                break;
            }
            split.words.emplace_back();
            split.last_begin = i;
            split.is_in_word = true;
        }
        std::string& word = split.words.back();
        if (line[i] != '"') {
            word += line[i];
        } else if (split.is_in_quotes && i + 1 < line.size() && line[i + 1] == '"') {
            word += '"';
            ++i;
        } else {
            split.is_in_quotes = !split.is_in_quotes;
        }
    }
    return split;
}

std::vector<std::string> command_words(const std::string& line) {
    CommandLineWords split = split_command(line);
    if (split.is_in_quotes) {
        throw std::invalid_argument("a quotation mark is not closed");
    }
    return std::move(split.words);
}

}  // namespace vsqexport
