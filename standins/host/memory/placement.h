#pragma once

#include "standins/host/sdk/max.h"

/// Matrices to place nodes with. They are chained with `*`, the left one applied first:
///
///     scaling(2, 2, 2) * rotation_z(30) * translation(10, 0, 0)
///
/// Angles are in degrees, counter-clockwise seen against the axis. They are worked out without the
/// system's maths library, so that a scene has the same bits everywhere, and right angles are
/// exact.
namespace memhost {

Matrix3 translation(float x, float y, float z);
Matrix3 scaling(float x, float y, float z);
Matrix3 rotation_x(double degrees);
Matrix3 rotation_y(double degrees);
Matrix3 rotation_z(double degrees);

}  // namespace memhost
