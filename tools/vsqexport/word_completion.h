#pragma once

#include <string>
#include <vector>

namespace vsqexport {

/// What the Tab key does to a line. Text is UTF-8.
struct Completion {
    size_t replaced = 0;               ///< so many bytes before the cursor are replaced
    std::string text;                  ///< by this
    std::vector<std::string> choices;  ///< all words that fit, if there are several
};

/// Completes a word of a session's line as far as all `words` that fit agree. `typed` is the word
/// as it stands in the line, perhaps with an open quotation mark; `word` is what it means. If only
/// one fits, a blank follows it.
///
///     Le      -> "Left Arm"     with quotation marks if Left Arm alone fits
///     Le      -> "Left          if Left Leg fits too
Completion complete_word(const std::string& typed, const std::string& word, bool is_in_quotes,
                         std::vector<std::string> words);

}  // namespace vsqexport
