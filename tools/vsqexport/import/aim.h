#pragma once

#include <assimp/vector3.h>

#include "standins/host/sdk/max.h"

namespace vsqexport {

/// Rotates a camera or light, which look along their negative z axis in the host, towards `look`,
/// with `up` as near to its y axis as possible. Returns false, and leaves the matrix alone, if
/// `look` has no direction.
bool set_direction(const aiVector3D& look, const aiVector3D& up, Matrix3& node_from_object);

}  // namespace vsqexport
