#include "plugins/3dsmax/export/scene_matrix.h"

qorMatrix ToSceneMatrix(const Matrix3& matrix) {
    qorMatrix scene_matrix = {{{1, 0, 0, 0}, {0, 1, 0, 0}, {0, 0, 1, 0}, {0, 0, 0, 1}}};
    for (int row = 0; row < 4; ++row) {
        const Point3 numbers = matrix.GetRow(row);
        scene_matrix.m[row][0] = static_cast<double>(numbers.x);
        scene_matrix.m[row][1] = static_cast<double>(numbers.y);
        scene_matrix.m[row][2] = static_cast<double>(numbers.z);
    }
    return scene_matrix;
}
