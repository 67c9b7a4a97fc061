#pragma once

#include "standins/host/sdk/max.h"

/// Matrices for placing nodes. They are multiplied with `*`; the left one is applied first:
///
///     scaling(2, 2, 2) * rotation_z(30) * translation(10, 0, 0)
///
/// Angles are in degrees, counter-clockwise when looking against the axis. The matrices are
/// computed without the system's maths library, so that a scene has the same bits on every system.
/// Right angles are exact.
namespace memhost {

Matrix3 translation(float x, float y, float z);
Matrix3 scaling(float x, float y, float z);
Matrix3 rotation_x(double degrees);
Matrix3 rotation_y(double degrees);
Matrix3 rotation_z(double degrees);

}  // namespace memhost
