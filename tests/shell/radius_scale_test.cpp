#include "plugins/3dsmax/shell/radius_scale.h"

#include <gtest/gtest.h>

// The label loses a decimal where the multiplier passes 0.5, between positions 34 and 35.
TEST(RadiusScale, RunsFromATenthToTen) {
    const struct {
        int position;
        float multiplier;
        const char* label;
    } cases[] = {
        {1, 0.10452f, "0.10"}, {34, 0.47801f, "0.48"}, {35, 0.50055f, "0.5"},
        {50, 0.99904f, "1.0"}, {100, 9.9998f, "10.0"},
    };
    for (const auto& [position, multiplier, label] : cases) {
        const float found = RadiusMultiplierAt(position);
        EXPECT_NEAR(found, multiplier, 1e-4 * multiplier) << position;
        EXPECT_EQ(RadiusLabel(found), label);
    }
    EXPECT_EQ(RadiusLabel(0.5f), "0.5");
}
