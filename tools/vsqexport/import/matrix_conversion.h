#pragma once

#include <assimp/matrix4x4.h>

#include "standins/host/sdk/max.h"

namespace vsqexport {

/// Assimp's column vectors, whose rows lie beside one another, as the host's row vectors.
Matrix3 host_matrix(const aiMatrix4x4& matrix);

bool is_identity(const Matrix3& matrix);

}  // namespace vsqexport
