#pragma once

#include <optional>
#include <string>

#include <assimp/scene.h>

namespace vsqexport {

/// The unit in which a model's lengths come, one of `UNITS_...`; nothing where neither the format
/// nor the file says. `extension` has its dot.
std::optional<int> unit_of_model(const aiScene& model, const std::string& extension);

}  // namespace vsqexport
