#include <limits>
#include <string>
#include <tuple>
#include <vector>

#include <gmock/gmock.h>

#include "tests/import/assimp_motion.h"
#include "tests/import/imported_model.h"
#include "tests/import/made_model.h"
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

}  // namespace
