#include "standins/host/memory/demo_deforming.h"

namespace memhost {
namespace {

constexpr int kLastFrame = 40;
constexpr int kTicksPerFrame = TIME_TICKSPERSEC / 30;

float sine(double degrees) {
    return rotation_z(degrees).GetRow(0).y;
}

// Two waves per second, which get higher with the distance from the pole.
void wave(TimeValue t, const Mesh& at_rest, Mesh& mesh) {
    const double turns = 2.0 * t / TIME_TICKSPERSEC;
    for (int v = 0; v < at_rest.numVerts; ++v) {
        const Point3& place = at_rest.verts[v];
        mesh.verts[v].z = place.x * 0.1f * sine(360.0 * (place.x / 20.0 - turns));
    }
}

// Stretches and shrinks upwards once per second.
void breathe(TimeValue t, const Mesh& at_rest, Mesh& mesh) {
    const float size = 1.0f + 0.3f * sine(360.0 * t / TIME_TICKSPERSEC);
    for (int v = 0; v < at_rest.numVerts; ++v) {
        mesh.verts[v] = at_rest.verts[v] * scaling(1, 1, size);
    }
}

// The top has its own material, and its two faces can meet along either diagonal.
Mesh crate(bool is_turned) {
    Mesh mesh = box_mesh(10, 10, 10).material_ids({0, 0, 1, 1, 0, 0, 0, 0, 0, 0, 0, 0});
    if (is_turned) {
        mesh.faces[2].v[2] = mesh.faces[3].v[2];
        mesh.faces[3].v[0] = mesh.faces[2].v[1];
    }
    return mesh;
}

}  // namespace

void build_deforming(SceneBuilder& scene) {
    scene.unit(UNITS_CENTIMETERS).frames_per_second(30).animation_frames(0, kLastFrame);

    auto& stripes =
        scene.make<StandardMaterial>(L"Stripes")
            .map(kDiffuseSlot,
                 &scene.make<ProceduralMap>(checker({200, 30, 30, 255}, {240, 240, 240, 255}, 16)));
    DeformingMesh flag(grid_mesh(24, 16, 30));
    flag.moves(wave);
    scene.node(L"Flag").transform(rotation_x(90)).deforming(flag).material(stripes);

    auto& wood = scene.make<StandardMaterial>(L"Wood");
    auto& paint = scene.make<StandardMaterial>(L"Paint");
    DeformingMesh box({{0, crate(false)}, {20 * kTicksPerFrame, crate(true)}});
    box.moves(breathe);
    scene.node(L"Crate").at(50, 0, 5).deforming(box).material(
        scene.make<MultiMaterial>(L"Crate", std::vector<Mtl*>{&wood, &paint}));

    DeformingMesh lung(sphere_mesh(6, 16, 8));
    lung.moves(breathe).rests({TIME_NegInfinity, kLastFrame / 2 * kTicksPerFrame});
    scene.node(L"Lung").at(80, 0, 6).deforming(lung);
}

}  // namespace memhost
