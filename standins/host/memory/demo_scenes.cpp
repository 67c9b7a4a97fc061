#include "standins/host/memory/demo_scenes.h"

#include "standins/host/memory/demo_cameras.h"
#include "standins/host/memory/demo_changing.h"
#include "standins/host/memory/demo_curves.h"
#include "standins/host/memory/demo_deforming.h"
#include "standins/host/memory/demo_layers.h"
#include "standins/host/memory/demo_lights.h"
#include "standins/host/memory/demo_materials.h"
#include "standins/host/memory/demo_smoothing.h"
#include "standins/host/memory/demo_studio.h"

namespace memhost {
namespace {

// A crane. Each part is rotated in its parent's space, and the weights are scaled.
void build_hierarchy(SceneBuilder& scene) {
    scene.unit(UNITS_CENTIMETERS);
    const NodeBuilder base = scene.node(L"Base").at(0, 0, 10).wire(90, 90, 96);
    for (int leg = 0; leg < 4; ++leg) {
        base.child(L"Leg0" + std::to_wstring(leg + 1))
            .transform(rotation_y(20) * translation(30, 0, -10) * rotation_z(90.0 * leg));
    }

    const NodeBuilder tower = base.child(L"Tower").transform(rotation_z(30) * translation(0, 0, 5));
    const NodeBuilder cabin =
        tower.child(L"Kabine \u00fc\u00f6\u00e4").at(0, -12, 40).wire(220, 60, 30);
    cabin.child(L"\u904b\u8ee2\u58eb").at(0, 0, 4).hidden();
    const NodeBuilder jib = tower.child(L"Jib").transform(rotation_y(-15) * translation(0, 0, 60));
    const NodeBuilder trolley = jib.child(L"Trolley").at(55, 0, -2);
    trolley.child(L"Hook").transform(rotation_x(90) * translation(0, 0, -25));
    trolley.child(L"Weight").transform(scaling(8, 8, 4) * rotation_z(45) * translation(0, 0, -32));
    jib.child(L"Counterweight").transform(scaling(6, 10, 6) * translation(-25, 0, -3));
}

void build_motion(SceneBuilder& scene) {
    scene.unit(UNITS_CENTIMETERS).frames_per_second(30).animation_frames(0, 60);
    const int ticks_per_frame = scene.host().ticks_per_frame();

    // Turns once in two seconds. The lamp turns with it and never moves on its own.
    const NodeBuilder turntable = scene.node(L"Turntable").motion([](TimeValue t) {
        return rotation_z(t * 360.0 / (2.0 * TIME_TICKSPERSEC));
    });
    turntable.mesh(box_mesh(60, 60, 4));
    turntable.child(L"Lamp")
        .transform(rotation_x(35) * translation(0, 20, 15))
        .mesh(box_mesh(4, 4, 20));

    // Rises in the first second and sinks in the next.
    const NodeBuilder lift = scene.node(L"Lift").motion([](TimeValue t) {
        const double seconds = t / static_cast<double>(TIME_TICKSPERSEC);
        const double height = seconds < 1.0 ? seconds : 2.0 - seconds;
        return translation(40, 0, static_cast<float>(50.0 * height));
    });
    lift.mesh(box_mesh(20, 20, 20));

    // The gate rests at each stop, so that its matrix holds for many frames.
    const NodeBuilder gate = scene.node(L"Gate").keys({
        {0, translation(-40, 0, 0)},
        {20 * ticks_per_frame, rotation_z(45) * translation(-40, 0, 0)},
        {40 * ticks_per_frame, rotation_z(90) * translation(-40, 0, 0)},
    });
    gate.mesh(box_mesh(2, 30, 20));
    gate.child(L"Bolt").at(0, 0, 12).mesh(box_mesh(4, 4, 4));

    // A helper shows nothing, so its motion isn't exported either.
    scene.node(L"Hand").motion([](TimeValue t) { return translation(0, 0, t * 0.01f); });

    scene.node(L"Floor").at(0, 0, -1).mesh(box_mesh(120, 120, 2));
}

}  // namespace

const std::vector<DemoScene>& demo_scenes() {
    static const std::vector<DemoScene> scenes = {
        {"hierarchy", "a small crane of nested, rotated and scaled nodes, one of them hidden",
         build_hierarchy},
        {"motion", "nodes that turn, move and stop, by functions of time and by keys",
         build_motion},
        {"cameras", "still, moving, clipping and orthographic cameras", build_cameras},
        {"lights", "every kind of light: points, a measured light, shapes, a sky with a picture",
         build_lights},
        {"materials", "every kind of material: image files, drawn maps, several on one node, none",
         build_materials},
        {"smoothing", "meshes with and without smoothing groups, a texture seam, specified normals",
         build_smoothing},
        {"layers", "a tree with nodes on several layers, some hidden, for the option Layers",
         build_layers},
        {"curves", "open, closed and unrendered shapes, for the option GeneralCurves",
         build_curves},
        {"deforming",
         "meshes that change shape: a flag, a crate whose faces change, one that rests",
         build_deforming},
        {"hair", "hair of one and of two colours, on meshes with and without a name", build_hair},
        {"changing", "colours, values, curves, shapes, lights and a lens that change with time",
         build_changing},
        {"studio", "textured and shiny things under two lamps, and a camera that circles them",
         build_studio},
    };
    return scenes;
}

const DemoScene* find_demo_scene(const std::string& name) {
    for (const DemoScene& scene : demo_scenes()) {
        if (name == scene.name) {
            return &scene;
        }
    }
    return nullptr;
}

}  // namespace memhost
