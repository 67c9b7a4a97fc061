#include "standins/host/memory/demo_smoothing.h"

namespace memhost {
namespace {

// Texture coordinates are exported only for a material that uses them.
Mtl& checkered(SceneBuilder& scene) {
    return scene.make<StandardMaterial>(L"Checkered")
        .map(kDiffuseSlot,
             &scene.make<ProceduralMap>(checker({230, 230, 230, 255}, {40, 40, 120, 255}, 16)));
}

// A roof of two slopes that share the vertices of the ridge.
MeshBuilder roof() {
    return MeshBuilder({{-5, -5, 0}, {5, -5, 0}, {-5, 0, 3}, {5, 0, 3}, {-5, 5, 0}, {5, 5, 0}},
                       {{0, 1, 3}, {0, 3, 2}, {2, 3, 5}, {2, 5, 4}});
}

// Specified normals give the ridge a sharp edge. The eaves have smoothed normals, and so has one
// corner whose specified normal isn't explicit.
MeshBuilder roof_with_normals() {
    MeshBuilder mesh = roof();
    mesh.groups({1});
    const Point3 front(0, -0.8f, 0.6f);
    const Point3 back(0, 0.8f, 0.6f);
    mesh.normal(0, 2, front).normal(1, 1, front).normal(1, 2, front);
    mesh.normal(2, 0, back).normal(2, 1, back).normal(3, 0, back);
    return mesh.normal(0, 0, {1, 0, 0}, false);
}

}  // namespace

void build_smoothing(SceneBuilder& scene) {
    scene.unit(UNITS_METERS);
    scene.node(L"Six groups").mesh(box_mesh(6, 8, 4));
    scene.node(L"One group").at(15, 0, 0).mesh(sphere_mesh(5, 24, 12)).material(checkered(scene));
    scene.node(L"No groups").at(30, 0, 0).mesh(roof());
    scene.node(L"Two groups that meet").at(45, 0, 0).mesh(roof().groups({1, 1, 2, 3}));
    scene.node(L"Normals of its own").at(60, 0, 0).mesh(roof_with_normals());
    scene.node(L"Moved inside").at(75, 0, 0).offset(rotation_x(90)).mesh(roof().groups({1}));
}

}  // namespace memhost
