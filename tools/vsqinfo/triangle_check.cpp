#include "tools/vsqinfo/triangle_check.h"

#include <string>

namespace vsqinfo {
namespace {

struct IndexArray {
    std::string_view indices;
    std::string_view points;
    std::uint64_t numbers_per_point;
};

constexpr IndexArray kArrays[] = {
    {"triangles", "vertices", 3},
    {"triangles_norm", "normals", 3},
    {"triangles_uv", "uv_tex", 2},
};

}  // namespace

int TriangleCheck::index_array(std::string_view name) {
    for (std::size_t i = 0; i < kIndexArrays; ++i) {
        if (kArrays[i].indices == name) {
            return static_cast<int>(i);
        }
    }
    return kNoIndices;
}

void TriangleCheck::add_index(int array, std::int64_t index, FilePlace place) {
    Indices& seen = indices_[static_cast<std::size_t>(array)];
    if (index > seen.largest) {
        seen.largest = index;
        seen.largest_place = place;
    }
    if (index < seen.smallest) {
        seen.smallest = index;
        seen.smallest_place = place;
    }
}

void TriangleCheck::end_array(std::string_view name, std::uint64_t count) {
    for (std::size_t i = 0; i < kIndexArrays; ++i) {
        if (kArrays[i].indices == name) {
            indices_[i].count = count;
        }
        if (kArrays[i].points == name) {
            point_numbers_[i] = count;
            has_points_[i] = true;
        }
    }
}

void TriangleCheck::end_geometry(VsqListener& listener) const {
    for (std::size_t i = 0; i < kIndexArrays; ++i) {
        const Indices& seen = indices_[i];
        const std::uint64_t points = point_numbers_[i] / kArrays[i].numbers_per_point;
        const bool negative = seen.smallest < 0;
        const bool beyond = seen.largest >= 0 && static_cast<std::uint64_t>(seen.largest) >= points;
        if (!has_points_[i] || (!negative && !beyond)) {
            continue;
        }
        listener.fault(Check::kIndexRange, negative ? seen.smallest_place : seen.largest_place,
                       "\"" + std::string(kArrays[i].indices) + "\" holds the index " +
                           std::to_string(negative ? seen.smallest : seen.largest) + ", but \"" +
                           std::string(kArrays[i].points) + "\" has " + std::to_string(points) +
                           " points");
    }
}

std::uint64_t TriangleCheck::triangles() const {
    return indices_[0].count / 3;
}

std::uint64_t TriangleCheck::vertices() const {
    return point_numbers_[0] / kArrays[0].numbers_per_point;
}

}  // namespace vsqinfo
