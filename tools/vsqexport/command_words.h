#pragma once

#include <string>
#include <vector>

namespace vsqexport {

/// A line of a session, which a person may still be typing.
struct CommandLineWords {
    std::vector<std::string> words;  ///< without their quotation marks
    size_t last_begin = 0;           ///< where the last word begins in the line
    bool is_in_word = false;         ///< whether the line ends in a word
    bool is_in_quotes = false;       ///< whether a quotation mark isn't closed
    bool is_in_comment = false;
};

/// Splits a command into words at blanks. Quotation marks keep blanks in a word; between them, a
/// doubled quotation mark stands for one. A word that begins with # begins a comment, up to the end
/// of the line.
///
///     move "Left Lid" 0 0 12      -> move, Left Lid, 0, 0, 12
///     rename Lid "5"" disc"       -> rename, Lid, 5" disc
///     hide "#1"   # the first     -> hide, #1
CommandLineWords split_command(const std::string& line);

/// The words of a command that is complete. Throws `std::invalid_argument` if a quotation mark
/// isn't closed.
std::vector<std::string> command_words(const std::string& line);

}  // namespace vsqexport
