#include "model/fbx_animation.h"

#include <gtest/gtest.h>

#include "tests/support/emitted_calls.h"

namespace qor {
namespace {

// The gap between the keys is what a node leaves that rests for nine frames and then moves.
TEST(FBXAnimation, WritesKeysAndTimesInOneBlock) {
    FBXAnimation track("Box013ds_animation", 0.0f, 0.5f, true);
    track.add_key(0, {{{1, 0, 0, 0}, {0, 1, 0, 0}, {0, 0, 1, 0}, {0, 0, 0, 1}}});
    track.add_key(330, {{{1, 2, 3, 0}, {4, 5, 6, 0}, {7, 8, 9, 0}, {10, 11, 0.1, 1}}});
    const auto text = [&track] {
        return emitted_text([&track](qorSceneapi_oo& scene) { track.emit(scene); });
    };
    const auto block = [](const std::string& kind, const std::string& folder) {
        return "animation \"" + kind +
               "\" \"Box013ds_animation\" {\n\"start_time\" 0,\n\"duration\" 0.5,\n"
               "\"timestamps\" [ 0,330 ] ,\n"
               "\"matrices\" [ 1 0 0 0 0 1 0 0 0 0 1 0 0 0 0 1 ,\n"
               "1 2 3 0 4 5 6 0 7 8 9 0 10 11 0.1 1 \n] ,\n"
               "\"interpolate\" on,\n\"folder\" \"" +
               folder + "\",\n}\n";
    };
    EXPECT_EQ(text(), block("fbx_animation_2", ""));
    track.set_old_kind(true);
    track.set_folder("takes");
    EXPECT_EQ(text(), block("fbx_animation", "takes"));
}

}  // namespace
}  // namespace qor
