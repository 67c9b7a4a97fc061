#pragma once

#include <cstddef>
#include <string>

namespace vsqinfo {

/// The length of the UTF-8 sequence at `start`, or 0 if it isn't well-formed.
std::size_t utf8_length(const std::string& bytes, std::size_t start);

}  // namespace vsqinfo
