#pragma once

#include <string>

namespace vsqinfo {

/// `bytes` fit for a terminal: UTF-8 stays as it is; control characters and bytes that are no
/// UTF-8 become "\x" and two hexadecimal digits.
std::string display_text(const std::string& bytes);

}  // namespace vsqinfo
