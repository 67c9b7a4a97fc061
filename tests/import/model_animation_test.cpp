#include <cmath>
#include <fstream>
#include <functional>
#include <limits>
#include <optional>
#include <string>
#include <tuple>
#include <vector>

#include <gmock/gmock.h>

#include "tests/import/assimp_motion.h"
#include "tests/import/imported_model.h"
#include "tests/import/made_model.h"
#include "tests/support/temporary_folder.h"
#include "tools/vsqexport/import/animation_choice.h"

using namespace memhost;
using namespace vsqexport;
using testing::HasSubstr;

namespace {

// Assimp has Y up in all of these models.
TEST(ModelAnimation, MovesNodesAsAssimpDoes) {
    SKIP_WITHOUT_MODELS();
    const std::tuple<const char*, double, int> models[] = {
        // file, ticks per second, last frame
        {"3DS/RotatingCube.3DS", 30, 181},
        {"ASE/anim2.ASE", 4800, 100},
        {"ASE/MotionCaptureROM.ase", 4800, 1355},
        {"Collada/anims_with_full_rotations_between_keys.DAE", 1000, 359},
        {"FBX/animation_with_skeleton.fbx", 24, 25},
        {"LWS/move_xz_linear.lws", 30, 89},
        {"X/BCN_Epileptic.X", 4800, 99},
        {"glTF2/simple_skin/simple_skin.gltf", 1000, 165},
    };
    for (const auto& [file, ticks_per_second, last_frame] : models) {
        SCOPED_TRACE(file);
        const AssimpMotion expected(kModels + file, ticks_per_second);
        ImportedModel scene(kModels + file);
        const TimeValue end = scene.host().GetAnimRange().End();
        EXPECT_EQ(end, last_frame * 160);

        for (unsigned i = 0; i < expected.animation().mNumChannels; ++i) {
            const std::string name = expected.animation().mChannels[i]->mNodeName.C_Str();
            INode& node = scene.find(name);
            for (const TimeValue t : {-500, 0, 1237, end / 3, end, end + 999}) {
                const aiMatrix4x4 world = expected.world(*expected.find(name), t);
                for (const aiVector3D& p : {aiVector3D(0, 0, 0), aiVector3D(1, 2, 3)}) {
                    const aiVector3D q = world * p;
                    const Point3 r = Point3(p.x, p.y, p.z) * node.GetNodeTM(t);
                    EXPECT_LT((r - Point3(q.x, -q.z, q.y)).Length(), 2e-4f * (1 + q.Length()))
                        << name << " at " << t;
                }
            }
        }
    }
}

float height_at(const ModelAnimation& animation, const aiNode& node, int seconds, Interval& valid) {
    const LocalTransform place = animation.place(node, Matrix3(), Matrix3());
    return place.at(seconds * TIME_TICKSPERSEC, valid).GetTrans().z;
}

// Many programs write an animation for each object, and others several takes of the same objects.
TEST(ModelAnimation, JoinsWhatMovesDifferentThings) {
    MadeModel model({"A", "B", "C"});
    model.move("A", {{0, 0}, {1, 10}});
    model.move("B", {{0, 3}, {9, 3}});  // rests
    model.add_animation("short take");
    model.move("A", {{0, 0}, {0.5, -7}});
    model.add_animation("B moves");
    model.move("B", {{0, 0}, {2, 20}});
    model.add_animation("rest");
    model.move("C", {{0, 0}, {30, 0}});
    model.add_animation("C moves");
    model.move("C", {{0, 0}, {4, 40}});
    Interval valid = FOREVER;
    const auto heights = [&model, &valid](const ModelAnimation& animation) {
        return std::vector<float>{height_at(animation, model.node(0), 1, valid),
                                  height_at(animation, model.node(1), 1, valid),
                                  height_at(animation, model.node(2), 1, valid)};
    };
    EXPECT_EQ(heights(model.animation()), (std::vector<float>{10, 10, 10}));
    EXPECT_THAT(texts_of(model.warnings),
                testing::ElementsAre("import-other-animations: animations that move the same as "
                                     "\"\", \"C moves\", \"B moves\" are left out: "
                                     "\"short take\" (0.5 s), \"rest\" (30 s)"));
    EXPECT_EQ(heights(model.animation({"short take", "C moves"})), (std::vector<float>{-7, 0, 10}));
    EXPECT_THROW(model.animation({"nothing"}), UnknownAnimation);
}

TEST(ModelAnimation, LeavesOutInvalidKeysAndChannelsWithWarnings) {
    constexpr float kNan = std::numeric_limits<float>::quiet_NaN();
    MadeModel model({"A", "B"});
    model.move("A", {{-3, 1}, {kNan, 2}, {1e9, 3}});
    model.move("B", {{0, 5}, {7, 5}, {8, kNan}});
    model.move("A", {{0, 9}});
    model.move("B", {});
    model.move("nobody", {{0, 1}});
    model.move("no one", {{0, 1}});
    const ModelAnimation animation = model.animation();
    EXPECT_THAT(
        texts_of(model.warnings),
        testing::UnorderedElementsAre(
            HasSubstr("import-motion: the motion of \"A\" is left out: the node"),
            HasSubstr("\"B\" is left out: it has no keys"),
            HasSubstr("\"nobody\" and 1 more are left out"),
            HasSubstr("import-keys: keys of its animation are left out: 2"),
            HasSubstr("import-long-animation: its animation lasts 1e+09 seconds, the range")));
    Interval valid = FOREVER;
    EXPECT_EQ(height_at(animation, model.node(1), 3, valid), 5);
    EXPECT_EQ(valid.Start(), FOREVER.Start()) << "it doesn't move";
    SceneBuilder scene;
    scene.frames_per_second(60);
    animation.set_range(scene);
    EXPECT_EQ(scene.host().GetAnimRange().End(), 3600 * TIME_TICKSPERSEC);
}

// The path of a glTF file whose node N has keys at these seconds. `values` are those of all keys.
std::string written_motion(const TemporaryFolder& folder, const std::string& path,
                           const std::string& interpolation, const std::vector<float>& seconds,
                           const std::vector<float>& values) {
    std::ofstream keys(folder / "keys.bin", std::ios::binary);
    for (const std::vector<float>* part : {&seconds, &values}) {
        keys.write(reinterpret_cast<const char*>(part->data()),
                   static_cast<std::streamsize>(part->size() * sizeof(float)));
    }
    const std::size_t components = path == "rotation" ? 4 : 3;
    const auto text = [](std::size_t number) { return std::to_string(number); };
    std::ofstream(folder / "m.gltf")
        << R"({"asset":{"version":"2.0"},"scene":0,"scenes":[{"nodes":[0]}],"nodes":[{"name":"N"}],
        "animations":[{"channels":[{"sampler":0,"target":{"node":0,"path":")"
        << path << R"("}}],"samplers":[{"input":0,"output":1,"interpolation":")" << interpolation
        << R"("}]}],"buffers":[{"uri":"keys.bin","byteLength":)"
        << 4 * (seconds.size() + values.size())
        << R"(}],"bufferViews":[{"buffer":0,"byteLength":)" + text(4 * seconds.size()) +
               R"(},{"buffer":0,"byteOffset":)" + text(4 * seconds.size()) + R"(,"byteLength":)" +
               text(4 * values.size()) +
               R"(}],"accessors":[{"bufferView":0,"componentType":5126,"type":"SCALAR","count":)" +
               text(seconds.size()) + R"(},{"bufferView":1,"componentType":5126,"type":"VEC)" +
               text(components) + R"(","count":)" + text(values.size() / components) + "}]}";
    return folder / "m.gltf";
}

