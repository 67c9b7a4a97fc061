#pragma once

#include <cstddef>
#include <cstdint>
#include <limits>

/// Numbers as text, to the letter what printf gives in the "C" locale, several times faster and
/// alike on every system, infinities and what is no number ("nan", "-nan") included.
///
/// Each writes at `out`, without a terminator, and gives the end of the text.
namespace number_text {

/// What the renderer takes of a number: itself, or -1 for what is no number and for what isn't
/// strictly between the ends of a float's range.
template <typename Number>
Number ordinary(Number value) {
    constexpr Number kLargest = std::numeric_limits<float>::max();
    return value > -kLargest && value < kLargest ? value : Number(-1);
}

/// Room that `print_general`, `print_int` and `print_unsigned` never exceed.
constexpr size_t kShortRoom = 32;

/// Room that `print_fixed` never exceeds: the largest double has 309 digits before the point.
constexpr size_t kFixedRoom = 344;

/// As "%g".
char* print_general(char* out, double value);

/// As "%16.16f".
char* print_fixed(char* out, double value);

/// As "%d".
char* print_int(char* out, std::int32_t value);

/// As "%u".
char* print_unsigned(char* out, std::uint32_t value);

}  // namespace number_text
