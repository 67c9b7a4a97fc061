#include "plugins/3dsmax/export/arc_cosine.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstring>
#include <limits>
#include <random>
#include <vector>

namespace {

void expect_exact(float x) {
    const float wanted = static_cast<float>(std::acos(static_cast<double>(x)));
    float given = x;
    NarrowArcCosines(&given, 1);
    ASSERT_EQ(std::memcmp(&given, &wanted, sizeof given), 0) << x;
}

TEST(ArcCosine, HasTheBitsOfTheNarrowedDoubleResult) {
    for (const float edge : {0.0f, -0.0f, 0.5f, -0.5f, 1.0f, -1.0f, 1e-30f, -1e-30f}) {
        expect_exact(edge);
        expect_exact(std::nextafter(edge, 0.0f));
    }
    // Steps through bit patterns, so that numbers near 0 and 1 come as often as others.
    for (std::uint32_t bits = 0; bits <= 0x3f800000u; bits += 797) {
        float x = 0;
        std::memcpy(&x, &bits, sizeof x);
        expect_exact(x);
        expect_exact(-x);
    }
    std::mt19937 random(1);
    std::uniform_real_distribution<float> number(-1, 1);
    for (int i = 0; i < 1000000; ++i) {
        expect_exact(number(random));
    }
    std::vector<float> several(1001, std::numeric_limits<float>::quiet_NaN());
    several[600] = 0.25f;
    NarrowArcCosines(several.data(), several.size());
    EXPECT_EQ(several[600], static_cast<float>(std::acos(0.25)));
    EXPECT_TRUE(std::isnan(several[599]) && std::isnan(several[1000]));
}

}  // namespace