TEST(ModelAnimation, FollowsTheInterpolationOfAGltfFile) {
    const float half = std::sqrt(0.5f);
    const std::vector<float> spline = {0, 0, 0, 0, 0,  0, 0, 4, 0,   // slopes before, value, behind
                                       0, 2, 0, 0, 10, 0, 0, 0, 0};  // at the second key
    const std::vector<float> turn = {0, 0, 0, 0, 0,    0, 0, 1,    0, 0, 0, 0,
                                     0, 0, 0, 0, half, 0, 0, half, 0, 0, 0, 0};
    const std::vector<float> rest = {0, 0, 0, 0, 5, 0, 0, 8, 0, 0, -8, 0, 0, 5, 0, 0, 0, 0};
    const struct {
        std::string path, interpolation;
        std::vector<float> values;
        double seconds;
        float expected;  // the height, or the angle around x in degrees
    } cases[] = {
        {"translation", "LINEAR", {0, 0, 0, 0, 10, 0}, 0.5, 5},
        {"translation", "STEP", {0, 0, 0, 0, 10, 0}, 0.99, 0},
        {"translation", "STEP", {0, 0, 0, 0, 10, 0}, 1, 10},
        {"translation", "CUBICSPLINE", spline, 0.5, 5.25f},
        {"translation", "CUBICSPLINE", spline, 2, 10},
        {"translation", "CUBICSPLINE", rest, 0.5, 7},
        {"rotation", "LINEAR", {0, 0, 0, 1, half, 0, 0, half}, 0.25, 22.5f},
        {"rotation", "STEP", {0, 0, 0, 1, half, 0, 0, half}, 0.25, 0},
        {"rotation", "CUBICSPLINE", turn, 0.25, 13.209f},
    };
    for (const auto& one : cases) {
        SCOPED_TRACE(one.path + " " + one.interpolation);
        const TemporaryFolder folder;
        ImportedModel scene(
            written_motion(folder, one.path, one.interpolation, {0, 1}, one.values));
        const auto ticks = static_cast<TimeValue>(one.seconds * TIME_TICKSPERSEC);
        const Matrix3 world = scene.find("N").GetNodeTM(ticks) * rotation_x(-90);
        const float value = one.path == "rotation"
                                ? std::atan2(world.GetRow(1).z, world.GetRow(1).y) * 57.29578f
                                : world.GetTrans().y;
        EXPECT_NEAR(value, one.expected, 1e-3f);
    }
}

