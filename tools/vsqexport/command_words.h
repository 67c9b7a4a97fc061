#pragma once

#include <string>
#include <vector>

namespace vsqexport {

/// Splits a command into words at blanks. Quotation marks keep blanks in a word; between them, a
/// doubled quotation mark stands for one.
///
///     move "Left Lid" 0 0 12      -> move, Left Lid, 0, 0, 12
///     rename Lid "5"" disc"       -> rename, Lid, 5" disc
///
/// Throws `std::invalid_argument` if a quotation mark isn't closed.
std::vector<std::string> command_words(const std::string& line);

}  // namespace vsqexport
