#pragma once

#include "importers/sceneapi/dev/scene_types.h"
#include "plugins/3dsmax/export/host.h"

/// Converts a host matrix to a scene matrix. Both transform row vectors and have the translation in
/// the fourth row; the scene's has a fourth column 0, 0, 0, 1.
qorMatrix ToSceneMatrix(const Matrix3& matrix);
