#pragma once

#include <optional>
#include <string>

#include <assimp/scene.h>

namespace vsqexport {

/// The unit of a model's lengths, one of `UNITS_...`; nothing if neither the format nor the file
/// specifies one. `extension` includes its dot.
std::optional<int> unit_of_model(const aiScene& model, const std::string& extension);

}  // namespace vsqexport
