#include "tools/vsqpicture/ray_scene.h"

#include <embree3/rtcore.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <map>
#include <stdexcept>
#include <utility>

#include "tools/vsqinfo/display_text.h"
#include "tools/vsqinfo/vsq_tokens.h"
#include "tools/vsqpicture/mesh_file.h"

namespace vsqpicture {
namespace {

constexpr float kPi = 3.14159265f;
constexpr std::size_t kCubicPoints = 4;

Vec3 vec3_at(const std::vector<float>& numbers, std::size_t index) {
    return 3 * index + 2 < numbers.size()
               ? Vec3{numbers[3 * index], numbers[3 * index + 1], numbers[3 * index + 2]}
               : Vec3();
}

// How much a matrix enlarges volumes; negative if it mirrors.
double volume_scale(const Matrix& m) {
    return m[0] * (m[5] * m[10] - m[6] * m[9]) - m[1] * (m[4] * m[10] - m[6] * m[8]) +
           m[2] * (m[4] * m[9] - m[5] * m[8]);
}

// How much a matrix enlarges lengths, for the radii of curves.
float scale_of(const Matrix& m) {
    return static_cast<float>(std::cbrt(std::abs(volume_scale(m))));
}

RayScene::ObjectsById objects_by_id(const PictureScene& scene) {
    RayScene::ObjectsById by_id;
    for (const Node& node : scene.nodes) {
        for (const Object& object : node.objects) {
            if (object.id) {
                by_id[*object.id] = &object;
            }
        }
    }
    return by_id;
}

// False for an object that is the shape of another frame.
bool takes_its_turn(const Node& node, const Object& object, double frame) {
    constexpr char kTurns[] = "qor_deform_";
    if (node.turns.empty() || object.name.rfind(kTurns, 0) != 0) {
        return true;
    }
    const auto begun =
        std::upper_bound(node.turns.begin(), node.turns.end(), frame * kTimestampsPerFrame) -
        node.turns.begin();
    return object.name == kTurns + std::to_string(std::max<std::ptrdiff_t>(begun, 1) - 1);
}

bool is_finite(Vec3 v) {
    return std::isfinite(v.x) && std::isfinite(v.y) && std::isfinite(v.z);
}

// Embree leaves out triangles that reach further than 1.8e18, and its Debian build ends the program
// for a ray that starts there or at NaN.
bool is_in_reach(Vec3 v) {
    constexpr float kReach = 1e18f;
    return std::abs(v.x) < kReach && std::abs(v.y) < kReach && std::abs(v.z) < kReach;
}

// False for a ray that Embree doesn't take.
bool set_ray(RTCRay& target, const Ray& ray, float near, float far) {
    target.org_x = ray.origin.x;
    target.org_y = ray.origin.y;
    target.org_z = ray.origin.z;
    target.dir_x = ray.direction.x;
    target.dir_y = ray.direction.y;
    target.dir_z = ray.direction.z;
    target.tnear = near;
    target.tfar = far;
    target.time = 0;
    target.mask = ~0u;
    target.id = 0;
    target.flags = 0;
    return is_in_reach(ray.origin) && is_in_reach(ray.direction) && near >= 0 && near < far;
}

}  // namespace

struct RayScene::Embree {
    RTCDevice device = rtcNewDevice(nullptr);
    RTCScene scene = nullptr;

    Embree() {
        if (!device) {
            throw std::runtime_error("Embree can't be started");
        }
        scene = rtcNewScene(device);
        rtcSetSceneFlags(scene, RTC_SCENE_FLAG_ROBUST);
    }
    Embree(const Embree&) = delete;
    Embree& operator=(const Embree&) = delete;
    ~Embree() {
        rtcReleaseScene(scene);
        rtcReleaseDevice(device);
    }
};

// A geometry of Embree, which borrows the first two arrays.
// Whether the normals of most triangles point to the side from which the corners run clockwise.
static bool is_inside_out(const Mesh& mesh) {
    const std::vector<std::uint32_t>& corners = mesh.triangles;
    const std::vector<std::uint32_t>& normals =
        mesh.normal_indices.empty() ? corners : mesh.normal_indices;
    const std::size_t numbers = std::min(corners.size(), normals.size());
    std::size_t contradictions = 0;
    for (std::size_t i = 0; i + 2 < numbers; i += 3) {
        const Vec3 first = vec3_at(mesh.positions, corners[i]);
        const Vec3 flat = cross(vec3_at(mesh.positions, corners[i + 1]) - first,
                                vec3_at(mesh.positions, corners[i + 2]) - first);
        contradictions += dot(flat, vec3_at(mesh.normals, normals[i])) < 0 ? 1 : 0;
    }
    return 2 * contradictions > numbers / 3;
}

struct RayScene::Part {
    std::vector<float> vertices;         // in the scene's space: x, y, z, of curves also a radius
    std::vector<std::uint32_t> indices;  // three per triangle, of curves one per segment
    std::size_t object = 0;
    const Surface* surface = nullptr;
    std::shared_ptr<const Mesh> mesh;
    std::shared_ptr<const Curves> curves;
    Matrix normals = kIdentity;
    bool is_mirrored = false;
    Vec3 radiance;  // if the surface shines

