#pragma once

#include <optional>
#include <string>

#include <assimp/scene.h>

namespace vsqexport {

/// A length as the host gives it: `count` times a unit of it.
struct ModelUnit {
    int type;      ///< one of `UNITS_...`
    double count;  ///< 1, unless the host doesn't have the unit itself
};

/// The unit of a model's lengths; nothing if neither the format nor the file specifies one.
/// `extension` includes its dot.
std::optional<ModelUnit> unit_of_model(const aiScene& model, const std::string& extension);

}  // namespace vsqexport
