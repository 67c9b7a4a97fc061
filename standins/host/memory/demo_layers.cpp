#include "standins/host/memory/demo_layers.h"

namespace memhost {

// A house as an architect might arrange it. Nodes that are together in the tree are on layers of
// different trades, so an export that turns layers into groups separates them.
void build_layers(SceneBuilder& scene) {
    scene.unit(UNITS_METERS).frames_per_second(30).animation_frames(0, 60);
    scene.layer(L"Structure");
    scene.layer(L"Later");
    scene.layer(L"Drafts").set_hidden();

    scene.node(L"Ground").at(0, 0, -0.1f).wire(90, 140, 70).mesh(box_mesh(30, 30, 0.2f));

    const NodeBuilder house = scene.node(L"House").transform(rotation_z(20)).layer(L"Structure");
    house.child(L"Walls").wire(210, 200, 180).mesh(box_mesh(10, 8, 3)).layer(L"Structure");
    const NodeBuilder roof = house.child(L"Roof").at(0, 0, 3).mesh(box_mesh(11, 9, 0.3f));
    roof.wire(170, 60, 40).layer(L"Structure");
    roof.child(L"Solar panel")
        .transform(rotation_x(30) * translation(2, 0, 0.5f))
        .mesh(box_mesh(3, 2, 0.1f))
        .layer(L"Technik \u00fc");
    roof.child(L"Dormer").at(-3, 0, 0.3f).mesh(box_mesh(2, 2, 1.5f)).layer(L"Drafts");

    const NodeBuilder hall = house.child(L"Hall").layer(L"Furniture");
    hall.child(L"Table").at(1, 1, 0).mesh(box_mesh(1.6f, 0.8f, 0.75f)).layer(L"Furniture");
    hall.child(L"Spare chair")
        .at(3, 1, 0)
        .mesh(box_mesh(0.5f, 0.5f, 0.9f))
        .hidden()
        .layer(L"Furniture");
    // The hall doesn't move, so the fan moves in the world only by its own motion.
    hall.child(L"Fan")
        .motion([](TimeValue t) {
            return rotation_z(t * 360.0 / TIME_TICKSPERSEC) * translation(0, 0, 2.6f);
        })
        .mesh(box_mesh(1.2f, 0.1f, 0.02f))
        .layer(L"Technik \u00fc");
}

}  // namespace memhost
