#pragma once

#include <optional>
#include <string>

namespace vsqexport {

/// Frame numbers lie between this and its negative. At every frame rate, the ticks of such a frame
/// and the ticks between two of them fit 32 bits.
constexpr int kLargestFrame = 100000;

/// Parses a frame number; nothing unless the whole text is one.
std::optional<int> parse_frame(const std::string& text);

}  // namespace vsqexport
