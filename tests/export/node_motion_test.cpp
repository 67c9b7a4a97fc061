#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <sstream>

#include "tests/support/exported_scene.h"
#include "tests/support/readable_arrays.h"

namespace {

using namespace memhost;

constexpr int kFrame = 160;  // ticks at 30 frames a second
constexpr TimeValue kNearEnd = TIME_PosInfinity - kFrame - 10;
const Interval kFour(0, 3 * kFrame);  // frames

Matrix3 at_x(float x) {
    return translation(x, 0, 0);
}
Matrix3 slide(TimeValue t) {
    return at_x(static_cast<float>(t) / kFrame);
}

// A motion that jumps to each x at its tick.
LocalTransform steps(const std::vector<std::pair<TimeValue, float>>& xs) {
    std::vector<TransformKey> keys;
    for (const auto& [tick, x] : xs) {
        keys.push_back({tick, at_x(x)});
    }
    return LocalTransform(keys);
}

std::string moved_by(const std::string& x) {
    return "1 0 0 0 0 1 0 0 0 0 1 0 " + (x == "nan" ? "nan nan nan 1" : x + " 0 0 1");
}

// `times` has a blank after each time.
std::string track(const std::string& duration, const std::string& times, const std::string& xs) {
    std::string matrices;
    std::istringstream places(xs);
    for (std::string x; places >> x;) {
        matrices += (matrices.empty() ? "" : ",\n") + moved_by(x) + " ";
    }
    return "animation \"fbx_animation_2\" \"n3ds_animation\" {\n\"start_time\" 0,\n\"duration\" " +
           duration + ",\n\"timestamps\" [ " + times + "] ,\n\"matrices\" [ " + matrices +
           "\n] ,\n\"interpolate\" on,\n\"folder\" \"\",\n}\n";
}

struct MotionCase {
    const char* what;
    LocalTransform place;
    std::string written;
    Interval range;
    TimeValue time;  // the host's; keys are relative to the matrix at this time
};

template <typename Place>
MotionCase row(const char* what, Place place, std::string written, Interval range = kFour,
               TimeValue time = 0) {
    return {what, LocalTransform(place), written, range, time};
}

const MotionCase kCases[] = {
    row("still", at_x(5), ""),
    row(
        "one matrix, which the host doesn't know", [](TimeValue) { return at_x(7); }, ""),
    row("moves outside of the range only", steps({{-1, 7}, {0, 0}, {4 * kFrame, 9}}), ""),
    row("the same up to rounding", steps({{0, 1e-5f}, {1600, 0}}), "", kFour, 1600),
    row("more than rounding", steps({{0, std::nextafter(1e-5f, 1.0f)}, {1600, 0}}),
        track("0.132", "0 ", "1e-05"), kFour, 1600),
    row("elsewhere at the host's time", steps({{0, 0}, {1600, 5}}), track("0.132", "0 ", "-5"),
        kFour, 1600),
    row(
        "moves in a scaled space", [](TimeValue t) { return scaling(2, 2, 2) * slide(t); },
        track("0.132", "0 33 66 99 ", "-0.5 0 0.5 1"), kFour, kFrame),
    row("rests up to frame 9, then moves", steps({{0, 0}, {10 * kFrame, 1}, {11 * kFrame, 2}}),
        track("0.429", "0 330 363 ", "0 1 2"), Interval(0, 12 * kFrame)),
    row("comes back", steps({{0, 0}, {kFrame, 1}, {3 * kFrame, 0}}),
        track("0.132", "0 33 99 ", "0 1 0")),
    row("one frame", slide, track("0.033", "0 ", "2"), Interval(320, 320)),
    row("ends before it starts", slide, "", Interval(480, 160)),
    row("not whole frames", slide, track("0.10725", "0 33 66 ", "0 1 2"), Interval(40, 400), 40),
    row(
        "up to the end of time",
        [](TimeValue t) { return slide(std::max(t, kNearEnd) - kNearEnd); },
        track("0.0680625", "0 33 ", "0 1"), Interval(kNearEnd, TIME_PosInfinity)),
    row(
        "NaN equals nothing", [](TimeValue) { return at_x(NAN); },
        track("0.066", "0 33 ", "nan nan"), Interval(0, kFrame)),
};

// A light that writes nothing still counts as content.
NodeBuilder with_content(NodeBuilder node) {
    return node.object(std::make_shared<PlainObject>(LIGHT_CLASS_ID, Class_ID(1, 2)));
}

// The text after the first matrix, which is the innermost node's.
std::string text_after_matrix(const std::string& text) {
    return with_readable_integers(text.substr(text.find('\n', text.find("\ntransform ") + 1) + 1));
}

TEST(NodeMotion, ComesAfterTheMatrix) {
    for (const MotionCase& wanted : kCases) {
        SceneBuilder scene;
        scene.time(wanted.time).animation_ticks(wanted.range.Start(), wanted.range.End());
        const NodeBuilder node = with_content(scene.node(L"n"));
        node.node().set_local_transform(wanted.place);
        EXPECT_EQ(text_after_matrix(exported_nodes(scene)), wanted.written + "}\n") << wanted.what;

        Qor::Options options(&scene.host());
        options.TransformAnimations = false;
        EXPECT_EQ(text_after_matrix(exported(scene, options)), "}\n}\n") << wanted.what;
        node.object(std::make_shared<HelperObject>());
        EXPECT_EQ(text_after_matrix(exported_nodes(scene)), "}\n") << wanted.what;
    }
}

// The parent has no object, but gets a track because it moves its child.
TEST(NodeMotion, IsRelativeToAParentThatMoves) {
    const std::string slides = track("0.066", "0 33 ", "0 1");
    for (const bool child_moves : {false, true}) {
        SceneBuilder scene;
        scene.animation_frames(0, 1);
        const NodeBuilder child = with_content(scene.node(L"n").motion(slide).child(L"n"));
        if (child_moves) {
            child.motion(slide);
        }
        EXPECT_EQ(
            text_after_matrix(exported_nodes(scene)),
            (child_moves ? slides : "") + "}\ntransform " + moved_by("0") + "\n" + slides + "}\n");
    }
}

}  // namespace
