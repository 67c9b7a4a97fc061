#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "tools/vsqpicture/picture_scene.h"
#include "tools/vsqpicture/surface.h"

struct RTCGeometryTy;

namespace vsqpicture {

/// A straight line from a point. The direction has the length 1.
struct Ray {
    Vec3 origin;
    Vec3 direction;
};

/// What a ray hits first.
struct Hit {
    float distance = 0;
    Vec3 place;
    Vec3 normal;       ///< interpolated, on the side from which the ray comes
    Vec3 face_normal;  ///< of the triangle, likewise
    Vec3 along_u;      ///< how the place changes with u, and
    Vec3 along_v;      ///< with v; zero without texture coordinates
    float u = 0;
    float v = 0;
    Vec3 vertex_colour;
    const Surface* surface = nullptr;
    Vec3 radiance;                ///< of a surface that shines, in candela per square metre
    std::size_t object = 0;       ///< index in `RayScene::objects`
    std::uint32_t primitive = 0;  ///< triangle or segment of the part
};

/// A point that shines equally to all sides.
struct PointLight {
    Vec3 place;
    Vec3 power_lumen;
};

/// A triangle of a surface that shines.
struct LightTriangle {
    std::array<Vec3, 3> corners;
    Vec3 normal;
    Vec3 radiance;   ///< in candela per square metre
    float area = 0;  ///< in square units of the scene
    std::size_t object = 0;
};

/// An object as it is drawn.
struct DrawnObject {
    std::string path;  ///< the names of its groups, with slashes
    std::string name;
    const Surface* surface = nullptr;
    std::uint64_t triangles = 0;
    std::uint64_t segments = 0;  ///< of curves
};

struct SceneBox {
    Vec3 minimum{1e30f, 1e30f, 1e30f};
    Vec3 maximum{-1e30f, -1e30f, -1e30f};

    bool is_empty() const { return minimum.x > maximum.x; }

    /// NaN, infinities and places out of Embree's reach don't count.
    void include(Vec3 place);
};

/// A scene at one frame, ready for rays.
class RayScene {
public:
    using ObjectsById = std::map<std::int64_t, const Object*>;

    /// Reads the mesh files that the scene names. What can't be drawn is noted in `scene`.
    RayScene(PictureScene& scene, double frame);
    ~RayScene();
    RayScene(const RayScene&) = delete;
    RayScene& operator=(const RayScene&) = delete;

    /// What the ray hits at a distance between `near` and `far`.
    std::optional<Hit> trace(const Ray& ray, float near, float far) const;

    /// Whether the ray hits anything between `near` and `far`. Quicker than `trace`.
    bool is_blocked(const Ray& ray, float near, float far) const;

    /// False if no surface lets anything through.
    bool has_opacity_maps() const { return has_opacity_maps_; }

    const std::vector<DrawnObject>& objects() const { return objects_; }
    const std::vector<PointLight>& point_lights() const { return point_lights_; }
    const std::vector<LightTriangle>& light_triangles() const { return light_triangles_; }
    bool has_lights() const { return !point_lights_.empty() || !light_triangles_.empty(); }

    /// Around everything that is drawn.
    const SceneBox& box() const { return box_; }

    /// How far a ray's start has to leave a surface so that it doesn't hit it again.
    float margin() const { return margin_; }

private:
    struct Embree;
    struct Part;

    void add_object(const Object& object, const ObjectsById& by_id, const std::string& path,
                    const Matrix& world, double frame);
    void add_mesh(const std::shared_ptr<const Mesh>& mesh, const Matrix& world);
    void add_curves(const std::shared_ptr<const Curves>& curves, const Matrix& world);
    void add_light(Part& part);
    void attach(RTCGeometryTy* geometry, std::unique_ptr<Part> part);
    void complete_triangle(const Part& part, float b1, float b2, Hit& hit) const;
    void complete_curve(const Part& part, float along, Hit& hit) const;

    PictureScene& scene_;
    SurfaceTable surfaces_;
    std::unique_ptr<Embree> embree_;
    std::vector<std::unique_ptr<Part>> parts_;  // by the number of the geometry
    std::vector<DrawnObject> objects_;
    std::vector<PointLight> point_lights_;
    std::vector<LightTriangle> light_triangles_;
    SceneBox box_;
    float margin_ = 0;
    bool has_opacity_maps_ = false;
};

}  // namespace vsqpicture
