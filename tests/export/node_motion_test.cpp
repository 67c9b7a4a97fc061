#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <functional>
#include <set>
#include <sstream>

#include "plugins/3dsmax/export/motion_samples.h"
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

// Adds `count` nodes that move, side by side or each below the one before.
std::vector<NodeBuilder> add_moving(SceneBuilder& scene, int count, bool are_chained) {
    std::vector<NodeBuilder> nodes;
    for (int i = 0; i < count; ++i) {
        const NodeBuilder node =
            nodes.empty() || !are_chained ? scene.node(L"n") : nodes.back().child(L"n");
        nodes.push_back(with_content(node).motion(slide));
    }
    return nodes;
}

// The host sets itself to a new time as often as there are frames, and computes a matrix once for
// each node and frame.
TEST(NodeMotion, IsSampledFrameByFrame) {
    constexpr int kNodes = 40, kFrames = 30;
    const auto add_cameras = [](SceneBuilder& scene) {
        for (int i = 0; i < kNodes; ++i) {
            scene.node(L"c").motion(slide).camera();
        }
    };
    const struct {
        const char* what;
        std::function<void(SceneBuilder&)> build;
        std::uint64_t frames;  // to which the host is set
        bool layers = false;
    } cases[] = {
        {"side by side", [](SceneBuilder& s) { add_moving(s, kNodes, false); }, kFrames},
        {"a chain", [](SceneBuilder& s) { add_moving(s, kNodes, true); }, kFrames},
        {"layers", [](SceneBuilder& s) { add_moving(s, kNodes, true); }, kFrames, true},
        {"cameras", add_cameras, kFrames},
        {"hidden", [](SceneBuilder& s) { add_moving(s, 1, false)[0].hidden(); }, 0},
        {"empty", [](SceneBuilder& s) { s.node(L"n").motion(slide); }, 0},
        {"above content",
         [](SceneBuilder& s) { with_content(s.node(L"n").motion(slide).child(L"n")); }, kFrames},
    };
    for (const auto& one : cases) {
        SCOPED_TRACE(one.what);
        SceneBuilder scene;
        scene.animation_frames(0, kFrames - 1);
        one.build(scene);
        Qor::Options options(&scene.host());
        options.Layers = one.layers;
        const std::uint64_t changes = scene.host().time_changes();
        const std::uint64_t evaluations = scene.host().evaluations();
        exported(scene, options);
        constexpr std::uint64_t kOfTheWalk = 3;
        EXPECT_GE(scene.host().time_changes() - changes, one.frames);
        EXPECT_LE(scene.host().time_changes() - changes, one.frames + kOfTheWalk);
        EXPECT_LE(scene.host().evaluations() - evaluations,
                  (kNodes + 1) * (one.frames + kOfTheWalk));
    }
}

TEST(NodeMotion, IsNotSampledForAnUpdateWithoutChanges) {
    for (const bool has_changed : {false, true}) {
        SceneBuilder scene;
        scene.animation_frames(0, 20);
        INode* const node = &add_moving(scene, 3, false)[1].node();
        const std::uint64_t changes = scene.host().time_changes();
        const TemporaryFolder folder;
        SceneExporter exporter(&scene.host(), scene.host().GetRootNode(),
                               std::make_shared<Qor::Options>(&scene.host()),
                               has_changed ? std::set<INode*>{node} : std::set<INode*>());
        exporter.Run(folder / "scene.vsq", true, true, false);
        EXPECT_EQ(scene.host().time_changes() - changes > 20, has_changed);
    }
}

TEST(MotionSamples, TakeBatchesOfBoundedMemory) {
    constexpr int kFrames = 10;
    SceneBuilder scene;
    const std::vector<NodeBuilder> nodes = add_moving(scene, 7, true);
    std::vector<MotionSamples::Need> needs;
    for (std::size_t i = nodes.size(); i-- > 0;) {
        needs.push_back({&nodes[i].node(), nodes[i].node().GetParentNode()});
    }
    MotionSamples samples(3 * kFrames * sizeof(Matrix3));
    samples.plan(needs, {0, (kFrames - 1) * kFrame, 0, kFrame});
    const std::uint64_t changes = scene.host().time_changes();
    for (const MotionSamples::Need& need : needs) {
        samples.prepare(need.node);
        for (INode* const node : {need.node, need.parent}) {
            const Matrix3* const of_node = samples.of(node);
            ASSERT_NE(of_node, nullptr);
            EXPECT_EQ(of_node[7].GetTrans().x, node->GetNodeTM(7 * kFrame).GetTrans().x);
        }
    }
    // Two nodes and the parent of the second fit: 4 batches. The comparison sets the time as well.
    EXPECT_LE(scene.host().time_changes() - changes, 4u * kFrames + needs.size());
    samples.prepare(scene.host().GetRootNode());
    EXPECT_EQ(samples.of(&nodes[6].node()), nullptr) << "of the first batch";
}

}  // namespace
