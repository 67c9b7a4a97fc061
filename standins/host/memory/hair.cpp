#include "standins/host/memory/hair.h"

#include <cmath>
#include <utility>

#include "standins/host/memory/splines.h"

namespace memhost {
namespace {

// Element `i` of a sequence that fills the range from 0 to 1 evenly.
float spread(int i, double step) {
    return static_cast<float>(i * step - std::floor(i * step));
}

// A parabola that rises from the root along the normal and falls with gravity.
struct Strand {
    Point3 root;
    Point3 rise;
    Point3 fall;

    Point3 at(float s) const { return root + rise * s + fall * (s * s); }
    Point3 slope_at(float s) const { return rise + fall * (2.0f * s); }
};

Strand strand_on_face(const HairModifier& hair, const Mesh& mesh, const Matrix3& world_from_object,
                      int i) {
    const Face& face = mesh.faces[i % mesh.numFaces];
    const Point3 corner = mesh.verts[face.v[0]] * world_from_object;
    const Point3 side = mesh.verts[face.v[1]] * world_from_object - corner;
    const Point3 other_side = mesh.verts[face.v[2]] * world_from_object - corner;
    float u = spread(i, 0.7548776662466927);
    float v = spread(i, 0.5698402909980532);
    if (u + v > 1.0f) {  // outside the face, in the other half of the parallelogram
        u = 1.0f - u;
        v = 1.0f - v;
    }
    return {corner + side * u + other_side * v, Normalize(side ^ other_side) * hair.length,
            Point3(0, 0, -hair.droop * hair.length)};
}

Spline3D spline_of(const HairModifier& hair, const Strand& strand) {
    std::vector<Spline3D::Knot> knots;
    std::vector<Point3> points;
    knots.reserve(static_cast<std::size_t>(hair.segments) + 1);
    for (int k = 0; k <= hair.segments; ++k) {
        const float s = static_cast<float>(k) / static_cast<float>(hair.segments);
        const Point3 handle = strand.slope_at(s) / (3.0f * static_cast<float>(hair.segments));
        const Point3 point = strand.at(s);
        if (hair.curved) {
            knots.push_back({point - handle, point, point + handle});
        } else {
            points.push_back(point);
        }
    }
    return hair.curved ? Spline3D(std::move(knots), false) : polyline(points);
}

}  // namespace

std::vector<Spline3D> grow_hair(const HairModifier& hair, const Mesh& mesh,
                                const Matrix3& world_from_object) {
    std::vector<Spline3D> strands;
    for (int i = 0; i < hair.strands && mesh.numFaces > 0; ++i) {
        strands.push_back(spline_of(hair, strand_on_face(hair, mesh, world_from_object, i)));
    }
    return strands;
}

}  // namespace memhost
