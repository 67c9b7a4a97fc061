#include <cmath>
#include <cstddef>
#include <memory>
#include <string>
#include <vector>

#include "model/area_light_material.h"
#include "model/triangle_object.h"
#include "plugins/3dsmax/export/light_converter.h"
#include "plugins/3dsmax/export/light_lumens.h"

namespace {

// Adds the points of the light's shape and returns how many there are.
int add_shape_vertices(const LightscapeLight& light, qor::TriangleObject& shape) {
    const int count = light.GetShape(nullptr, 0);
    if (count <= 0) {
        return 0;
    }
    // The light may fill in fewer points than it reports.
    std::vector<Point3> points(static_cast<std::size_t>(count), Point3(0.0f, 0.0f, 0.0f));
    light.GetShape(points.data(), count);
    for (const Point3& point : points) {
        shape.add_vertex(point.x, point.y, point.z);
    }
    return count;
}

void add_polygon_triangles(qor::TriangleObject& shape, int count) {
    if (count != 3 && count != 4) {
        return;
    }
    shape.add_triangle(0, 1, 2);
    if (count == 4) {
        shape.add_triangle(0, 2, 3);
    }
}

// The points are two rings, one after the other. Each ring gets a cap, and the sides join them.
void add_cylinder_triangles(qor::TriangleObject& shape, int count) {
    if (count < 4) {
        return;
    }
    const int half = count / 2;
    for (int i = 0; i <= half - 2; ++i) {
        shape.add_triangle(0, i, i + 1);
    }
    for (int i = 0; i <= half - 2; ++i) {
        shape.add_triangle(half, half + 1 + i, half + i);
    }
    for (int i = 0; i <= half - 2; ++i) {
        shape.add_triangle(i, half + i, half + 1 + i);
        shape.add_triangle(half + 1 + i, i + 1, i);
    }
    // The last side joins the end of the rings to their start.
    shape.add_triangle(half - 1, half, 0);
    shape.add_triangle(half, half - 1, count - 1);
}

constexpr int kSphereGrid = 30;  // points in each direction; the seam counts twice

void add_sphere_vertices(qor::TriangleObject& shape, float radius) {
    constexpr double kPi = 3.14159265358979323846;
    constexpr float kStep = 1.0f / (kSphereGrid - 1);
    shape.reserve_vertices(kSphereGrid * kSphereGrid);
    shape.reserve_normals(kSphereGrid * kSphereGrid);
    for (int i = 0; i < kSphereGrid; ++i) {
        const double a = i * kPi * static_cast<double>(kStep);  // from pole to pole
        for (int j = 0; j < kSphereGrid; ++j) {
            const double b = j * 2 * kPi * static_cast<double>(kStep);  // around the y axis
            const float x = static_cast<float>(std::cos(b) * std::sin(a));
            const float y = static_cast<float>(std::sin(a - kPi / 2));
            const float z = static_cast<float>(std::sin(b) * std::sin(a));
            shape.add_vertex(x * radius, y * radius, z * radius);
            shape.add_normal(x, y, z);
        }
    }
}

void add_sphere_triangles(qor::TriangleObject& shape) {
    shape.reserve_triangles(2 * (kSphereGrid - 1) * (kSphereGrid - 1));
    for (int i = 0; i < kSphereGrid - 1; ++i) {
        for (int j = 0; j < kSphereGrid - 1; ++j) {
            const int here = kSphereGrid * i + j;
            const int next_ring = kSphereGrid * (i + 1) + j;
            shape.add_triangle(here, here + 1, next_ring + 1);
            shape.add_triangle(here, next_ring + 1, next_ring);
        }
    }
}

}  // namespace

void LightConverter::ConvertPolygonLight(LightscapeLight& light, const Job& job) {
    qor::TriangleObject shape(job.name);
    add_polygon_triangles(shape, add_shape_vertices(light, shape));
    float power_lumen = LightLumens(light, kFixedTime);
    if (light.GetDistribution() == LightscapeLight::DIFFUSE_DIST) {
        power_lumen *= 4.0f;
    }
    EmitShape(shape, light, power_lumen, job);
}

void LightConverter::ConvertRingLight(LightscapeLight& light, const Job& job) {
    qor::TriangleObject shape(job.name);
    add_cylinder_triangles(shape, add_shape_vertices(light, shape));
    EmitShape(shape, light, LightLumens(light, kFixedTime), job);
}

void LightConverter::ConvertSphereLight(LightscapeLight& light, const Job& job) {
    qor::TriangleObject shape(job.name);
    add_sphere_vertices(shape, light.GetRadius(kFixedTime));
    add_sphere_triangles(shape);
    EmitShape(shape, light, LightLumens(light, kFixedTime), job);
}

void LightConverter::EmitShape(qor::TriangleObject& shape, LightscapeLight& light,
                               float power_lumen, const Job& job) {
    if (job.notes && shape.arrays().triangles.empty()) {
        job.notes.add(Note::kLightWithoutShape,
                      std::to_string(shape.arrays().vertices.size() / 3) + " points");
    }
    const Point3 color = KelvinToColor(light, job.time);
    auto material = std::make_shared<qor::AreaLightMaterial>(job.material_name);
    material->set_color(color.x, color.y, color.z);
    material->set_lumen(power_lumen);
    shape.set_material(std::move(material));
    shape.emit(job.scene);
}
