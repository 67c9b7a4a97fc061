#include "standins/host/memory/demo_curves.h"

#include "standins/host/memory/splines.h"

namespace memhost {
namespace {

// An arch whose handles point straight up.
Spline3D arch(float width, float height) {
    const Point3 up(0, 0, height);
    return Spline3D({{Point3(), Point3(), up}, {Point3(width, 0, 0) + up, {width, 0, 0}, {}}},
                    false);
}

Spline3D ring(float radius) {
    // Handles of this length make a segment a quarter of a circle, with an error below a
    // thousandth.
    const float h = radius * 0.5523f;
    const float r = radius;
    return Spline3D({{{r, -h, 0}, {r, 0, 0}, {r, h, 0}},
                     {{h, r, 0}, {0, r, 0}, {-h, r, 0}},
                     {{-r, h, 0}, {-r, 0, 0}, {-r, -h, 0}},
                     {{-h, -r, 0}, {0, -r, 0}, {h, -r, 0}}},
                    true);
}

std::shared_ptr<SplineObject> thread(std::vector<Spline3D> splines, float thickness) {
    auto made = std::make_shared<SplineObject>(std::move(splines));
    made->thickness(thickness).renderable();
    return made;
}

}  // namespace

void build_curves(SceneBuilder& scene) {
    scene.unit(UNITS_CENTIMETERS);
    scene.node(L"Open").object(thread({arch(10, 8)}, 0.5f));
    scene.node(L"Closed").at(20, 0, 0).object(thread({ring(5)}, 0.25f));
    scene.node(L"Several")
        .at(40, 0, 0)
        .object(
            thread({ring(3), polyline({{-4, 0, 0}, {4, 0, 0}, {0, 6, 0}}, true), arch(4, 2)}, 1));
    scene.node(L"Not rendered")
        .at(60, 0, 0)
        .object(std::make_shared<SplineObject>(std::vector<Spline3D>{ring(5)}));
    scene.node(L"No knots").object(thread({Spline3D({}, true), polyline({{1, 2, 3}})}, 1));

    auto circle =
        std::make_shared<ConvertibleShape>(std::vector<Spline3D>{ring(4)}, Class_ID(0x1065, 0));
    circle->splines().renderable();
    scene.node(L"Circle").transform(rotation_x(90) * translation(80, 0, 4)).object(circle);
}

void build_hair(SceneBuilder& scene) {
    scene.unit(UNITS_CENTIMETERS);
    HairModifier fur;
    fur.strands = 3000;
    fur.length = 4;
    fur.root_thickness = 2;
    scene.node(L"Head").at(0, 0, 20).mesh(sphere_mesh(10, 24, 12)).hair(fur);

    HairModifier grass;
    grass.strands = 2000;
    grass.segments = 3;
    grass.curved = false;
    grass.droop = 0.5f;
    grass.root_color = grass.tip_color = Color(0.1f, 0.4f, 0.1f);
    scene.node(L"Lawn").transform(rotation_z(30)).mesh(grid_mesh(10, 10, 50)).hair(grass);

    HairModifier brush;
    brush.strands = 50;
    scene.node(L"").at(-20, 0, 0).mesh(box_mesh(2, 2, 1)).hair(brush);
}

}  // namespace memhost
