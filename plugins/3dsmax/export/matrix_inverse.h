#pragma once

#include "plugins/3dsmax/export/host.h"

/// The host's inverse of a matrix. The identity if there is none, since the host doesn't promise
/// anything for a singular matrix or one with NaN in it.
Matrix3 InverseOrIdentity(const Matrix3& matrix);
