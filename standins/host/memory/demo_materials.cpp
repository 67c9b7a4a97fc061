#include "standins/host/memory/demo_materials.h"

namespace memhost {
namespace {

constexpr Pixel kWhite = {255, 255, 255, 255};
constexpr Pixel kBlack = {0, 0, 0, 255};
constexpr Pixel kBrick = {150, 70, 50, 255};

// Every slot that is exported, filled with procedural maps.
Mtl& tiles(SceneBuilder& scene) {
    return scene.make<StandardMaterial>(L"Tiles")
        .diffuse({0.8f, 0.7f, 0.6f})
        .specular({1, 1, 0.9f})
        .shininess(0.4f)
        .map(kDiffuseSlot, &scene.make<ProceduralMap>(checker(kBrick, kWhite, 8)))
        .map(kBumpSlot, &scene.make<ProceduralMap>(gradient(kBlack, kWhite)))
        .map(kSpecularLevelSlot, &scene.make<ProceduralMap>(solid({64, 64, 64, 255})))
        .map(kOpacitySlot, &scene.make<ProceduralMap>(gradient(kWhite, {192, 192, 192, 255})));
}

// The file of the map doesn't exist, but its tiling is still exported. The slot that is off isn't.
Mtl& poster(SceneBuilder& scene) {
    return scene.make<StandardMaterial>(L"Poster")
        .diffuse({0.2f, 0.4f, 0.8f})
        .map(kDiffuseSlot, &scene.bitmap(L"no such poster.png").tiling(2, 3, 0.25f, 0.5f))
        .map(kBumpSlot, &scene.make<ProceduralMap>(solid(kWhite)), false);
}

Mtl& plain(SceneBuilder& scene, const wchar_t* name, const Color& color) {
    return scene.make<StandardMaterial>(name).diffuse(color);
}

// The exporter doesn't know this class, so it goes by the names of slots and parameters.
Mtl& lacquer(SceneBuilder& scene) {
    auto& material = scene.make<BlockMaterial>(L"Lacquer", Class_ID(0x5a3c0001, 0x5a3c0002));
    material.diffuse({0.7f, 0.05f, 0.05f}).specular({1, 1, 1}).shininess(0.8f);
    material.slot(L"Diffuse Color Map", &scene.make<ProceduralMap>(checker(kBrick, kBlack, 2)));
    material.slot(L"Coating", &scene.make<ProceduralMap>(solid(kBlack)));
    material.block(3)
        .number(7, L"bump_map_amt", 0.25f)
        .map(8, L"bump_map", &scene.make<ProceduralMap>(checker(kBlack, kWhite, 32)));
    return material;
}

Mtl& block_color(SceneBuilder& scene) {
    auto& material = scene.make<BlockMaterial>(L"Car paint", Class_ID(0x37BF3F2F, 0x7034695C));
    material.block(1).color(1, L"paint", {0.1f, 0.3f, 0.1f});
    material.block(4)
        .map(100, L"diffuse_map", &scene.make<ProceduralMap>(gradient(kBlack, kBrick)))
        .map(103, L"bump_map", &scene.make<ProceduralMap>(checker(kBlack, kWhite, 16)))
        .integer(150, L"diffuse_on", 1)
        .integer(153, L"bump_on", 0);
    return material;
}

Mtl& named_texmaps(SceneBuilder& scene) {
    auto& material = scene.make<BlockMaterial>(L"Scan", Class_ID(0x3F2C5FAA, 0x750008BC));
    Texmap* shown = &scene.make<ProceduralMap>(checker(kWhite, kBrick, 4));
    material.block(0)
        .map(0, L"texmap_diffuse_color", shown)
        .map(1, L"texmap_bump", &scene.make<ProceduralMap>(checker(kBlack, kWhite, 64)))
        .map(2, L"texmap_specular_glossiness", &scene.make<ProceduralMap>(solid(kWhite)))
        .map(3, L"texmap_reflection", shown)
        .number(4, L"gloss", 0.5f)
        .number(5, L"bump_amount", 3);
    return material;
}

}  // namespace

void build_materials(SceneBuilder& scene) {
    scene.unit(UNITS_CENTIMETERS);
    const MeshBuilder panel = grid_mesh(1, 1, 10);

    const NodeBuilder wall = scene.node(L"Wall");
    wall.child(L"Tiled").mesh(panel).material(tiles(scene));
    wall.child(L"Poster").at(12, 0, 0).mesh(panel).material(poster(scene));
    wall.child(L"Lacquered").at(24, 0, 0).mesh(panel).material(lacquer(scene));
    wall.child(L"Painted").at(36, 0, 0).mesh(panel).material(block_color(scene));
    wall.child(L"Scanned").at(48, 0, 0).mesh(panel).material(named_texmaps(scene));
    wall.child(L"Bare").at(60, 0, 0).mesh(panel).wire(10, 20, 30);

    // The box has six sides and the material four slots, so the ids of the last two sides start
    // again at the first slot. One material is in two slots, and one slot is empty.
    Mtl& red = plain(scene, L"Red", {0.9f, 0.1f, 0.1f});
    Mtl& green = plain(scene, L"Green", {0.1f, 0.9f, 0.1f});
    Mtl& sides =
        scene.make<MultiMaterial>(L"Sides", std::vector<Mtl*>{&red, nullptr, &green, &red});
    scene.node(L"Dice").at(0, -20, 5).mesh(box_mesh(8, 8, 8)).material(sides);
}

}  // namespace memhost
