#pragma once

#include <assimp/matrix4x4.h>

#include "standins/host/sdk/max.h"

namespace vsqexport {

/// Converts assimp's matrix, made for column vectors, to the host's, made for row vectors.
Matrix3 host_matrix(const aiMatrix4x4& matrix);

bool is_identity(const Matrix3& matrix);

}  // namespace vsqexport
