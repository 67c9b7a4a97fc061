#include "standins/host/memory/demo_cameras.h"

namespace memhost {
namespace {

// As in the host, the target is a node of its own beside the camera and is named after it.
void add_target(SceneBuilder& scene, const std::wstring& camera, float x, float y, float z) {
    scene.node(camera + L".Target")
        .at(x, y, z)
        .object(std::make_shared<PlainObject>(GEOMOBJECT_CLASS_ID, Class_ID(TARGET_CLASS_ID, 0)));
}

}  // namespace

void build_cameras(SceneBuilder& scene) {
    scene.unit(UNITS_CENTIMETERS).frames_per_second(30).animation_frames(0, 60);
    scene.node(L"Column").at(0, 0, 40).mesh(box_mesh(20, 20, 80));
    scene.node(L"Floor").at(0, 0, -1).mesh(box_mesh(400, 400, 2));

    // Cameras look along the negative z axis of their node. Rotated about x, they look over the
    // floor along y.
    scene.node(L"As it comes").transform(rotation_x(80) * translation(30, -200, 70)).camera();

    scene.node(L"Tele").transform(rotation_x(90) * translation(0, -900, 40)).camera().fov(0.2f);
    add_target(scene, L"Tele", 0, 0, 40);

    // Circles the column once in two seconds and always faces it.
    scene.node(L"Round trip")
        .motion([](TimeValue t) {
            return rotation_x(70) * translation(0, -250, 120) *
                   rotation_z(t * 360.0 / (2.0 * TIME_TICKSPERSEC));
        })
        .camera()
        .fov(1.0f);
    add_target(scene, L"Round trip", 0, 0, 30);

    // Its planes cut off the front and the back of the column.
    scene.node(L"Section")
        .transform(rotation_x(90) * translation(0, -200, 40))
        .camera()
        .planes(195, 205)
        .manual_clip();

    scene.node(L"Plan").at(0, 0, 300).camera().orthographic().target_distance(300);

    // The parent is scaled along one axis and the child is rotated, so that the camera's world
    // matrix has shear.
    scene.node(L"Stretched")
        .transform(scaling(1, 3, 1) * translation(120, -100, 50))
        .child(L"Sheared")
        .transform(rotation_x(60) * rotation_z(30))
        .camera()
        .fov(0.9f);
}

}  // namespace memhost
