#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>

#include "tests/support/exported_scene.h"
#include "tests/support/readable_arrays.h"

namespace {

using memhost::LocalTransform;
using memhost::NodeBuilder;
using memhost::SceneBuilder;

constexpr int kFrame = 160;  // ticks at 30 frames a second
constexpr TimeValue kNearEnd = TIME_PosInfinity - kFrame - 10;

Matrix3 at_x(float x) {
    return memhost::translation(x, 0, 0);
}
Matrix3 slide(TimeValue t) {
    return at_x(static_cast<float>(t) / kFrame);
}
Matrix3 large_slide(TimeValue t) {
    return memhost::scaling(2, 2, 2) * slide(t);
}
Matrix3 seven(TimeValue) {
    return at_x(7);
}
Matrix3 no_place(TimeValue) {
    return at_x(std::numeric_limits<float>::quiet_NaN());
}
Matrix3 late_slide(TimeValue t) {
    return slide(std::max(t, kNearEnd) - kNearEnd);
}

std::string moved_by(const std::string& place) {
    return "1 0 0 0 0 1 0 0 0 0 1 0 " + place + " 1";
}

struct MotionCase {
    const char* what;
    Interval range;
    TimeValue time;  // of the host, and so of the matrix that the keys are relative to
    LocalTransform place;
    std::string duration;             // empty if there is no track
    std::string times;                // of the keys, each with a blank behind it
    std::vector<std::string> places;  // of the keys
};

MotionCase still(const char* what, Interval range, TimeValue time, LocalTransform place) {
    return {what, range, time, place, "", "", {}};
}

MotionCase moving(const char* what, Interval range, TimeValue time, LocalTransform place,
                  const char* duration, const char* times, std::vector<std::string> places) {
    return {what, range, time, place, duration, times, places};
}

const Interval kFourFrames(0, 3 * kFrame);
const MotionCase kCases[] = {
    still("still", kFourFrames, 0, LocalTransform(at_x(5))),
    still("one matrix, though the host can't tell", kFourFrames, 0, LocalTransform(seven)),
    still("moves outside of the range only", kFourFrames, 0,
          LocalTransform({{-1, at_x(7)}, {0, at_x(0)}, {4 * kFrame, at_x(9)}})),
    still("the same up to rounding", kFourFrames, 1600,
          LocalTransform({{0, at_x(1e-5f)}, {1600, at_x(0)}})),
    moving("a little more", kFourFrames, 1600,
           LocalTransform({{0, at_x(std::nextafter(1e-5f, 1.0f))}, {1600, at_x(0)}}), "0.132", "0 ",
           {"1e-05 0 0"}),
    moving("elsewhere at the host's time", kFourFrames, 1600,
           LocalTransform({{0, at_x(0)}, {1600, at_x(5)}}), "0.132", "0 ", {"-5 0 0"}),
    moving("moves in a larger space", kFourFrames, kFrame, LocalTransform(large_slide), "0.132",
           "0 33 66 99 ", {"-0.5 0 0", "0 0 0", "0.5 0 0", "1 0 0"}),
    moving("rests up to frame 9, then moves", {0, 12 * kFrame}, 0,
           LocalTransform({{0, at_x(0)}, {10 * kFrame, at_x(1)}, {11 * kFrame, at_x(2)}}), "0.429",
           "0 330 363 ", {"0 0 0", "1 0 0", "2 0 0"}),
    moving("comes back", kFourFrames, 0,
           LocalTransform({{0, at_x(0)}, {kFrame, at_x(1)}, {3 * kFrame, at_x(0)}}), "0.132",
           "0 33 99 ", {"0 0 0", "1 0 0", "0 0 0"}),
    moving("one frame", {320, 320}, 0, LocalTransform(slide), "0.033", "0 ", {"2 0 0"}),
    still("ends before it starts", {480, 160}, 0, LocalTransform(slide)),
    moving("not whole frames", {40, 400}, 40, LocalTransform(slide), "0.10725", "0 33 66 ",
           {"0 0 0", "1 0 0", "2 0 0"}),
    moving("up to the end of time", {kNearEnd, TIME_PosInfinity}, 0, LocalTransform(late_slide),
           "0.0680625", "0 33 ", {"0 0 0", "1 0 0"}),
    moving("no number equals another", {0, kFrame}, 0, LocalTransform(no_place), "0.066", "0 33 ",
           {"nan nan nan", "nan nan nan"}),
};

std::string track(const MotionCase& wanted) {
    if (wanted.duration.empty()) {
        return "";
    }
    std::string matrices;
    for (const std::string& place : wanted.places) {
        matrices += (matrices.empty() ? "" : ",\n") + moved_by(place) + " ";
    }
    return "animation \"fbx_animation_2\" \"n3ds_animation\" {\n\"start_time\" 0,\n\"duration\" " +
           wanted.duration + ",\n\"timestamps\" [ " + wanted.times + "] ,\n\"matrices\" [ " +
           matrices + "\n] ,\n\"interpolate\" on,\n\"folder\" \"\",\n}\n";
}

// A light that leaves nothing counts as content all the same.
NodeBuilder with_content(NodeBuilder node) {
    return node.object(std::make_shared<memhost::PlainObject>(LIGHT_CLASS_ID, Class_ID(1, 2)));
}

// Behind the first matrix, which is that of the innermost node.
std::string behind_matrix(const std::string& text) {
    return with_readable_integers(text.substr(text.find('\n', text.find("\ntransform ") + 1) + 1));
}

TEST(NodeMotion, StandsBehindTheMatrix) {
    for (const MotionCase& wanted : kCases) {
        SceneBuilder scene;
        scene.time(wanted.time).animation_ticks(wanted.range.Start(), wanted.range.End());
        const NodeBuilder node = with_content(scene.node(L"n"));
        node.node().set_local_transform(wanted.place);
        EXPECT_EQ(behind_matrix(exported_nodes(scene)), track(wanted) + "}\n") << wanted.what;

        Qor::Options options(&scene.host());
        options.TransformAnimations = false;
        EXPECT_EQ(behind_matrix(exported(scene, options)), "}\n}\n") << wanted.what;
        node.object(std::make_shared<memhost::HelperObject>());
        EXPECT_EQ(behind_matrix(exported_nodes(scene)), "}\n") << wanted.what;
    }
}

// The parent shows nothing but its child, whose place the parent's track tells.
TEST(NodeMotion, IsRelativeToAParentThatMoves) {
    const std::string slides = track(moving("", {}, 0, {}, "0.066", "0 33 ", {"0 0 0", "1 0 0"}));
    for (const bool child_moves : {false, true}) {
        SceneBuilder scene;
        scene.animation_frames(0, 1);
        const NodeBuilder child = with_content(scene.node(L"n").motion(slide).child(L"n"));
        if (child_moves) {
            child.motion(slide);
        }
        EXPECT_EQ(behind_matrix(exported_nodes(scene)), (child_moves ? slides : "") +
                                                            "}\ntransform " + moved_by("0 0 0") +
                                                            "\n" + slides + "}\n");
    }
}

}  // namespace
