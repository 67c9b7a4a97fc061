#include "standins/host/memory/local_transform.h"

#include <gtest/gtest.h>

#include "standins/host/memory/placement.h"

using namespace memhost;

namespace {

struct KeyCase {
    TimeValue t;
    float x;
    TimeValue start;
    TimeValue end;
};

// The keys come unordered, two of them at tick 100, where the later one counts.
TEST(LocalTransform, HoldsEachKeyUntilTheNext) {
    const LocalTransform steps({{100, translation(9, 0, 0)},
                                {200, translation(3, 0, 0)},
                                {100, translation(2, 0, 0)},
                                {0, translation(1, 0, 0)}});
    const KeyCase cases[] = {
        {TIME_NegInfinity, 1, TIME_NegInfinity, 99},
        {-1, 1, TIME_NegInfinity, 99},
        {99, 1, TIME_NegInfinity, 99},
        {100, 2, 100, 199},
        {199, 2, 100, 199},
        {200, 3, 200, TIME_PosInfinity},
        {TIME_PosInfinity, 3, 200, TIME_PosInfinity},
    };
    for (const KeyCase& expected : cases) {
        Interval valid = FOREVER;
        EXPECT_EQ(steps.at(expected.t, valid).GetTrans().x, expected.x) << expected.t;
        EXPECT_EQ(valid.Start(), expected.start) << expected.t;
        EXPECT_EQ(valid.End(), expected.end) << expected.t;
    }
}

TEST(LocalTransform, NarrowsTheIntervalAndNeverWidensIt) {
    const LocalTransform constant(translation(1, 2, 3));
    const LocalTransform no_keys(std::vector<TransformKey>{});
    const LocalTransform moving([](TimeValue t) { return translation(t * 1.0f, 0, 0); });

    Interval valid(10, 20);
    constant.at(15, valid);
    no_keys.at(15, valid);
    EXPECT_EQ(valid.Start(), 10);
    EXPECT_EQ(valid.End(), 20);

    EXPECT_EQ(moving.at(15, valid).GetTrans().x, 15);
    EXPECT_EQ(valid.Start(), 15);
    EXPECT_EQ(valid.End(), 15);

    moving.at(16, valid);
    EXPECT_TRUE(valid.Empty());
    valid &= FOREVER;
    EXPECT_TRUE(valid.Empty());
}

}  // namespace
