#pragma once

#include <string>

namespace vsqinfo {

/// Makes `bytes` safe to print on a terminal: UTF-8 stays as it is; control characters and bytes
/// that aren't valid UTF-8 become "\x" and two hexadecimal digits.
std::string display_text(const std::string& bytes);

}  // namespace vsqinfo
