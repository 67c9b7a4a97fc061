#include "tools/vsqinfo/checks/array_check.h"

#include <algorithm>
#include <cmath>
#include <iterator>
#include <limits>
#include <string_view>

#include "tools/vsqinfo/vsq_tokens.h"

namespace vsqinfo {

struct ArrayCheck::KnownArray {
    Known known;
    std::string_view keyword;  // of the block
    std::string_view type;     // of the block
    std::string_view name;
    char tag;               // of a binary body; 0 if it has to be text
    std::uint64_t numbers;  // of each element
};

const ArrayCheck::KnownArray ArrayCheck::kKnown[] = {
    {kVertices, "geometry", "triangles", "vertices", 'c', 3},
    {kTriangles, "geometry", "triangles", "triangles", 'i', 3},
    {kNormals, "geometry", "triangles", "normals", 'c', 3},
    {kNormalIndices, "geometry", "triangles", "triangles_norm", 'i', 3},
    {kUvs, "geometry", "triangles", "uv_tex", 'f', 2},
    {kUvIndices, "geometry", "triangles", "triangles_uv", 'i', 3},
    {kColours, "geometry", "triangles", "vcolors", 'c', 3},
    {kPoints, "geometry", "qor_curves", "p", 'c', 3},
    {kStrands, "geometry", "qor_curves", "nvertices", 'i', 1},
    {kRadii, "geometry", "qor_curves", "pr", 'f', 1},
    {kPointColours, "geometry", "qor_curves", "pcol", 'c', 3},
    {kTimestamps, "animation", "fbx_animation_2", "timestamps", 'i', 1},
    {kTimestamps, "animation", "fbx_animation", "timestamps", 'i', 1},
    {kDeformTimestamps, "animation", "deformable", "timestamps", 'f', 1},
    {kMatrices, "animation", "fbx_animation_2", "matrices", 0, 16},
    {kMatrices, "animation", "fbx_animation", "matrices", 0, 16},
};

std::uint64_t ArrayCheck::elements(Known array) const {
    const auto is_same = [array](const KnownArray& known) { return known.known == array; };
    return numbers_[array] / std::find_if(std::begin(kKnown), std::end(kKnown), is_same)->numbers;
}

void ArrayCheck::block_begins(const VsqBlock& block) {
    if (block.keyword == "geometry" || block.keyword == "animation") {
        found_ = {};
        numbers_ = {};
        has_file_ = false;
        order_ = 1;
        vertices_.clear();
        degenerate_ = 0;
        odd_normals_ = 0;
        strand_points_ = 0;
        short_strands_ = 0;
        late_timestamps_ = 0;
        last_timestamp_ = -std::numeric_limits<double>::infinity();
    } else if (block.keyword == "object") {
        degenerate_meshes_.clear();
        is_light_ = false;
    } else if (block.keyword == "shader") {
        is_light_ = is_light_ || block.type == "qor_point_light" || block.type == "qor_ies_light" ||
                    block.type == "qor_mesh_light";
    }
}

void ArrayCheck::block_ends() {
    const FilePlace place = path().innermost()->place;
    if (path().is_in("geometry", "triangles")) {
        end_mesh(place);
    } else if (path().is_in("geometry", "qor_curves")) {
        end_curves(place);
    } else if (path().is_in("animation")) {
        end_track(place);
    } else if (path().is_in("object")) {
        end_object();
    }
}

void ArrayCheck::parameter(const VsqParameter& parameter) {
    if (path().is_in("geometry") && parameter.name == "file") {
        has_file_ = true;
    }
    if (path().is_in("geometry", "qor_curves") && parameter.name == "order" &&
        classify_value(parameter.value) == ValueWord::kFinite) {
        order_ = number_value(parameter.value);
    }
}

bool ArrayCheck::array_begins(const VsqArray& array) {
    const VsqBlock& block = *path().innermost();
    Open open;
    open.name = array.name;
    open.place = array.place;
    for (const KnownArray& known : kKnown) {
        if (known.name == array.name && known.keyword == block.keyword &&
            known.type == block.type) {
            open.known = &known;
        }
    }
    corners_ = 0;
    open_.push_back(std::move(open));
    return true;
}

void ArrayCheck::array_numbers(const VsqNumbers& numbers) {
    Open& open = open_.back();
    // The sum of finite numbers that were floats is finite; adding them is faster than to ask each.
    double sum = 0;
    for (std::size_t i = 0; i < numbers.count; ++i) {
        sum += numbers.numbers[i];
    }
    if (!std::isfinite(sum)) {
        open.not_finite += static_cast<std::uint64_t>(
            std::count_if(numbers.numbers, numbers.numbers + numbers.count,
                          [](double number) { return !std::isfinite(number); }));
    }
    switch (open.known ? open.known->known : kKnownCount) {
        case kVertices:
            return add_vertices(numbers);
        case kTriangles:
            return add_corners(numbers);
        case kNormals:
            return add_normals(numbers);
        case kStrands:
            return add_strands(numbers);
        case kTimestamps:
        case kDeformTimestamps:
            return add_timestamps(numbers);
        default:
            return;
    }
}

void ArrayCheck::add_vertices(const VsqNumbers& numbers) {
    std::transform(numbers.numbers, numbers.numbers + numbers.count, std::back_inserter(vertices_),
                   [](double number) { return static_cast<float>(number); });
}

void ArrayCheck::add_corners(const VsqNumbers& numbers) {
    for (std::size_t i = 0; i < numbers.count; ++i) {
        corner_[corners_++] = numbers.numbers[i];
        if (corners_ == corner_.size()) {
            degenerate_ += is_degenerate() ? 1 : 0;
            corners_ = 0;
        }
    }
}

bool ArrayCheck::is_degenerate() const {
    const float* position[3];
    for (std::size_t i = 0; i < 3; ++i) {
        if (!(corner_[i] >= 0 && corner_[i] < static_cast<double>(vertices_.size() / 3))) {
            return corner_[0] == corner_[1] || corner_[1] == corner_[2] || corner_[2] == corner_[0];
        }
        position[i] = &vertices_[3 * static_cast<std::size_t>(corner_[i])];
    }
    const auto same = [&position](int a, int b) {
        return std::equal(position[a], position[a] + 3, position[b]);
    };
    return same(0, 1) || same(1, 2) || same(2, 0);
}

void ArrayCheck::add_normals(const VsqNumbers& numbers) {
    constexpr double kTolerance = 0.01;
    for (std::size_t i = 0; i < numbers.count; ++i) {
        corner_[corners_++] = numbers.numbers[i];
        if (corners_ == corner_.size()) {
            const double square =
                corner_[0] * corner_[0] + corner_[1] * corner_[1] + corner_[2] * corner_[2];
            odd_normals_ += std::abs(square - 1) > 2 * kTolerance ? 1 : 0;
            corners_ = 0;
        }
    }
}

void ArrayCheck::add_strands(const VsqNumbers& numbers) {
    for (std::size_t i = 0; i < numbers.count; ++i) {
        strand_points_ += numbers.numbers[i];
        short_strands_ += numbers.numbers[i] < order_ ? 1 : 0;
    }
}

void ArrayCheck::add_timestamps(const VsqNumbers& numbers) {
    for (std::size_t i = 0; i < numbers.count; ++i) {
        late_timestamps_ += numbers.numbers[i] > last_timestamp_ ? 0 : 1;
        last_timestamp_ = numbers.numbers[i];
    }
}

void ArrayCheck::array_ends(const VsqArrayEnd& end) {
    const Open open = std::move(open_.back());
    open_.pop_back();
    const std::string text = shown(open.name) + " in " + path().shown();
    if (open.not_finite != 0) {
        found(Check::kArrayNotFinite, open.place,
              text + ": " + std::to_string(open.not_finite) + " of " + std::to_string(end.numbers) +
                  " numbers");
    }
    if (!open.known) {
        return;
    }
    found_[open.known->known] = true;
    numbers_[open.known->known] = end.numbers;
    // The reader itself tells of indices that aren't integers, and of triples that aren't whole.
    const bool holds_indices = open.known->tag == 'i' && open.known->numbers == 3;
    if (end.tag != 0 && end.tag != open.known->tag && !holds_indices) {
        found(Check::kArrayTag, open.place,
              text + " has the tag " + shown({&end.tag, 1}) +
                  (open.known->tag == 0 ? "" : ", not " + shown({&open.known->tag, 1})));
    }
    if (end.numbers % open.known->numbers != 0 && end.tag != 'c' && !holds_indices) {
        found(Check::kArrayWidth, open.place,
              text + " has " + std::to_string(end.numbers) + " numbers, " +
                  std::to_string(open.known->numbers) + " to an element");
    }
}

void ArrayCheck::end_mesh(FilePlace place) {
    const std::string where = path().shown();
    const struct {
        Known points;
        Known indices;
        const char* points_name;
        const char* indices_name;
    } attributes[] = {{kVertices, kTriangles, "vertices", "triangles"},
                      {kNormals, kNormalIndices, "normals", "triangles_norm"},
                      {kUvs, kUvIndices, "uv_tex", "triangles_uv"},
                      {kColours, kTriangles, "vcolors", ""}};
    for (const auto& attribute : attributes) {
        const bool is_parallel = attribute.indices == kTriangles || !has(attribute.indices);
        if (is_parallel && has(attribute.points) &&
            elements(attribute.points) != elements(kVertices)) {
            found(Check::kArrayLengths, place,
                  shown(attribute.points_name) + " has " +
                      std::to_string(elements(attribute.points)) + " elements for " +
                      std::to_string(elements(kVertices)) + " vertices in " + where);
        }
        if (attribute.indices_name[0] != '\0' && elements(attribute.indices) != 0 &&
            !has(attribute.points)) {
            found(Check::kTrianglesWithoutVertices, place,
                  shown(attribute.indices_name) + " without " + shown(attribute.points_name) +
                      " in " + where);
        }
    }
    const bool has_arrays = std::find(found_.begin(), found_.end(), true) != found_.end();
    if (has_arrays == has_file_) {
        found(has_file_ ? Check::kFileAndArrays : Check::kGeometryEmpty, place, where);
    }
    if (odd_normals_ != 0) {
        found(Check::kNormalLength, place,
              std::to_string(odd_normals_) + " of " + std::to_string(elements(kNormals)) +
                  " normals in " + where);
    }
    if (degenerate_ != 0) {
        degenerate_meshes_.push_back({place, std::to_string(degenerate_) + " of " +
                                                 std::to_string(elements(kTriangles)) +
                                                 " triangles in " + where});
        if (!path().around() || path().around()->keyword != "object") {
            end_object();
        }
    }
}

void ArrayCheck::end_curves(FilePlace place) {
    const std::string where = path().shown();
    const auto points = static_cast<double>(elements(kPoints));
    if (strand_points_ != points) {
        found(Check::kStrandPoints, place,
              "\"nvertices\" doesn't sum to the " + std::to_string(elements(kPoints)) +
                  " points of \"p\" in " + where);
    }
    for (const Known array : {kRadii, kPointColours}) {
        if (has(array) && elements(array) != elements(kPoints)) {
            found(Check::kStrandLengths, place,
                  std::to_string(elements(array)) + (array == kRadii ? " radii" : " colours") +
                      " for " + std::to_string(elements(kPoints)) + " points in " + where);
        }
    }
    if (short_strands_ != 0) {
        found(Check::kStrandShort, place,
              std::to_string(short_strands_) + " of " + std::to_string(elements(kStrands)) +
                  " strands in " + where);
    }
    if (!has(kPoints)) {
        found(Check::kGeometryEmpty, place, where);
    }
}

void ArrayCheck::end_track(FilePlace place) {
    const VsqBlock& track = *path().innermost();
    const std::string text = shown(track.name) + " in " + path().shown();
    if (track.type == "fbx_animation_2" || track.type == "fbx_animation") {
        if (elements(kTimestamps) != elements(kMatrices)) {
            found(Check::kTrackLengths, place,
                  text + " has " + std::to_string(elements(kTimestamps)) + " timestamps and " +
                      std::to_string(elements(kMatrices)) + " matrices");
        }
        if (elements(kTimestamps) == 0) {
            found(Check::kTrackEmpty, place, text);
        }
    }
    if (late_timestamps_ != 0) {
        found(Check::kTrackOrder, place,
              text + ": " + std::to_string(late_timestamps_) + " timestamps");
    }
}

void ArrayCheck::end_object() {
    for (Degenerate& mesh : degenerate_meshes_) {
        found(is_light_ ? Check::kLightDegenerate : Check::kTriangleDegenerate, mesh.place,
              std::move(mesh.text));
    }
    degenerate_meshes_.clear();
}

}  // namespace vsqinfo
