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

constexpr int kMantissaBits = 52;
constexpr int kExponentBias = 1023;
constexpr std::uint64_t kHiddenBit = std::uint64_t{1} << kMantissaBits;

// Nearly all numbers of a scene are in this range, and they are printed without a general
// algorithm. To get six digits, they are multiplied by a power of ten that is at least 1 and whose
// power of five fits into 64 bits.
constexpr double kSmallest = 1e-21;
constexpr double kTooLarge = 999999.0;
constexpr int kMostPowers = 28;

constexpr std::uint32_t kSixDigits = 1000000;

struct Powers {
    std::uint64_t of_five[kMostPowers];
};

// All of them fit: the largest, 5^27, has 63 bits.
constexpr Powers make_powers() {
    Powers powers{};
    powers.of_five[0] = 1;
    for (int i = 1; i < kMostPowers; ++i) {
        powers.of_five[i] = powers.of_five[i - 1] * 5;
    }
    return powers;
}

constexpr Powers kPowers = make_powers();

struct Wide {
    std::uint64_t high;
    std::uint64_t low;
};

Wide multiply(std::uint64_t a, std::uint64_t b) {
    constexpr std::uint64_t kLow = 0xffffffffu;
    const std::uint64_t low = (a & kLow) * (b & kLow);
    const std::uint64_t middle = (a >> 32) * (b & kLow) + (low >> 32);
    const std::uint64_t middle_too = (a & kLow) * (b >> 32) + (middle & kLow);
    return {(a >> 32) * (b >> 32) + (middle >> 32) + (middle_too >> 32),
            (middle_too << 32) | (low & kLow)};
}

// A positive number with six digits: d.ddddd * 10^exponent.
struct Decimal {
    std::uint32_t digits;
    int exponent;
};

// Rounds value * 10^(5 - exponent) to an integer, and ties to the even one, as printf does. Nothing
// is lost before that, because the product of the mantissa and the power of five is exact.
std::uint32_t scaled(std::uint64_t mantissa, int binary_exponent, int exponent) {
    const int power = kGeneralDigits - 1 - exponent;
    const Wide product = multiply(mantissa, kPowers.of_five[power]);
    const int shift = -(binary_exponent + power);  // 33 to 97 for the numbers in range

    std::uint64_t whole = 0;
    std::uint64_t rest = 0;  // the highest 64 bits after the point
    bool more_after_rest = false;
    if (shift < 64) {
        whole = (product.high << (64 - shift)) | (product.low >> shift);
        rest = product.low << (64 - shift);
    } else if (shift == 64) {
        whole = product.high;
        rest = product.low;
    } else {
        whole = product.high >> (shift - 64);
        rest = (product.high << (128 - shift)) | (product.low >> (shift - 64));
        more_after_rest = (product.low << (128 - shift)) != 0;
    }
    constexpr std::uint64_t kHalf = std::uint64_t{1} << 63;
    const bool tie = rest == kHalf && !more_after_rest;
    const bool up = tie ? (whole & 1) != 0 : rest >= kHalf;
    return static_cast<std::uint32_t>(whole) + (up ? 1 : 0);
}

Decimal to_decimal(double value) {
    std::uint64_t bits = 0;
    std::memcpy(&bits, &value, sizeof bits);
    const std::uint64_t mantissa = (bits & (kHiddenBit - 1)) | kHiddenBit;
    const int power_of_two = static_cast<int>(bits >> kMantissaBits) - kExponentBias;

    // 1233/4096 is nearly log10(2): the estimate is right or one too small.
    int exponent = (power_of_two * 1233 - (power_of_two < 0 ? 4095 : 0)) / 4096;
    std::uint32_t digits = scaled(mantissa, power_of_two - kMantissaBits, exponent);
    while (digits >= kSixDigits) {
        ++exponent;
        digits = scaled(mantissa, power_of_two - kMantissaBits, exponent);
    }
    return {digits, exponent};
}

char* print_decimal(char* out, Decimal decimal) {
    char digits[kGeneralDigits];
    for (int i = kGeneralDigits - 1; i >= 0; --i) {
        digits[i] = static_cast<char>('0' + decimal.digits % 10);
        decimal.digits /= 10;
    }
    int count = kGeneralDigits;
    while (digits[count - 1] == '0') {
        --count;
    }

    if (decimal.exponent < -4) {
        *out++ = digits[0];
        if (count > 1) {
            *out++ = '.';
            out = std::copy(digits + 1, digits + count, out);
        }
        const int exponent = -decimal.exponent;
        *out++ = 'e';
        *out++ = '-';
        *out++ = static_cast<char>('0' + exponent / 10);
        *out++ = static_cast<char>('0' + exponent % 10);
        return out;
    }
    if (decimal.exponent < 0) {
        *out++ = '0';
        *out++ = '.';
        out = std::fill_n(out, -decimal.exponent - 1, '0');
        return std::copy(digits, digits + count, out);
    }
    const int before_point = decimal.exponent + 1;
    out = std::copy(digits, digits + before_point, out);
    if (count > before_point) {
        *out++ = '.';
        out = std::copy(digits + before_point, digits + count, out);
    }
    return out;
}

// Prints NaN or an infinity. The texts are fixed here, because standard libraries word NaN
// differently.
char* print_non_finite(char* out, double value) {
    if (std::signbit(value)) {
        *out++ = '-';
    }
    return std::copy_n(std::isnan(value) ? "nan" : "inf", 3, out);
}

}  // namespace

char* print_general(char* out, double value) {
    if (!std::isfinite(value)) {
        return print_non_finite(out, value);
    }
    // A fast path, because matrices consist mostly of zeros and ones.
    if (value == 1.0) {
        *out = '1';
        return out + 1;
    }
    const double size = std::fabs(value);
    if (size == 0.0 || (size >= kSmallest && size < kTooLarge)) {
        if (std::signbit(value)) {
            *out++ = '-';
        }
        if (size == 0.0) {
            *out = '0';
            return out + 1;
        }
        return print_decimal(out, to_decimal(size));
    }
    return std::to_chars(out, out + kShortRoom, value, std::chars_format::general, kGeneralDigits)
        .ptr;
}

char* print_fixed(char* out, double value) {
    if (!std::isfinite(value)) {
        // Only these texts can be shorter than the width.
        char text[kFixedWidth];
        const std::ptrdiff_t length = print_non_finite(text, value) - text;
        out = std::fill_n(out, kFixedWidth - length, ' ');
        return std::copy_n(text, length, out);
    }
    return std::to_chars(out, out + kFixedRoom, value, std::chars_format::fixed, kFixedDecimals)
        .ptr;
}

char* print_int(char* out, std::int32_t value) {
    return std::to_chars(out, out + kShortRoom, value).ptr;
}

char* print_unsigned(char* out, std::uint32_t value) {
    return std::to_chars(out, out + kShortRoom, value).ptr;
}

}  // namespace number_text
