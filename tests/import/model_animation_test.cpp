#include <algorithm>
#include <cmath>
#include <filesystem>
#include <limits>
#include <string>
#include <vector>

#include <assimp/scene.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "standins/host/import/animation_import.h"
#include "standins/host/import/model_import.h"
#include "standins/host/memory/host_text.h"
#include "tests/import/assimp_motion.h"
#include "tests/import/exported_tracks.h"
#include "tests/support/exported_scene.h"

using namespace memhost;
using testing::HasSubstr;

namespace {

const std::string kModels = VSQ_TEST_MODELS "/";

#define SKIP_WITHOUT_MODELS()                                              \
    if (!std::filesystem::is_directory(VSQ_TEST_MODELS)) {                 \
        GTEST_SKIP() << "assimp-testmodels is not at " << VSQ_TEST_MODELS; \
    }

aiMatrix4x4 column_vectors(const ExportedTrack::Matrix& rows) {
    aiMatrix4x4 matrix;
    std::transform(rows.begin(), rows.end(), matrix[0],
                   [](double number) { return static_cast<float>(number); });
    return matrix.Transpose();
}

struct AnimatedModel {
    const char* file;
    double ticks_per_second;
    int last_frame;
    size_t tracks;  // at least, of nodes with something to show
};

// Assimp's up is Y in all of them.
TEST(ModelAnimation, MovesNodesAsAssimpHasThem) {
    SKIP_WITHOUT_MODELS();
    const AnimatedModel models[] = {
        {"3DS/RotatingCube.3DS", 30, 181, 1},
        {"ASE/anim2.ASE", 4800, 100, 1},
        {"ASE/MotionCaptureROM.ase", 4800, 1355, 20},
        {"Collada/anims_with_full_rotations_between_keys.DAE", 1000, 359, 64},
        {"Collada/box_nested_animation.dae", 1000, 50, 0},
        {"FBX/animation_with_skeleton.fbx", 24, 25, 0},
        {"FBX/huesitos.fbx", 25, 47, 0},
        {"LWS/move_xz_linear.lws", 30, 89, 1},
        {"X/BCN_Epileptic.X", 4800, 99, 0},
        {"glTF2/simple_skin/simple_skin.gltf", 1000, 165, 0},
    };
    for (const AnimatedModel& model : models) {
        SCOPED_TRACE(model.file);
        const AssimpMotion expected(kModels + model.file, model.ticks_per_second);
        SceneBuilder scene;
        import_model(kModels + model.file, scene);
        const TimeValue end = scene.host().GetAnimRange().End();
        EXPECT_EQ(end, model.last_frame * 160);

        for (unsigned i = 0; i < expected.animation().mNumChannels; ++i) {
            const aiNode* node =
                expected.find(expected.animation().mChannels[i]->mNodeName.C_Str());
            const auto moved = std::find_if(
                scene.host().nodes().begin(), scene.host().nodes().end(), [&](const auto& other) {
                    return utf8_from_units(other->GetName()) == node->mName.C_Str();
                });
            ASSERT_NE(moved, scene.host().nodes().end()) << node->mName.C_Str();
            for (const TimeValue t : {-500, 0, 1237, end / 3, end, end + 999}) {
                const aiMatrix4x4 world = expected.world(*node, t);
                for (const aiVector3D& p : {aiVector3D(0, 0, 0), aiVector3D(1, 2, 3)}) {
                    const aiVector3D q = world * p;
                    const Point3 r = Point3(p.x, p.y, p.z) * (*moved)->GetNodeTM(t);
                    const float off = std::hypot(r.x - q.x, std::hypot(r.y + q.z, r.z - q.y));
                    EXPECT_LT(off, 2e-4f * (1 + q.Length())) << node->mName.C_Str() << " at " << t;
                }
            }
        }

        Qor::Options options(&scene.host());
        options.Deformable = false;
        const std::vector<ExportedTrack> tracks = tracks_of(exported(scene, options));
        EXPECT_GE(tracks.size(), model.tracks);
        for (const ExportedTrack& track : tracks) {
            const aiNode* node = expected.find(track.node);
            ASSERT_NE(node, nullptr) << track.node;
            const aiMatrix4x4 base = column_vectors(track.base);
            for (size_t k = 0; k < track.changes.size(); ++k) {
                const TimeValue t = track.timestamps[k] / 33 * 160;
                EXPECT_TRUE((base * column_vectors(track.changes[k]))
                                .Equal(expected.local(*node, t), 0.01f))
                    << track.node << " at " << t;
            }
        }
    }
}

// A root with the nodes "A" and "B", and an animation whose channels a test fills.
class SmallModel {
public:
    explicit SmallModel(unsigned channels) {
        scene_.mRootNode = new aiNode("Root");
        for (const char* name : {"A", "B"}) {
            aiNode* child = new aiNode(name);
            scene_.mRootNode->addChildren(1, &child);
        }
        scene_.mAnimations = new aiAnimation*[scene_.mNumAnimations = 1];
        scene_.mAnimations[0] = new aiAnimation;
        scene_.mAnimations[0]->mNumChannels = channels;
        scene_.mAnimations[0]->mChannels = new aiNodeAnim*[channels];
        scene_.mAnimations[0]->mTicksPerSecond = 1;
    }

