#include "standins/host/memory/demo_changing.h"

#include <cmath>
#include <memory>
#include <vector>

#include "standins/host/memory/splines.h"

namespace memhost {
namespace {

constexpr int kFrames = 20;

// Goes from 0 to 1 and back in the range.
float swing(TimeValue t) {
    const float place = static_cast<float>(t) / (kFrames * kDefaultTicksPerFrame);
    return 1.0f - std::fabs(2.0f * place - 1.0f);
}

Color warm(TimeValue t) {
    return Color(0.25f + 0.75f * swing(t), 0.4f, 0.3f);
}

DeformingMesh breathing(const Mesh& mesh) {
    return DeformingMesh(mesh).moves([](TimeValue t, const Mesh& rest, Mesh& now) {
        for (int v = 0; v < now.numVerts; ++v) {
            now.verts[v] = rest.verts[v] * (1.0f + 0.2f * swing(t));
        }
    });
}

void add_materials(SceneBuilder& scene) {
    auto& lacquer = scene.make<StandardMaterial>(L"Changing lacquer");
    lacquer.diffuse(warm).specular(warm).shininess(swing);
    auto& paint = scene.make<BlockMaterial>(L"Changing paint", Class_ID(0x37BF3F2F, 0x7034695C));
    paint.block(1).color(1, L"color", warm);
    scene.node(L"Lacquer").at(-20, 0, 0).deforming(breathing(box_mesh(8, 8, 8))).material(lacquer);
    scene.node(L"Paint").at(-5, 0, 0).deforming(breathing(box_mesh(8, 8, 8))).material(paint);
    const Class_ID bone(0x28bf6e8d, 0x2ecca840);
    scene.node(L"Bone").at(10, 0, 0).make_object<DeformingConvertible>(
        breathing(box_mesh(3, 3, 12)), bone);
}

void add_curves(SceneBuilder& scene) {
    const auto growing = [](TimeValue t) {
        return std::vector<Spline3D>{polyline({{0, 0, 0}, {0, 1, 2}, {0, 0, 4 + 8 * swing(t)}})};
    };
    auto& stalk =
        scene.node(L"Stalk").at(25, 0, 0).make_object<SplineObject>(std::vector<Spline3D>());
    stalk.renderable().thickness([](TimeValue t) { return 0.5f + swing(t); }).grows(growing);
    auto& tuft =
        scene.node(L"Tuft").at(30, 0, 0).make_object<SplineObject>(std::vector<Spline3D>());
    tuft.grows(growing);
    tuft.attribute(L"velmora_hair_and_fur_data")
        .number(0, L"velmora_start_radius", [](TimeValue t) { return 1.0f + swing(t); })
        .number(1, L"velmora_end_radius", swing)
        .color(3, L"velmora_root_color", warm)
        .color(4, L"velmora_tip_color", {0.1f, 0.6f, 0.1f})
        .number(5, L"velmora_hue", [](TimeValue t) { return 20 * swing(t); })
        .number(6, L"velmora_value", [](TimeValue t) { return 40 * swing(t); });
}

}  // namespace

void build_changing(SceneBuilder& scene) {
    scene.animation_frames(0, kFrames);
    add_materials(scene);
    add_curves(scene);
    scene.node(L"Lamp").at(0, -20, 30).make_object<OmniLight>().intensity([](TimeValue t) {
        return 500 + 1000 * swing(t);
    });
    scene.node(L"Bulb")
        .at(0, 20, 30)
        .make_object<PhotometricLight>(LightscapeLight::POINT_TYPE)
        .kelvin([](TimeValue t) { return 2500 + 5000 * swing(t); });
    scene.node(L"Zoom").at(0, 0, 120).camera().fov(
        [](TimeValue t) { return 0.5f + 0.4f * swing(t); });
}

}  // namespace memhost
