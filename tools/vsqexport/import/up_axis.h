#pragma once

#include "standins/host/sdk/max.h"

struct aiScene;

namespace vsqexport {

/// The rotation of the axis that is up in a scene read by assimp to the host's Z.
Matrix3 scene_from_model(const aiScene& model);

}  // namespace vsqexport
