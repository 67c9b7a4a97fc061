#include "model/light_camera.h"

#include <gtest/gtest.h>

#include <cmath>
#include <functional>

#include "model/fbx_animation.h"
#include "tests/support/emitted_calls.h"

namespace qor {
namespace {

// A camera's defaults.
const std::string kPerspective = "projection \"perspective\"\n";
const std::string kLens = kPerspective + "fov 60\n";
const std::string kOrientation = "position 0 0 0\ndirection 0 0 -1\nup 0 1 0\n";

struct CameraCase {
    std::function<void(LightCamera&)> set;
    std::string lens = kLens;
    std::string orientation = kOrientation;
    std::string motion = "";
};

std::shared_ptr<Animation> animation(const std::string& name) {
    const auto track = std::make_shared<FBXAnimation>(name, 0.0f, 1.0f, true);
    track->set_old_kind(true);
    track->set_folder("takes");
    return track;
}

std::string animation_text(const std::string& name) {
    return "animation \"fbx_animation\" \"" + name +
           "\" {\n\"start_time\" 0,\n\"duration\" 1,\n\"timestamps\" [ ] ,\n\"matrices\" [ ] ,\n"
           "\"interpolate\" on,\n\"folder\" \"takes\",\n}\n";
}

TEST(LightCamera, WritesWhatWasSet) {
    const CameraCase cases[] = {
        {[](LightCamera& c) { c.set_fov4(1, 2, 3, 4); }, kPerspective + "fov4 1 2 3 4\n"},
        {[](LightCamera& c) { c.set_fov4(1, 2, 3, 4), c.set_fov(30); }, kPerspective + "fov 30\n"},
        // The projection decides whether the window or the angle is written.
        {[](LightCamera& c) { c.set_projection(1), c.set_window(1, 2, 3, 4); },
         "projection \"orthographic\"\nwindow 1 2 3 4\n"},
        {[](LightCamera& c) { c.set_projection(2), c.set_window(1, 2, 3, 4); }},
        {[](LightCamera& c) {
             c.set_position(1, 2, 3), c.set_direction(4, 5, 6), c.set_up(7, 8, 9);
             c.set_look_at(0, 0, -1);
         },
         kLens, "position 1 2 3\ndirection 4 5 6\nlook_at 0 0 -1\nup 7 8 9\n"},
        {[](LightCamera& c) { c.set_clipping(1, NAN); }},
        {[](LightCamera& c) {
             c.set_transform({});
             c.add_animation(animation("a")), c.add_animation(animation("b"));
         },
         kLens, kOrientation, animation_text("a") + animation_text("b")},
        {[](LightCamera& c) { c.add_animation(animation("a")), c.set_animation(animation("b")); },
         kLens, kOrientation, animation_text("b")},
    };
    for (const CameraCase& wanted : cases) {
        LightCamera camera("View");
        wanted.set(camera);
        EXPECT_EQ(emitted_text([&camera](qorSceneapi_oo& scene) { camera.emit(scene); }),
                  "\ncamera \"View\" {\n" + wanted.lens +
                      "reflection map \"qor_envmap\" {\n\"texture\" \"startup.hdr\",\n"
                      "\"format\" 3,\n\"radius\" 25,\n}\n" +
                      wanted.orientation + wanted.motion + "}\n");
    }
}

}  // namespace
}  // namespace qor
