#include "model/light_camera.h"

#include <gtest/gtest.h>

#include <cmath>
#include <functional>

#include "model/fbx_animation.h"
#include "model/light_viewset.h"
#include "tests/support/emitted_calls.h"

namespace qor {
namespace {

const std::string kStock =
    "reflection map \"qor_envmap\" {\n\"texture\" \"startup.hdr\",\n\"format\" 3,\n"
    "\"radius\" 25,\n}\n";

// The flags are the camera's, and come in front because the shader is written only when it is set.
const std::string kPicture =
    "flags 16\nreflection map \"qor_envmap\" {\n\"texture\" \"sky.hdr\",\n\"ground_size\" 50,\n"
    "\"direct_visibility\" on,\n\"faded_color\" 0.1 0.1 0.1,\n\"background_mode\" 1,\n"
    "\"radius\" -4,\n}\n";

// What a camera that nothing was set on has in these places.
const std::string kPerspective = "projection \"perspective\"\n";
const std::string kLens = kPerspective + "fov 60\n";
const std::string kOrientation = "position 0 0 0\ndirection 0 0 -1\nup 0 1 0\n";

struct CameraCase {
    std::function<void(LightCamera&)> set;
    std::string lens = kLens;
    std::string orientation = kOrientation;
    std::string clipping_and_motion = "";
};

std::shared_ptr<Animation> animation(const std::string& name) {
    return std::make_shared<FBXAnimation>(name, 0.0f, 1.0f, true);
}

std::string animation_text(const std::string& name) {
    return emitted_text([&](qorSceneapi_oo& scene) { animation(name)->emit(scene); });
}

std::string text_of(LightCamera& camera) {
    return emitted_text([&camera](qorSceneapi_oo& scene) { camera.emit(scene); });
}

TEST(LightCamera, WritesWhatWasSet) {
    const qorMatrix matrix = {{{1, 2, 3, 0}, {4, 5, 6, 0}, {7, 8, 9, 0}, {10, 11, 12, 1}}};
    const std::string matrix_text = "transform 1 2 3 0 4 5 6 0 7 8 9 0 10 11 12 1\n";
    const float above_one = std::nextafter(1.0f, 2.0f);
    const CameraCase cases[] = {
        {[](LightCamera&) {}},
        {[](LightCamera& c) { c.set_fov(0.1f); }, kPerspective + "fov 0.1\n"},
        {[](LightCamera& c) { c.set_fov4(1, 2, 3, 4); }, kPerspective + "fov4 1 2 3 4\n"},
        {[](LightCamera& c) {
             c.set_fov4(1, 2, 3, 4);
             c.set_fov(30);
         },
         kPerspective + "fov 30\n"},
        // A view has a window or an angle.
        {[](LightCamera& c) {
             c.set_projection(1);
             c.set_window(1, 2, 3, 4);
         },
         "projection \"orthographic\"\nwindow 1 2 3 4\n"},
        {[](LightCamera& c) {
            c.set_projection(2);
            c.set_window(1, 2, 3, 4);
        }},
        {[](LightCamera& c) {
             c.set_position(1, 2, 3);
             c.set_direction(4, 5, 6);
             c.set_up(7, 8, 9);
         },
         kLens, "position 1 2 3\ndirection 4 5 6\nup 7 8 9\n"},
        {[](LightCamera& c) { c.set_look_at(0, 0, -1); }, kLens,
         "position 0 0 0\ndirection 0 0 -1\nlook_at 0 0 -1\nup 0 1 0\n"},
        {[=](LightCamera& c) { c.set_clipping(1, above_one); }, kLens, kOrientation,
         "clipping 1 1\n"},
        {[](LightCamera& c) { c.set_clipping(1, 1); }},
        {[](LightCamera& c) { c.set_clipping(0, 1); }},
        {[](LightCamera& c) { c.set_clipping(1, NAN); }},
        {[=](LightCamera& c) { c.set_transform(matrix); }, kLens, kOrientation, matrix_text},
        {[=](LightCamera& c) {
             c.set_transform(matrix);
             c.add_animation(animation("a"));
             c.add_animation(animation("b"));
         },
         kLens, kOrientation, animation_text("a") + animation_text("b")},
        {[](LightCamera& c) {
             c.add_animation(animation("a"));
             c.set_animation(animation("b"));
         },
         kLens, kOrientation, animation_text("b")},
    };
    for (const CameraCase& wanted : cases) {
        const auto block = [&wanted](const std::string& environment) {
            return "\ncamera \"View\" {\n" + wanted.lens + environment + wanted.orientation +
                   wanted.clipping_and_motion + "}\n";
        };
        LightCamera camera("View");
        wanted.set(camera);
        EXPECT_EQ(text_of(camera), block(kStock));
        LightViewset viewset("View", "sky.hdr", -4);
        wanted.set(viewset);
        EXPECT_EQ(text_of(viewset), block(kPicture));
    }
}

}  // namespace
}  // namespace qor
