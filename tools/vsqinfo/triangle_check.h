#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

namespace vsqinfo {

/// Finds triangles of one geometry that name points which it doesn't have.
///
/// The arrays come in any order, so the largest index of each index array is kept until the
/// geometry ends, and is then held against the length of the array that it points into.
class TriangleCheck {
public:
    /// The place of an index array in the list of those known, or `kNoIndices`.
    static int index_array(std::string_view name);
    static constexpr int kNoIndices = -1;

    void begin_geometry() { *this = TriangleCheck(); }

    /// An index of the array that `index_array` has found, with its place in the file.
    void add_index(int array, std::int64_t index, std::uint64_t offset);

    /// The whole array has been read; `count` is the number of its numbers.
    void end_array(std::string_view name, std::uint64_t count);

    /// Throws `MalformedFile` at the offset of an index without a point.
    void end_geometry() const;

    std::uint64_t triangles() const;
    std::uint64_t vertices() const;

private:
    static constexpr std::size_t kIndexArrays = 3;

    struct Indices {
        std::uint64_t count = 0;
        std::int64_t smallest = 0;
        std::uint64_t smallest_offset = 0;
        std::int64_t largest = -1;
        std::uint64_t largest_offset = 0;
    };

    std::array<Indices, kIndexArrays> indices_;
    std::array<std::uint64_t, kIndexArrays> point_numbers_{};  // numbers in the points' array
    std::array<bool, kIndexArrays> has_points_{};
};

}  // namespace vsqinfo
