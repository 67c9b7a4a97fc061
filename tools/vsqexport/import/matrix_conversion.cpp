#include "tools/vsqexport/import/matrix_conversion.h"

namespace vsqexport {

Matrix3 host_matrix(const aiMatrix4x4& m) {
    return Matrix3({m.a1, m.b1, m.c1}, {m.a2, m.b2, m.c2}, {m.a3, m.b3, m.c3}, {m.a4, m.b4, m.c4});
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
