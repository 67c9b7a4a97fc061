#include "tools/vsqexport/import/aim.h"

#include <cmath>

namespace vsqexport {
namespace {

struct Direction {
    double x, y, z;
};

Direction cross(const Direction& a, const Direction& b) {
    return {a.y * b.z - a.z * b.y, a.z * b.x - a.x * b.z, a.x * b.y - a.y * b.x};
}

// False for a vector that is too short to have a direction, or that isn't finite.
bool normalize(Direction& v) {
    const double length = std::sqrt(v.x * v.x + v.y * v.y + v.z * v.z);
    if (!(length > 1e-6) || !std::isfinite(length)) {
        return false;
    }
    v = {v.x / length, v.y / length, v.z / length};
    return true;
}

Point3 to_point(const Direction& v) {
    // Adding 0 turns a negative zero into a positive one.
    return {static_cast<float>(v.x) + 0.0f, static_cast<float>(v.y) + 0.0f,
            static_cast<float>(v.z) + 0.0f};
}

}  // namespace

bool set_direction(const aiVector3D& look, const aiVector3D& up, Matrix3& node_from_object) {
    Direction back = {0.0 - look.x, 0.0 - look.y, 0.0 - look.z};
    if (!normalize(back)) {
        return false;
    }
    Direction right = cross({up.x, up.y, up.z}, back);
    if (!normalize(right)) {
        // The camera looks along `up`, so any sideways direction will do.
        right = std::fabs(back.x) < 0.5 ? cross({1, 0, 0}, back) : cross({0, 1, 0}, back);
        normalize(right);
    }
    node_from_object.SetRow(0, to_point(right));
    node_from_object.SetRow(1, to_point(cross(back, right)));
    node_from_object.SetRow(2, to_point(back));
    return true;
}

}  // namespace vsqexport