TEST(ModelAnimation, RunsAtTheRateOfTheFile) {
    SKIP_WITHOUT_MODELS();
    const TemporaryFolder folder;
    const auto keys = [&folder](float first, float second) {
        return written_motion(folder, "translation", "LINEAR", {first, second}, {0, 0, 0, 1, 1, 1});
    };
    std::ofstream(folder / "m.dae") << R"(<COLLADA version="1.4.1"><scene><extra><technique>
        <frame_rate>25</frame_rate></technique></extra></scene><library_visual_scenes>
        <visual_scene id="s"><node name="N"/></visual_scene></library_visual_scenes><scene>
        <instance_visual_scene url="#s"/></scene></COLLADA>)";
    const struct {
        std::string what;
        std::function<std::string()> path;
        std::optional<double> wanted;
        int ticks_per_frame;
        std::size_t warnings;
    } cases[] = {
        {"24", [&] { return keys(5 / 24.0f, 1); }, {}, 200, 0},
        {"60", [&] { return keys(1 / 60.0f, 7 / 60.0f); }, {}, 80, 0},
        {"whole seconds", [&] { return keys(1, 3); }, {}, 160, 0},
        {"nothing fits", [&] { return keys(0.01234f, 3); }, {}, 160, 0},
        {"29.97", [&] { return keys(1001 / 30000.0f, 700.7f / 30); }, {}, 160, 1},
        {"the user's", [&] { return keys(5 / 24.0f, 1); }, 48, 100, 0},
        {"COLLADA", [&] { return folder / "m.dae"; }, {}, 192, 0},
        {"FBX", [&] { return kModels + "FBX/animation_with_skeleton.fbx"; }, {}, 200, 0},
        {"FBX 25", [&] { return kModels + "FBX/huesitos.fbx"; }, {}, 192, 0},
    };
    for (const auto& one : cases) {
        ImportOptions options;
        options.frames_per_second = one.wanted;
        ImportedModel scene(one.path(), options);
        EXPECT_EQ(scene.host().ticks_per_frame(), one.ticks_per_frame) << one.what;
        EXPECT_EQ(
            testing::PrintToString(scene.warnings).find("import-frame-rate") != std::string::npos,
            one.warnings > 0)
            << one.what;
    }
}

}  // namespace
