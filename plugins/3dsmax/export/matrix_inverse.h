#pragma once

#include "plugins/3dsmax/export/host.h"

/// The host's inverse of a matrix, or the identity if there is none. The host guarantees nothing
/// for a matrix that is singular or contains NaN.
Matrix3 InverseOrIdentity(const Matrix3& matrix);
