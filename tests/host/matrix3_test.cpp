#include "standins/host/sdk/matrix3.h"

#include <cmath>
#include <cstdint>
#include <cstring>
#include <limits>
#include <random>
#include <string>
#include <vector>

#include <gmock/gmock.h>

#include "standins/host/memory/placement.h"

using namespace memhost;
using testing::ElementsAreArray;

namespace {

std::vector<float> numbers(const Matrix3& m) {
    std::vector<float> all;
    for (int row = 0; row < 4; ++row) {
        const Point3 r = m.GetRow(row);
        all.insert(all.end(), {r.x, r.y, r.z});
    }
    return all;
}

Matrix3 random_matrix(std::mt19937& random) {
    // Taken from the bits of the generator, since distributions differ between libraries.
    const auto number = [&random] { return static_cast<float>(random() % 4001) / 1000.0f - 2.0f; };
    Matrix3 m;
    for (int row = 0; row < 4; ++row) {
        const float x = number();
        const float y = number();
        m.SetRow(row, Point3(x, y, number()));
    }
    return m;
}

TEST(Matrix3, AppliesTheLeftOneFirst) {
    const Matrix3 m = scaling(2, 3, 4) * rotation_z(90) * translation(10, 20, 30);

    // (1, 1, 1) is scaled to (2, 3, 4), turned to (-3, 2, 4) and moved.
    const Point3 point = Point3(1, 1, 1) * m;
    EXPECT_EQ(point.x, 7);
    EXPECT_EQ(point.y, 22);
    EXPECT_EQ(point.z, 34);
    EXPECT_EQ(m.VectorTransform({1, 1, 1}).x, -3);
    EXPECT_EQ(m.GetTrans().z, 30);
}

TEST(Matrix3, TimesItsInverseIsTheIdentity) {
    std::mt19937 random(1);
    for (int i = 0; i < 1000; ++i) {
        const Matrix3 m = random_matrix(random);
        const Matrix3 inverse = Inverse(m);
        // A nearly flat matrix has an inverse of large numbers, and their rounding shows.
        float size = 1;
        for (const float number : numbers(inverse)) {
            size = std::max(size, std::fabs(number));
        }
        const std::vector<float> identity = numbers(Matrix3());
        const std::vector<float> product = numbers(m * inverse);
        for (std::size_t n = 0; n < product.size(); ++n) {
            ASSERT_NEAR(product[n], identity[n], 2e-6 * size) << "matrix " << i;
        }
    }
}

TEST(Matrix3, WithoutAnInverseGivesTheIdentity) {
    const float nan = std::numeric_limits<float>::quiet_NaN();
    const float infinity = std::numeric_limits<float>::infinity();
    const Matrix3 cases[] = {
        scaling(0, 0, 0),
        scaling(1, 0, 1),
        Matrix3({1, 2, 3}, {2, 4, 6}, {0, 0, 1}, {5, 5, 5}),
        scaling(nan, 1, 1),
        scaling(1, infinity, 1),
        translation(nan, 0, 0),
        translation(0, -infinity, 0),
        scaling(1e-39f, 1, 1),  // its inverse is past the largest float
    };
    for (const Matrix3& m : cases) {
        EXPECT_THAT(numbers(Inverse(m)), ElementsAreArray(numbers(Matrix3())));
    }
    EXPECT_EQ(Inverse(scaling(1e-20f, 1e-20f, 1e-20f)).GetRow(1).y, 1e20f);
}

// One figure over many products and inverses: every compiler and system has to get the same bits.
TEST(Matrix3, HasTheSameBitsEverywhere) {
    std::mt19937 random(2);
    std::uint32_t hash = 2166136261u;
    for (int i = 0; i < 10000; ++i) {
        const Matrix3 left = random_matrix(random);
        const Matrix3 right = random_matrix(random);
        for (const float number : numbers(left * Inverse(right))) {
            std::uint32_t bits = 0;
            std::memcpy(&bits, &number, sizeof(bits));
            hash = (hash ^ bits) * 16777619u;
        }
    }
    EXPECT_EQ(hash, 4259085855u);
}

}  // namespace