    // Positions along x; the other components have no keys.
    aiNodeAnim& add(const char* node, const std::vector<std::pair<double, float>>& keys) {
        auto* channel = new aiNodeAnim;
        scene_.mAnimations[0]->mChannels[next_++] = channel;
        channel->mNodeName = node;
        channel->mPositionKeys = new aiVectorKey[keys.size()];
        for (const auto& [time, x] : keys) {
            channel->mPositionKeys[channel->mNumPositionKeys++] = {time, {x, 0, 0}};
        }
        return *channel;
    }

    ModelAnimation animation() { return {scene_, NodeIndex(scene_), warnings_}; }
    const aiNode& node(unsigned i) const { return *scene_.mRootNode->mChildren[i]; }
    const std::vector<std::string>& warnings() const { return warnings_; }

private:
    aiScene scene_;
    unsigned next_ = 0;
    std::vector<std::string> warnings_;
};

float x_at(const ModelAnimation& animation, const aiNode& node, int seconds, Interval& valid) {
    const LocalTransform place = animation.place(node, Matrix3(), Matrix3());
    return place.at(seconds * TIME_TICKSPERSEC, valid).GetTrans().x;
}

TEST(ModelAnimation, GoesOnBeyondItsKeysAsTheChannelSays) {
    struct EndCase {
        aiAnimBehaviour behaviour;
        float before, behind;  // at -1 and 7 seconds, with keys from 0 to 4
    };
    const EndCase cases[] = {{aiAnimBehaviour_DEFAULT, 10, 30},
                             {aiAnimBehaviour_CONSTANT, 10, 30},
                             {aiAnimBehaviour_LINEAR, 9, 57},
                             {aiAnimBehaviour_REPEAT, 21, 21}};
    for (const EndCase& wanted : cases) {
        SmallModel model(1);
        aiNodeAnim& channel = model.add("A", {{4, 30}, {0, 10}, {2, 12}});  // out of order
        channel.mPreState = channel.mPostState = wanted.behaviour;
        const ModelAnimation animation = model.animation();
        Interval valid = FOREVER;
        EXPECT_FLOAT_EQ(x_at(animation, model.node(0), 3, valid), 21);
        EXPECT_EQ(valid.Start(), valid.End());
        EXPECT_FLOAT_EQ(x_at(animation, model.node(0), -1, valid), wanted.before);
        EXPECT_FLOAT_EQ(x_at(animation, model.node(0), 7, valid), wanted.behind);
    }
}

TEST(ModelAnimation, LeavesOutWhatCannotBeAndSaysSo) {
    constexpr double kNan = std::numeric_limits<double>::quiet_NaN();
    SmallModel model(6);
    model.add("A", {{-3, 1}, {kNan, 2}, {1e9, 3}});
    model.add("B", {{0, 5}, {7, 5}, {8, static_cast<float>(kNan)}});
    model.add("A", {{0, 9}});
    model.add("B", {});
    model.add("nobody", {{0, 1}});
    model.add("no one", {{0, 1}});
    const ModelAnimation animation = model.animation();
    EXPECT_THAT(model.warnings(),
                testing::UnorderedElementsAre(
                    HasSubstr("\"A\" is left out: the node has another"),
                    HasSubstr("\"B\" is left out: it has no keys"),
                    HasSubstr("\"nobody\" and 1 more are left out"), HasSubstr("2 hold something"),
                    HasSubstr("lasts 1e+09 seconds, the range only 3600")));
    Interval valid = FOREVER;
    EXPECT_EQ(x_at(animation, model.node(1), 3, valid), 5);
    EXPECT_EQ(valid.Start(), FOREVER.Start()) << "it doesn't move";
    SceneBuilder scene;
    scene.frames_per_second(60);
    animation.set_range(scene);
    EXPECT_EQ(scene.host().GetAnimRange().End(), 3600 * TIME_TICKSPERSEC);
}

TEST(ModelAnimation, SetsARangeOfWholeFramesOfTheScenesLength) {
    for (const auto& [end_seconds, fps, last_tick] : {std::tuple{0.99, 30, 4800},
                                                      {1.00001, 30, 4800},
                                                      {1.01, 30, 4960},
                                                      {1.01, 10, 5280},
                                                      {0.0, 30, 16000},
                                                      {-1.0, 30, 16000}}) {
        SmallModel model(1);
        model.add("A", {{-2, 0}, {end_seconds, 1}});
        SceneBuilder scene;
        scene.frames_per_second(fps);
        model.animation().set_range(scene);
        EXPECT_EQ(scene.host().GetAnimRange().End(), last_tick) << end_seconds << " " << fps;
    }
}

}  // namespace
