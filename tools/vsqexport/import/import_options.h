#pragma once

#include <optional>
#include <string>
#include <vector>

namespace vsqexport {

/// What a user can say about a model file.
struct ImportOptions {
    std::vector<std::string> animations;  ///< names; none for all that play together
    std::optional<int> up_axis;    ///< 0 for x, 1 for y, 2 for z; nothing: what the file says
    double scale = 1;              ///< how many times as large the model becomes
    bool has_unit = false;         ///< the user gives the unit, so the file's doesn't count
    std::string texture_folder{};  ///< for textures inside the model; UTF-8, empty for none
    std::optional<double> frames_per_second{};  ///< nothing: what the file says, else 30
};

}  // namespace vsqexport
