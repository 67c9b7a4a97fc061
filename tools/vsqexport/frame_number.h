#pragma once

#include <optional>
#include <string>

namespace vsqexport {

/// A frame's number lies between this and its negative. At any rate, the ticks of such a frame and
/// those between two of them fit 32 bits.
constexpr int kLargestFrame = 100000;

/// The number of the frame that the whole text names; nothing if it names none.
std::optional<int> parse_frame(const std::string& text);

}  // namespace vsqexport
