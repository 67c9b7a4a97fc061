#include "standins/host/sdk/matrix3.h"

#include <limits>

#include "standins/host/memory/strict_rules.h"

namespace {

// The identity, unless a strict host wants it worse.
Matrix3 inverse_of_singular() {
    using memhost::StrictRule;
    const bool gives_nan = memhost::host_obeys(StrictRule::kSingularInverseNan);
    const bool gives_zero = memhost::host_obeys(StrictRule::kSingularInverseZero);
    if (!gives_nan && !gives_zero) {
        return Matrix3();
    }
    static bool was_nan = false;
    was_nan = gives_nan && !(gives_zero && was_nan);
    const float number = was_nan ? std::numeric_limits<float>::quiet_NaN() : 0.0f;
    const Point3 row(number, number, number);
    return Matrix3(row, row, row, row);
}

}  // namespace

Matrix3 Inverse(const Matrix3& m) {
    const Point3 rows[3] = {m.GetRow(0), m.GetRow(1), m.GetRow(2)};

    // The cofactor of row i and column j uses the next two rows and the next two columns, in cyclic
    // order. That order already gives it the right sign.
    double cofactor[3][3];
    for (int i = 0; i < 3; ++i) {
        const Point3& below = rows[(i + 1) % 3];
        const Point3& above = rows[(i + 2) % 3];
        for (int j = 0; j < 3; ++j) {
            const int right = (j + 1) % 3;
            const int left = (j + 2) % 3;
            cofactor[i][j] = static_cast<double>(below[right]) * above[left] -
                             static_cast<double>(below[left]) * above[right];
        }
    }
    const double determinant =
        rows[0].x * cofactor[0][0] + rows[0].y * cofactor[0][1] + rows[0].z * cofactor[0][2];
    if (determinant == 0.0 || !std::isfinite(determinant)) {
        return inverse_of_singular();
    }

    // Everything is in double up to here, so that each number is rounded to float only once.
    const Point3 translation = m.GetTrans();
    bool finite = true;
    Point3 inverse_rows[4];
    for (int column = 0; column < 3; ++column) {
        double inverse[3];
        for (int row = 0; row < 3; ++row) {
            inverse[row] = cofactor[column][row] / determinant;
        }
        const double moved = 0.0 - (translation.x * inverse[0] + translation.y * inverse[1] +
                                    translation.z * inverse[2]);
        const double numbers[4] = {inverse[0], inverse[1], inverse[2], moved};
        for (int row = 0; row < 4; ++row) {
            inverse_rows[row][column] = static_cast<float>(numbers[row]);
            finite = finite && std::isfinite(inverse_rows[row][column]);
        }
    }
    if (!finite) {
        return inverse_of_singular();
    }
    return Matrix3(inverse_rows[0], inverse_rows[1], inverse_rows[2], inverse_rows[3]);
}
