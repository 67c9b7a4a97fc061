#pragma once

#include <cstddef>
#include <string>

namespace vsqinfo {

/// The length of the UTF-8 sequence at `start`, or 0 if there is none that is well-formed.
std::size_t utf8_length(const std::string& bytes, std::size_t start);

}  // namespace vsqinfo
