#pragma once

#include <string>
#include <vector>

namespace vsqexport {

/// The words of a command: what stands between blanks, or between quotation marks. Inside those,
/// two of them stand for one.
///
///     move "Left Lid" 0 0 12      -> move, Left Lid, 0, 0, 12
///     rename Lid "5"" disc"       -> rename, Lid, 5" disc
///
/// Throws `std::invalid_argument` if a quotation mark has no partner.
std::vector<std::string> command_words(const std::string& line);

}  // namespace vsqexport
