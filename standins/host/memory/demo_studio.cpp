#include "standins/host/memory/demo_studio.h"

#include <cmath>

namespace memhost {

void build_studio(SceneBuilder& scene) {
    scene.unit(UNITS_CENTIMETERS).frames_per_second(30).animation_frames(0, 60);

    constexpr Pixel kLight = {214, 205, 190, 255};
    constexpr Pixel kDark = {112, 98, 88, 255};
    Mtl& tiles = scene.make<StandardMaterial>(L"Studio floor")
                     .map(kDiffuseSlot, &scene.make<ProceduralMap>(checker(kLight, kDark, 10)));
    scene.node(L"Floor").at(-200, -200, 0).mesh(grid_mesh(1, 1, 400)).material(tiles);

    Mtl& wood = scene.make<StandardMaterial>(L"Studio crate").diffuse({0.5f, 0.26f, 0.1f});
    scene.node(L"Crate")
        .transform(rotation_z(25) * translation(-45, 30, 25))
        .mesh(box_mesh(50, 50, 50))
        .material(wood);

    Mtl& metal = scene.make<StandardMaterial>(L"Studio metal")
                     .diffuse({0.15f, 0.15f, 0.17f})
                     .specular({0.8f, 0.8f, 0.85f})
                     .shininess(0.9f);
    scene.node(L"Ball").at(40, 20, 28).mesh(sphere_mesh(28, 64, 32)).material(metal);

    // Hops three times in two seconds.
    Mtl& rubber = scene.make<StandardMaterial>(L"Studio rubber").diffuse({0.75f, 0.08f, 0.06f});
    scene.node(L"Hopper")
        .motion([](TimeValue t) {
            const double phase = 3.0 * 3.14159265358979 * t / (2.0 * TIME_TICKSPERSEC);
            return translation(-5, -55, 12 + 40 * static_cast<float>(std::abs(std::sin(phase))));
        })
        .mesh(sphere_mesh(12, 48, 24))
        .material(rubber);

    scene.node(L"Ceiling lamp")
        .at(-30, -20, 170)
        .make_object<PhotometricLight>(LightscapeLight::SPHERE_TYPE)
        .radius(12.0f)
        .kelvin(5600.0f)
        .lumens(6000.0f);
    scene.node(L"Side lamp")
        .at(150, -120, 90)
        .make_object<PhotometricLight>(LightscapeLight::POINT_TYPE)
        .kelvin(3200.0f)
        .lumens(2500.0f);

    // A quarter of a circle around the set in two seconds.
    scene.node(L"Camera")
        .motion([](TimeValue t) {
            return rotation_x(68) * translation(0, -230, 105) *
                   rotation_z(t * 90.0 / (2.0 * TIME_TICKSPERSEC) - 30);
        })
        .camera()
        .fov(0.75f);
}

}  // namespace memhost
