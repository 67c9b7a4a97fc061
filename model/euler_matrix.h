#pragma once

#include "importers/sceneapi/dev/scene_types.h"

namespace qor {

/// The rotation about the x axis, then about y, then about z.
qorMatrix EulerMatrix(double x_degrees, double y_degrees, double z_degrees);

}  // namespace qor
