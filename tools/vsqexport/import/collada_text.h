#pragma once

#include <filesystem>
#include <optional>
#include <vector>

namespace vsqexport {

/// A lens in a COLLADA file. Angles are in degrees, and what the file doesn't give is missing.
struct ColladaLens {
    bool is_orthographic = false;
    std::optional<double> x_angle;
    std::optional<double> y_angle;
    std::optional<double> aspect;
    std::optional<double> near_plane;
    std::optional<double> far_plane;
};

/// What assimp's reader doesn't pass on of a COLLADA file, or passes on wrongly: it ignores a lens
/// without a name and an angle from bottom to top alone, and takes the width of an orthographic
/// lens for an angle.
struct ColladaText {
    std::optional<double> frame_rate;
    std::vector<ColladaLens> lenses;  ///< one for each place that shows a camera
};

/// Finds the elements in the text of the file. Gives nothing for a compressed file or one in
/// UTF-16.
ColladaText read_collada_text(const std::filesystem::path& path);

}  // namespace vsqexport
