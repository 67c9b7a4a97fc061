#pragma once

#include <optional>

#include "standins/host/sdk/max.h"

struct aiScene;

namespace vsqexport {

/// The rotation of the axis that is up in a scene read by assimp to the host's Z. `up` is that
/// axis, 0 for x; without it, the format or the file decides.
Matrix3 scene_from_model(const aiScene& model, std::optional<int> up);

}  // namespace vsqexport