    Vec3 corner(std::uint32_t triangle, std::size_t i) const {
        return vec3_at(vertices, indices[3 * triangle + i]);
    }
};

RayScene::RayScene(PictureScene& scene, double frame)
    : scene_(scene), surfaces_(scene), embree_(std::make_unique<Embree>()) {
    const std::vector<Matrix> world = scene.world_matrices(frame);
    const ObjectsById by_id = objects_by_id(scene);
    std::vector<std::string> paths(scene.nodes.size());
    for (std::size_t i = 0; i < scene.nodes.size(); ++i) {
        const Node& node = scene.nodes[i];
        if (i != 0) {
            const std::string& above = paths[node.parent];
            paths[i] = (above.empty() ? "" : above + "/") + vsqinfo::display_text(node.name);
        }
        for (const Object& object : node.objects) {
            if (takes_its_turn(node, object, frame)) {
                add_object(object, by_id, paths[i], combined(object.matrix, world[i]), frame);
            }
        }
    }
    rtcCommitScene(embree_->scene);
    // Rounding errors grow with the distance from the origin as well as with the size.
    margin_ = box_.is_empty()
                  ? 0
                  : 1e-5f * std::max(length(box_.maximum - box_.minimum), length(box_.maximum));
}

void RayScene::add_object(const Object& object, const ObjectsById& by_id, const std::string& path,
                          const Matrix& world, double frame) {
    const Object* shape = &object;
    if (object.instance_of) {
        const auto found = by_id.find(*object.instance_of);
        if (found == by_id.end()) {
            scene_.note("instances of objects that aren't there");
            return;
        }
        shape = found->second;
    }
    std::shared_ptr<const Mesh> mesh = shape->mesh;
    if (!shape->mesh_file.empty()) {
        try {
            mesh = read_mesh_file(shape->mesh_file, frame);
        } catch (const std::runtime_error& error) {
            scene_.note("mesh file " + vsqinfo::display_text(shape->mesh_file) + ": " +
                        error.what());
            return;
        }
    }
    objects_.push_back(
        {path, vsqinfo::display_text(object.name), surfaces_.surface(object.surface), 0, 0});
    if (mesh) {
        add_mesh(mesh, world);
    }
    if (shape->curves) {
        add_curves(shape->curves, world);
    }
}

RayScene::~RayScene() = default;

void SceneBox::include(Vec3 place) {
    if (!is_in_reach(place)) {
        return;
    }
    minimum = {std::min(minimum.x, place.x), std::min(minimum.y, place.y),
               std::min(minimum.z, place.z)};
    maximum = {std::max(maximum.x, place.x), std::max(maximum.y, place.y),
               std::max(maximum.z, place.z)};
}

void RayScene::add_mesh(const std::shared_ptr<const Mesh>& mesh, const Matrix& world) {
    const std::size_t count = mesh->positions.size() / 3;
    if (count == 0 || mesh->triangles.size() < 3) {
        return;
    }
    auto part = std::make_unique<Part>();
    part->object = objects_.size() - 1;
    part->surface = objects_.back().surface;
    part->mesh = mesh;
    part->normals = normal_matrix(world);
    part->is_mirrored = volume_scale(world) < 0;
    part->indices.assign(
        mesh->triangles.begin(),
        mesh->triangles.begin() + static_cast<std::ptrdiff_t>(mesh->triangles.size() / 3 * 3));
    part->vertices.reserve(3 * count + 4);
    for (std::size_t i = 0; i < count; ++i) {
        const Vec3 place = transformed_point(world, vec3_at(mesh->positions, i));
        part->vertices.insert(part->vertices.end(), {place.x, place.y, place.z});
    }
    if (part->surface->kind == Surface::Kind::kPointLight) {
        scene_.note("the shapes of point lights; only their light is seen");
        Vec3 sum;
        for (std::size_t i = 0; i < count; ++i) {
            sum += vec3_at(part->vertices, i);
        }
        point_lights_.push_back({sum * (1 / static_cast<float>(count)),
                                 part->surface->light_colour * part->surface->power_lumen});
        return;
    }
    for (std::size_t i = 0; i < count; ++i) {
        box_.include(vec3_at(part->vertices, i));
    }
    objects_.back().triangles += part->indices.size() / 3;
    if (part->surface->kind == Surface::Kind::kReflecting && is_inside_out(*mesh)) {
        scene_.note("the front of objects whose normals point to their back; it is black");
    }
    if (part->surface->kind == Surface::Kind::kMeshLight) {
        add_light(*part);
    }

    // Embree reads sixteen bytes at a time, so it needs some behind the last vertex.
    part->vertices.resize(3 * count + 4);
    const RTCGeometry geometry = rtcNewGeometry(embree_->device, RTC_GEOMETRY_TYPE_TRIANGLE);
    rtcSetSharedGeometryBuffer(geometry, RTC_BUFFER_TYPE_VERTEX, 0, RTC_FORMAT_FLOAT3,
                               part->vertices.data(), 0, 3 * sizeof(float), count);
    rtcSetSharedGeometryBuffer(geometry, RTC_BUFFER_TYPE_INDEX, 0, RTC_FORMAT_UINT3,
                               part->indices.data(), 0, 3 * sizeof(std::uint32_t),
                               part->indices.size() / 3);
    attach(geometry, std::move(part));
}

void RayScene::attach(RTCGeometryTy* geometry, std::unique_ptr<Part> part) {
    rtcCommitGeometry(geometry);
    rtcAttachGeometryByID(embree_->scene, geometry, static_cast<unsigned>(parts_.size()));
    rtcReleaseGeometry(geometry);
    has_opacity_maps_ = has_opacity_maps_ || part->surface->opacity;
    parts_.push_back(std::move(part));
}

void RayScene::add_light(Part& part) {
    std::vector<LightTriangle> triangles;
    double area = 0;
    double volume = 0;
    for (std::uint32_t i = 0; i < part.indices.size() / 3; ++i) {
        LightTriangle triangle;
        for (std::size_t corner = 0; corner < 3; ++corner) {
            triangle.corners[corner] = part.corner(i, corner);
        }
        const Vec3 across = cross(triangle.corners[1] - triangle.corners[0],
                                  triangle.corners[2] - triangle.corners[0]);
        triangle.area = length(across) / 2;
        triangle.normal = normalized(across);
        triangle.object = part.object;
        if (triangle.area > 0 && std::isfinite(triangle.area)) {
            area += static_cast<double>(triangle.area);
            const Vec3 inside = part.corner(0, 0);
            volume += static_cast<double>(dot(triangle.corners[0] - inside, across)) / 6;
            triangles.push_back(triangle);
        }
    }
    // Each side of a surface gives pi times its radiance. Nobody sees the inside of a shape that
    // encloses a volume, at least a hundredth of a ball's with the same area.
    const double ball = std::sqrt(area * area * area / (36 * static_cast<double>(kPi)));
    const double sides = std::abs(volume) > 0.01 * ball ? 1 : 2;
    const double metre = scene_.units_per_metre;
    const auto radiance = static_cast<float>(
        area > 0 ? static_cast<double>(part.surface->power_lumen) / (area * sides / (metre * metre))
                 : 0);
    part.radiance = part.surface->light_colour * (radiance / kPi);
    for (LightTriangle& triangle : triangles) {
        triangle.radiance = part.radiance;
    }
    light_triangles_.insert(light_triangles_.end(), triangles.begin(), triangles.end());
}

void RayScene::add_curves(const std::shared_ptr<const Curves>& curves, const Matrix& world) {
    if (curves->order != kCubicPoints) {
        scene_.note("curves of the order " + std::to_string(static_cast<int>(curves->order)));
        return;
    }
    const std::size_t count = curves->points.size() / 3;
    const float scale = scale_of(world) * static_cast<float>(curves->radius);
    auto part = std::make_unique<Part>();
    part->object = objects_.size() - 1;
    part->surface = objects_.back().surface;
    part->curves = curves;
    part->vertices.reserve(4 * count);
    for (std::size_t i = 0; i < count; ++i) {
        const Vec3 place = transformed_point(world, vec3_at(curves->points, i));
        const float factor = i < curves->radii.size() ? curves->radii[i] : 1;
        part->vertices.insert(part->vertices.end(), {place.x, place.y, place.z, factor * scale});
        box_.include(place);
    }
    std::size_t start = 0;
    for (const std::uint32_t points : curves->strand_points) {
        for (std::size_t i = 0; i + kCubicPoints <= points; i += kCubicPoints - 1) {
            if (start + i + kCubicPoints <= count) {
                part->indices.push_back(static_cast<std::uint32_t>(start + i));
            }
        }
        start += points;
    }
    if (part->indices.empty()) {
        return;
    }
    objects_.back().segments += part->indices.size();
    const RTCGeometry geometry =
        rtcNewGeometry(embree_->device, RTC_GEOMETRY_TYPE_ROUND_BEZIER_CURVE);
    rtcSetSharedGeometryBuffer(geometry, RTC_BUFFER_TYPE_VERTEX, 0, RTC_FORMAT_FLOAT4,
                               part->vertices.data(), 0, 4 * sizeof(float), count);
    rtcSetSharedGeometryBuffer(geometry, RTC_BUFFER_TYPE_INDEX, 0, RTC_FORMAT_UINT,
                               part->indices.data(), 0, sizeof(std::uint32_t),
                               part->indices.size());
    attach(geometry, std::move(part));
}

bool RayScene::is_blocked(const Ray& ray, float near, float far) const {
    RTCRay query;
    if (!set_ray(query, ray, near, far)) {
        return false;
    }
    RTCIntersectContext context;
    rtcInitIntersectContext(&context);
    rtcOccluded1(embree_->scene, &context, &query);
    return query.tfar < 0;
}

std::optional<Hit> RayScene::trace(const Ray& ray, float near, float far) const {
    RTCRayHit query;
    if (!set_ray(query.ray, ray, near, far)) {
        return std::nullopt;
    }
    query.hit.geomID = RTC_INVALID_GEOMETRY_ID;
    query.hit.instID[0] = RTC_INVALID_GEOMETRY_ID;
    RTCIntersectContext context;
    rtcInitIntersectContext(&context);
    rtcIntersect1(embree_->scene, &context, &query);
    if (query.hit.geomID == RTC_INVALID_GEOMETRY_ID) {
        return std::nullopt;
    }
    const Part& part = *parts_[query.hit.geomID];
    Hit hit;
    hit.distance = query.ray.tfar;
    hit.place = ray.origin + ray.direction * hit.distance;
    hit.surface = part.surface;
    hit.radiance = part.radiance;
    hit.object = part.object;
    hit.primitive = query.hit.primID;
    hit.face_normal = normalized({query.hit.Ng_x, query.hit.Ng_y, query.hit.Ng_z});
    // The front is where the corners run anticlockwise, before a mirroring.
    if (part.is_mirrored) {
        hit.face_normal = -hit.face_normal;
    }
    if (part.curves) {
        complete_curve(part, query.hit.u, hit);
    } else {
        complete_triangle(part, query.hit.u, query.hit.v, hit);
    }
    if (dot(hit.face_normal, ray.direction) > 0) {
        hit.face_normal = -hit.face_normal;
        hit.normal = -hit.normal;
    }
    return hit;
}

void RayScene::complete_curve(const Part& part, float along, Hit& hit) const {
    hit.normal = hit.face_normal;
    const std::size_t first = part.indices[hit.primitive];
    hit.u = along;
    hit.vertex_colour = vec3_at(part.curves->colours, first) * (1 - along) +
                        vec3_at(part.curves->colours, first + kCubicPoints - 1) * along;
}

// Interpolates what the corners of the triangle have.
void RayScene::complete_triangle(const Part& part, float b1, float b2, Hit& hit) const {
    const Mesh& mesh = *part.mesh;
    const float weights[3] = {1 - b1 - b2, b1, b2};
    const std::size_t start = 3 * static_cast<std::size_t>(hit.primitive);
    const auto index = [start](const std::vector<std::uint32_t>& own,
                               const std::vector<std::uint32_t>& shared, std::size_t corner) {
        return own.empty()                   ? shared[start + corner]
               : start + corner < own.size() ? own[start + corner]
                                             : 0;
    };
    Vec3 normal;
    float uv[3][2] = {};
    for (std::size_t i = 0; i < 3; ++i) {
        normal += vec3_at(mesh.normals, index(mesh.normal_indices, part.indices, i)) * weights[i];
        hit.vertex_colour += vec3_at(mesh.colours, part.indices[start + i]) * weights[i];
        const std::size_t at = 2 * std::size_t{index(mesh.uv_indices, part.indices, i)};
        for (std::size_t axis = 0; axis < 2 && at + 1 < mesh.uvs.size(); ++axis) {
            uv[i][axis] = mesh.uvs[at + axis];
        }
        hit.u += uv[i][0] * weights[i];
        hit.v += uv[i][1] * weights[i];
    }
    normal = normalized(transformed_direction(part.normals, normal));
    hit.normal = is_finite(normal) && length(normal) > 0.5f ? normal : hit.face_normal;

    const Vec3 side1 = part.corner(hit.primitive, 1) - part.corner(hit.primitive, 0);
    const Vec3 side2 = part.corner(hit.primitive, 2) - part.corner(hit.primitive, 0);
    const float u1 = uv[1][0] - uv[0][0], u2 = uv[2][0] - uv[0][0];
    const float v1 = uv[1][1] - uv[0][1], v2 = uv[2][1] - uv[0][1];
    const float determinant = u1 * v2 - u2 * v1;
    if (determinant != 0) {
        hit.along_u = (side1 * v2 - side2 * v1) * (1 / determinant);
        hit.along_v = (side2 * u1 - side1 * u2) * (1 / determinant);
    }
}

}  // namespace vsqpicture
