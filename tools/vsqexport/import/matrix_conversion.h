#pragma once

#include <assimp/matrix4x4.h>

#include "standins/host/sdk/max.h"

namespace vsqexport {

/// Converts assimp's matrix, made for column vectors, to the host's, made for row vectors.
Matrix3 host_matrix(const aiMatrix4x4& matrix);

/// The host's inverse of a matrix, or the identity if the matrix has none: the host guarantees
/// nothing then.
Matrix3 inverse_or_identity(const Matrix3& matrix);

bool is_identity(const Matrix3& matrix);

}  // namespace vsqexport
