#include "standins/host/memory/placement.h"

#include <cmath>

#include <gtest/gtest.h>

#include "standins/host/memory/demo_scenes.h"

using namespace memhost;

namespace {

TEST(Placement, TurnsCounterClockwiseByTheSystemsSineAndCosine) {
    for (int tenths = -7300; tenths <= 7300; ++tenths) {
        const double degrees = tenths / 10.0;
        const double radians = degrees * std::acos(-1.0) / 180.0;
        const Point3 x = Point3(1, 0, 0) * rotation_z(degrees);
        ASSERT_NEAR(x.x, std::cos(radians), 1e-7) << degrees;
        ASSERT_NEAR(x.y, std::sin(radians), 1e-7) << degrees;
    }
    // Each axis turns the next one of the cycle towards the one after it.
    EXPECT_GT((Point3(0, 1, 0) * rotation_x(30)).z, 0);
    EXPECT_GT((Point3(0, 0, 1) * rotation_y(30)).x, 0);
    EXPECT_GT((Point3(1, 0, 0) * rotation_z(30)).y, 0);
}

TEST(Placement, IsExactAtRightAngles) {
    const Point3 turned[] = {{1, 0, 0}, {0, 1, 0}, {-1, 0, 0}, {0, -1, 0}};
    for (int quarters = -8; quarters <= 8; ++quarters) {
        const Point3 x = rotation_z(90.0 * quarters).GetRow(0);
        const Point3& expected = turned[(quarters + 8) % 4];
        EXPECT_EQ(x.x, expected.x) << quarters;
        EXPECT_EQ(x.y, expected.y) << quarters;
    }
}

TEST(DemoScenes, AllBuildAndAreFoundByName) {
    for (const DemoScene& demo : demo_scenes()) {
        SceneBuilder scene;
        ASSERT_EQ(find_demo_scene(demo.name), &demo);
        demo.build(scene);
        EXPECT_GT(scene.host().nodes().size(), 1u) << demo.name;
    }
    EXPECT_EQ(find_demo_scene("no such"), nullptr);
}

}  // namespace
