#include "importers/sceneapi/dev/number_text.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstring>
#include <limits>
#include <random>

namespace {

constexpr int kRandomCount = 1000000;

void expect_as_printf(double value) {
    char printed[400];
    char wanted[400];
    *number_text::print_general(printed, value) = '\0';
    std::snprintf(wanted, sizeof wanted, "%g", value);
    ASSERT_STREQ(printed, wanted);
    *number_text::print_fixed(printed, value) = '\0';
    std::snprintf(wanted, sizeof wanted, "%16.16f", value);
    ASSERT_STREQ(printed, wanted);
}

// Common numbers, and those at which printf changes its form or rounds a tie.
TEST(NumberText, EqualsPrintfInEdgeCases) {
    constexpr double kLargest = std::numeric_limits<double>::max();
    for (const double edge :
         {0.0,   -0.0,        1.0,      -1.0,         0.5,      999999.5, 999999.4, 1000000.0,
          1e-4,  9.999995e-5, 1e-5,     0.0001234565, 100000.5, 0.1,      1.0 / 3,  2.5,
          1e300, -1e-300,     123456.5, 1.0000005,    1.5e-310, 5e-324,   kLargest}) {
        expect_as_printf(edge);
        expect_as_printf(std::nextafter(edge, 1e308));
        expect_as_printf(std::nextafter(edge, -1e308));
    }
    expect_as_printf(std::numeric_limits<double>::infinity());
    expect_as_printf(-std::numeric_limits<double>::infinity());
    expect_as_printf(std::numeric_limits<double>::quiet_NaN());
}

// Six digits followed by a tie, around every power of ten.
TEST(NumberText, EqualsPrintfAroundPowersOfTen) {
    for (int exponent = -30; exponent < 30; ++exponent) {
        for (const double digits : {1.0, 9.999994, 9.999995, 9.999996, 1.0000005, 2.000015, 5.5}) {
            const double value = digits * std::pow(10.0, exponent);
            for (const double near :
                 {value, std::nextafter(value, 0.0), std::nextafter(value, 1e308)}) {
                expect_as_printf(near);
                expect_as_printf(-near);
            }
        }
    }
    for (std::int64_t odd = 2000001; odd < 20000000; odd += 1234) {
        expect_as_printf(static_cast<double>(odd) / 2);
        expect_as_printf(static_cast<double>(odd) / 32);
    }
}

TEST(NumberText, EqualsPrintfOnAMillionRandomValues) {
    std::mt19937_64 random(1);
    for (int i = 0; i < kRandomCount / 4; ++i) {
        const std::uint64_t bits = random();
        double any = 0;
        float narrow = 0;
        std::memcpy(&any, &bits, sizeof any);
        std::memcpy(&narrow, &bits, sizeof narrow);
        const auto whole = static_cast<std::int64_t>(bits);
        const auto rotation = static_cast<float>(static_cast<double>(whole) / 9.3e18);
        const double position = static_cast<double>(whole % 10000000) / 1000;  // few decimals
        for (const double value : {any, double{narrow}, double{rotation}, position}) {
            if (!std::isnan(value)) {  // not every system's printf shows the sign of NaN
                expect_as_printf(value);
            }
        }
    }
}

}  // namespace
