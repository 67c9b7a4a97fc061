#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "tools/vsqinfo/checks/scene_check.h"

namespace vsqinfo {

/// Checks the arrays of meshes, curves and tracks: type, width, lengths that belong together,
/// numbers that aren't finite, and triangles without area.
///
/// Keeps the vertices of one mesh in memory, to find triangles with two corners in one place. If
/// the triangles come first, only equal indices are found.
class ArrayCheck final : public SceneCheck {
public:
    using SceneCheck::SceneCheck;

    void block_begins(const VsqBlock& block) override;
    void block_ends() override;
    void parameter(const VsqParameter& parameter) override;
    bool array_begins(const VsqArray& array) override;
    void array_numbers(const VsqNumbers& numbers) override;
    void array_ends(const VsqArrayEnd& end) override;

private:
    enum Known : std::size_t {
        kVertices,
        kTriangles,
        kNormals,
        kNormalIndices,
        kUvs,
        kUvIndices,
        kColours,
        kPoints,
        kStrands,
        kRadii,
        kPointColours,
        kTimestamps,
        kDeformTimestamps,
        kMatrices,
        kKnownCount,
    };
    struct KnownArray;
    static const KnownArray kKnown[];

    // The array that is being read.
    struct Open {
        const KnownArray* known = nullptr;
        std::string name;
        FilePlace place;
        std::uint64_t not_finite = 0;
    };

    struct Degenerate {
        FilePlace place;
        std::string text;
    };

    bool has(Known array) const { return found_[array]; }
    std::uint64_t elements(Known array) const;

    void add_vertices(const VsqNumbers& numbers);
    void add_corners(const VsqNumbers& numbers);
    void add_normals(const VsqNumbers& numbers);
    void add_strands(const VsqNumbers& numbers);
    void add_timestamps(const VsqNumbers& numbers);
    bool is_degenerate() const;

    void end_mesh(FilePlace place);
    void end_curves(FilePlace place);
    void end_track(FilePlace place);
    void end_object();

    std::vector<Open> open_;  // arrays nest, through shaders among their elements

    // Of the geometry or animation that is being read; they don't nest.
    std::array<bool, kKnownCount> found_{};
    std::array<std::uint64_t, kKnownCount> numbers_{};
    bool has_file_ = false;
    double order_ = 1;
    std::vector<float> vertices_;
    std::array<double, 3> corner_{};  // indices of a triangle, or coordinates of a normal
    std::size_t corners_ = 0;
    std::uint64_t degenerate_ = 0;
    std::uint64_t odd_normals_ = 0;
    double strand_points_ = 0;
    std::uint64_t short_strands_ = 0;
    double last_timestamp_ = 0;
    std::uint64_t late_timestamps_ = 0;

    // Of the object that is being read: whether it is a light is known at its end.
    std::vector<Degenerate> degenerate_meshes_;
    bool is_light_ = false;
};

}  // namespace vsqinfo
