#pragma once

#include <array>
#include <filesystem>
#include <map>
#include <string>
#include <tuple>
#include <vector>

#include "tools/vsqexport/import/interpolation.h"

namespace vsqexport {

/// The slopes of a spline at a key, per second. Numbers are in the order of the file: x, y, z, w.
struct KeySlopes {
    std::array<double, 4> in{};
    std::array<double, 4> out{};
};

struct GltfCurve {
    Interpolation interpolation = Interpolation::kLinear;
    std::vector<KeySlopes> slopes;  ///< one for each key of a cubic curve
};

/// By the number of the animation, the name of the node, and the path: "translation", "rotation",
/// "scale" or "weights". Of several nodes with one name, only the first counts.
using GltfCurves = std::map<std::tuple<unsigned, std::string, std::string>, GltfCurve>;

/// The curves of a glTF 2.0 file that aren't linear, which assimp's reader takes for linear ones. A
/// curve whose slopes can't be read counts as linear. Weights of morph targets have no slopes
/// here.
GltfCurves read_gltf_curves(const std::filesystem::path& path);

}  // namespace vsqexport
