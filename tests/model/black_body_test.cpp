#include "model/black_body.h"

#include <gtest/gtest.h>

#include <cmath>

#include "model/euler_matrix.h"

namespace qor {
namespace {

// White light excites all channels almost equally, so that an error in any row shows here.
TEST(ColorMatching, HoldsTheStandardObserver) {
    double x = 0, y = 0, z = 0;
    for (const ColorMatching& row : kColorMatching) {
        x += row.x;
        y += row.y;
        z += row.z;
    }
    EXPECT_NEAR(x, y, 0.01);
    EXPECT_NEAR(z, y, 0.01);
}

TEST(BlackBody, GlowsFromRedToBlue) {
    EXPECT_NEAR(PlanckRadiance(5e-07f, 5800) / 8.4456e13, 1, 1e-4);
    const std::pair<float, qorColor> colors[] = {
        {1000, {1.0f, 0.149f, -0.581f}},
        {3000, {0.948f, 0.682f, 0.405f}},
        {6500, {0.749f, 0.730f, 0.747f}},
    };
    for (const auto& [kelvin, wanted] : colors) {
        const qorColor color = BlackbodyColor(kelvin);
        EXPECT_NEAR(color.r, wanted.r, 1e-3) << kelvin;
        EXPECT_NEAR(color.g, wanted.g, 1e-3) << kelvin;
        EXPECT_NEAR(color.b, wanted.b, 1e-3) << kelvin;
        const Chromaticity seen = BlackbodyChromaticity(kelvin);
        EXPECT_NEAR(seen.x + seen.y + seen.z, 1, 1e-6) << kelvin;
    }
    EXPECT_EQ(BlackbodyChromaticity(0).y, 0);
    EXPECT_TRUE(std::isnan(BlackbodyColor(0).g));
    EXPECT_LT(BlackbodyChromaticity(-5000).y, 0);
}

// With these angles, a wrong axis, sign or order changes the result.
TEST(EulerMatrix, TurnsAboutXThenYThenZ) {
    const double wanted[4][4] = {{0, 0, 1, 0}, {0, -1, 0, 0}, {1, 0, 0, 0}, {0, 0, 0, 1}};
    const qorMatrix matrix = EulerMatrix(90, -90, 90);
    for (int i = 0; i < 16; ++i) {
        EXPECT_NEAR(matrix.m[i / 4][i % 4], wanted[i / 4][i % 4], 1e-15) << i;
    }
}

}  // namespace
}  // namespace qor
