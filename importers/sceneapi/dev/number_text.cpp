#include "importers/sceneapi/dev/number_text.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstring>

namespace number_text {

namespace {

constexpr int kGeneralDigits = 6;
constexpr int kFixedDecimals = 16;
constexpr std::ptrdiff_t kFixedWidth = 16;

}  // namespace

char* print_general(char* out, double value) {
    // Matrices are mostly made of zeros and ones.
    if (value == 0.0 && !std::signbit(value)) {
        *out = '0';
        return out + 1;
    }
    if (value == 1.0) {
        *out = '1';
        return out + 1;
    }
    return std::to_chars(out, out + kShortRoom, value, std::chars_format::general, kGeneralDigits)
        .ptr;
}

char* print_fixed(char* out, double value) {
    char* end =
        std::to_chars(out, out + kFixedRoom, value, std::chars_format::fixed, kFixedDecimals).ptr;

    // Only what is no number is shorter than the width.
    const std::ptrdiff_t length = end - out;
    if (length < kFixedWidth) {
        std::memmove(out + kFixedWidth - length, out, static_cast<size_t>(length));
        std::fill(out, out + kFixedWidth - length, ' ');
        end = out + kFixedWidth;
    }
    return end;
}

char* print_int(char* out, std::int32_t value) {
    return std::to_chars(out, out + kShortRoom, value).ptr;
}

char* print_unsigned(char* out, std::uint32_t value) {
    return std::to_chars(out, out + kShortRoom, value).ptr;
}

}  // namespace number_text
