#include "tools/vsqexport/import/matrix_conversion.h"

#include <cmath>

namespace vsqexport {

Matrix3 host_matrix(const aiMatrix4x4& m) {
    return Matrix3({m.a1, m.b1, m.c1}, {m.a2, m.b2, m.c2}, {m.a3, m.b3, m.c3}, {m.a4, m.b4, m.c4});
}

// Only a singular matrix gives a row that is zero or not finite.
Matrix3 inverse_or_identity(const Matrix3& matrix) {
    const Matrix3 inverse = Inverse(matrix);
    for (int i = 0; i < 4; ++i) {
        const Point3 row = inverse.GetRow(i);
        const bool is_zero = row.x == 0.0f && row.y == 0.0f && row.z == 0.0f;
        const bool is_finite = std::isfinite(row.x) && std::isfinite(row.y) && std::isfinite(row.z);
        if (!is_finite || (i < 3 && is_zero)) {
            return Matrix3();
        }
    }
    return inverse;
}

bool is_identity(const Matrix3& matrix) {
    const Matrix3 identity;
    for (int row = 0; row < 4; ++row) {
        for (int column = 0; column < 3; ++column) {
            if (matrix.GetRow(row)[column] != identity.GetRow(row)[column]) {
                return false;
            }
        }
    }
    return true;
}

}  // namespace vsqexport
