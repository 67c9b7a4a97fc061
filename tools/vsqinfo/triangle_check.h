#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

#include "tools/vsqinfo/vsq_listener.h"

namespace vsqinfo {

/// Finds triangles of one geometry that refer to missing points.
///
/// The arrays come in any order, so the smallest and the largest index of each index array are kept
/// until the geometry ends, and are then checked against the length of the array of points.
class TriangleCheck {
public:
    /// The number of the index array with that name, or `kNoIndices`.
    static int index_array(std::string_view name);
    static constexpr int kNoIndices = -1;

    void begin_geometry() { *this = TriangleCheck(); }

    /// Adds an index of the array with the number `array`; `place` is where it is in the file.
    void add_index(int array, std::int64_t index, FilePlace place);

    /// Ends an array of any name; `count` is how many numbers it holds.
    void end_array(std::string_view name, std::uint64_t count);

    /// Tells `listener` the place of an index whose point doesn't exist, as a fault.
    void end_geometry(VsqListener& listener) const;

    std::uint64_t triangles() const;
    std::uint64_t vertices() const;

private:
    static constexpr std::size_t kIndexArrays = 3;

    struct Indices {
        std::uint64_t count = 0;
        std::int64_t smallest = 0;
        FilePlace smallest_place;
        std::int64_t largest = -1;
        FilePlace largest_place;
    };

    std::array<Indices, kIndexArrays> indices_;
    std::array<std::uint64_t, kIndexArrays> point_numbers_{};  // how many numbers the points have
    std::array<bool, kIndexArrays> has_points_{};
};

}  // namespace vsqinfo
