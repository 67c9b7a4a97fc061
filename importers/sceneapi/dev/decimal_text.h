#pragma once

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <limits>
#include <string>

/// The decimal number at the beginning of a text, or 0 if there is none. A number outside the
/// type's range becomes the nearest one in it.
inline std::int64_t decimal_number_64(const std::string& text) {
    return std::strtoll(text.c_str(), nullptr, 10);
}

inline std::int32_t decimal_number(const std::string& text) {
    using Limits = std::numeric_limits<std::int32_t>;
    const std::int64_t number = decimal_number_64(text);
    return static_cast<std::int32_t>(
        std::clamp<std::int64_t>(number, Limits::min(), Limits::max()));
}
