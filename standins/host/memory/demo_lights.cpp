#include "standins/host/memory/demo_lights.h"

namespace memhost {
namespace {

using Photometric = LightscapeLight;

PhotometricLight& photometric(const NodeBuilder& node, Photometric::LightTypes type) {
    return node.make_object<PhotometricLight>(type);
}

void build_standard_lights(const NodeBuilder& parent) {
    parent.child(L"Bulb")
        .at(-40, 0, 25)
        .make_object<OmniLight>()
        .intensity(800)
        .color({1, 0.9f, 0.7f});
    parent.child(L"Stage spot").at(-40, 20, 25).make_object<SpotLight>();
}

void build_point_lights(const NodeBuilder& parent) {
    photometric(parent.child(L"Candle").at(-20, 0, 10), Photometric::POINT_TYPE)
        .kelvin(1900)
        .lumens(12.5f);
    photometric(parent.child(L"Street lamp").at(-20, 20, 40), Photometric::TARGET_POINT_TYPE)
        .web_file(L"samples/street-lamp.ies", {10, 15, 30});
    photometric(parent.child(L"Lost web").at(-20, 40, 40), Photometric::POINT_TYPE)
        .web_file(L"no such lamp.ies")
        .kelvin(4000)
        .lumens(2400);
}

void build_shaped_lights(const NodeBuilder& parent) {
    photometric(parent.child(L"Panel").at(0, 0, 30), Photometric::AREA_TYPE)
        .shape(rectangle_shape(20, 10))
        .distribution(Photometric::DIFFUSE_DIST)
        .kelvin(5000)
        .lumens(3600);
    photometric(parent.child(L"Pennant").at(0, 20, 30), Photometric::TARGET_AREA_TYPE)
        .shape({Point3(0, 0, 0), Point3(0, 8, 0), Point3(12, 4, 0)})
        .kelvin(9000);
    photometric(parent.child(L"Tube").at(20, 0, 30), Photometric::CYLINDER_TYPE)
        .shape(cylinder_shape(1.5f, 60, 12))
        .kelvin(4000)
        .lumens(2700);
    // Warms up over the first two seconds.
    photometric(parent.child(L"Globe").at(20, 20, 30), Photometric::SPHERE_TYPE)
        .radius(6)
        .kelvin([](TimeValue t) { return t < 9600 ? 1000.0f + 0.1875f * t : 2800.0f; })
        .lumens(810);
    // Neither of these has a counterpart in the renderer.
    photometric(parent.child(L"Disc").at(40, 0, 30), Photometric::DISC_TYPE);
    photometric(parent.child(L"Strip").at(40, 20, 30), Photometric::LINEAR_TYPE);
}

}  // namespace

void build_lights(SceneBuilder& scene) {
    scene.unit(UNITS_CENTIMETERS);
    const NodeBuilder room = scene.node(L"Room").mesh(grid_mesh(8, 8, 100));
    build_standard_lights(room);
    build_point_lights(room);
    build_shaped_lights(room);
    scene.node(L"Sky").make_object<SkyLight>().map(&scene.bitmap(L"samples/textures/sky.png"));
}

}  // namespace memhost
