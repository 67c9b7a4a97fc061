#include <algorithm>
#include <filesystem>
#include <iterator>
#include <limits>
#include <memory>
#include <numeric>
#include <string>
#include <utility>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "standins/host/import/deforming_parts.h"
#include "standins/host/import/model_import.h"
#include "tests/import/assimp_motion.h"
#include "tests/support/exported_libraries.h"
#include "tests/support/exported_scene.h"

using namespace memhost;
using testing::HasSubstr;

namespace {

constexpr int kTicksPerFrame = 160;

// A mesh as assimp's own types have it at a time, in the space of its node.
struct AssimpShape {
    AssimpShape(const AssimpMotion& motion, const aiNode& node, const aiMesh& mesh, TimeValue t)
        : positions(mesh.mVertices, mesh.mVertices + mesh.mNumVertices),
          normals(mesh.mNormals, mesh.mNormals + (mesh.HasNormals() ? mesh.mNumVertices : 0)) {
        const std::vector<float> weights = motion.morph_weights(node, mesh, t);
        for (unsigned i = 0; i < mesh.mNumAnimMeshes; ++i) {
            const aiAnimMesh& target = *mesh.mAnimMeshes[i];
            for (unsigned v = 0; v < mesh.mNumVertices; ++v) {
                positions[v] += (target.mVertices[v] - mesh.mVertices[v]) * weights[i];
                if (target.HasNormals()) {
                    normals[v] += (target.mNormals[v] - mesh.mNormals[v]) * weights[i];
                }
            }
        }
        if (mesh.HasBones()) {
            aiMatrix4x4 node_from_world = motion.world(node, t);
            node_from_world.Inverse();
            std::vector<aiVector3D> moved(mesh.mNumVertices), turned(normals.size());
            std::vector<float> sums(mesh.mNumVertices);
            for (unsigned b = 0; b < mesh.mNumBones; ++b) {
                const aiBone& bone = *mesh.mBones[b];
                const aiMatrix4x4 matrix = node_from_world *
                                           motion.world(*motion.find(bone.mName.C_Str()), t) *
                                           bone.mOffsetMatrix;
                aiMatrix3x3 normal_matrix(matrix);
                normal_matrix.Inverse().Transpose();
                for (unsigned i = 0; i < bone.mNumWeights; ++i) {
                    const auto [v, weight] = bone.mWeights[i];
                    moved[v] += matrix * positions[v] * weight;
                    sums[v] += weight;
                    if (!normals.empty()) {
                        turned[v] += normal_matrix * normals[v] * weight;
                    }
                }
            }
            for (unsigned v = 0; v < mesh.mNumVertices; ++v) {
                positions[v] = sums[v] > 0 ? moved[v] / sums[v] : positions[v];
            }
            normals = turned;
        }
    }

    std::vector<aiVector3D> positions;
    std::vector<aiVector3D> normals;
};

struct DeformingModel {
    const char* file;
    double ticks_per_second;
    const char* node;
    const char* library;
    size_t frames;
};

// Corner by corner, at the first, the last and some frames in between.
TEST(DeformingModel, IsExportedAsAssimpHasIt) {
    if (!std::filesystem::is_directory(VSQ_TEST_MODELS)) {
        GTEST_SKIP() << "assimp-testmodels is not at " << VSQ_TEST_MODELS;
    }
    const DeformingModel models[] = {
        {"glTF2/simple_skin/simple_skin.gltf", 1000, "nodes[0]", "nodes[0]_Material 1.qorT", 166},
        {"glTF2/glTF-Sample-Models/AnimatedMorphCube-glTF/AnimatedMorphCube.gltf", 1000,
         "AnimatedMorphCube", "AnimatedMorphCube_Material.qorT", 127},
        {"FBX/animation_with_skeleton.fbx", 24, "Cube", "Cube_Material.qorT", 26},
        {"FBX/huesitos.fbx", 25, "Cylinder", "Cylinder_Material.001.qorT", 48},
        {"Collada/box_nested_animation.dae", 1000, "Cube", "Cube_Material.qorT", 51},
        {"X/BCN_Epileptic.X", 4800, "Head", "Head_Material 1.qorT", 100},
        {"X/BCN_Epileptic.X", 4800, "Legs", "Legs_Material 1.qorT", 100},
        {"BVH/01_01.bvh", 1 / 0.0083333, "Hips", "Hips_SkeletonMaterial.qorT", 689},
    };
    for (const DeformingModel& wanted : models) {
        SCOPED_TRACE(std::string(wanted.file) + " " + wanted.node);
        const ExportedLibraries libraries;
        const std::string path = VSQ_TEST_MODELS + std::string("/") + wanted.file;
        SceneBuilder scene;
        import_model(path, scene);
        exported(scene);
        const LibraryArrays library(
            (libraries.animations() / "3ds max" / wanted.library).u8string());
        ASSERT_EQ(library.frames.size(), wanted.frames);

        const AssimpMotion motion(path, wanted.ticks_per_second);
        const aiNode& node = *motion.find(wanted.node);
        const aiMesh& mesh = *motion.model().mMeshes[node.mMeshes[0]];
        for (size_t f = 0; f < wanted.frames; f += std::max<size_t>(1, (wanted.frames - 1) / 4)) {
            const AssimpShape shape(motion, node, mesh, static_cast<TimeValue>(f) * kTicksPerFrame);
            size_t corner = 0;
            for (unsigned face = 0; face < mesh.mNumFaces; ++face) {
                for (unsigned i = 0; mesh.mFaces[face].mNumIndices == 3 && i < 3; ++i, ++corner) {
                    const unsigned v = mesh.mFaces[face].mIndices[i];
                    ASSERT_LT(corner, library.triangles.size());
                    const size_t output = library.triangles[corner];
                    const auto [x, y, z] = library.vertices[library.frames[f].ranges[2] + output];
                    ASSERT_LT((aiVector3D(x, y, z) - shape.positions[v]).Length(),
                              2e-5f * (1 + shape.positions[v].Length()))
                        << "frame " << f << " vertex " << v;
                    if (!shape.normals.empty() && shape.normals[v].Length() > 0) {
                        const auto [nx, ny, nz] =
                            library.normals[library.frames[f].ranges[4] + output];
                        aiVector3D normal = shape.normals[v];
                        ASSERT_LT((aiVector3D(nx, ny, nz) - normal.Normalize()).Length(), 2e-3f)
                            << "frame " << f << " vertex " << v;
                    }
                }
            }
            EXPECT_EQ(corner, library.triangles.size());
        }
    }
}

// A square of two triangles on the bones "A" and "B", which the test breaks. "A" rises by 10 in the
// first of two seconds; "B" stays.
class Square {
public:
    Square() {
        model_.mRootNode = new aiNode("Root");
        for (const char* name : {"A", "B", "Square", "Square too"}) {
            aiNode* child = new aiNode(name);
            model_.mRootNode->addChildren(1, &child);
        }
        model_.mRootNode->mChildren[3]->mTransformation.c4 = 3;
        model_.mMeshes = new aiMesh* [model_.mNumMeshes = 1] { new aiMesh };
        mesh().mVertices = new aiVector3D[mesh().mNumVertices = 6];
        mesh().mFaces = new aiFace[mesh().mNumFaces = 2];
        // The corners 3 and 5 lie on 0 and 2.
        const aiVector3D corners[] = {{0, 0, 0}, {1, 0, 0}, {1, 1, 0},
                                      {0, 0, 0}, {0, 1, 0}, {1, 1, 0}};
        std::copy(std::begin(corners), std::end(corners), mesh().mVertices);
        for (unsigned f = 0; f < 2; ++f) {
            mesh().mFaces[f].mIndices = new unsigned[mesh().mFaces[f].mNumIndices = 3];
            std::iota(mesh().mFaces[f].mIndices, mesh().mFaces[f].mIndices + 3, 3 * f);
        }
        model_.mAnimations = new aiAnimation* [model_.mNumAnimations = 1] { new aiAnimation };
        aiAnimation& animation = *model_.mAnimations[0];
        animation.mTicksPerSecond = 1;
        animation.mChannels = new aiNodeAnim* [animation.mNumChannels = 1] { new aiNodeAnim };
        animation.mChannels[0]->mNodeName = "A";
        animation.mChannels[0]->mPositionKeys =
            new aiVectorKey[3]{{0, {0, 0, 0}}, {1, {0, 0, 10}}, {2, {0, 0, 10}}};
        animation.mChannels[0]->mNumPositionKeys = 3;
    }

    aiMesh& mesh() { return *model_.mMeshes[0]; }

    Square& bone(const char* name, const std::vector<aiVertexWeight>& weights) {
        auto* bone = new aiBone;
        bone->mName = name;
        bone->mWeights =
            new aiVertexWeight[bone->mNumWeights = static_cast<unsigned>(weights.size())];
        std::copy(weights.begin(), weights.end(), bone->mWeights);
        aiBone** bones = new aiBone*[mesh().mNumBones + 1];
        std::copy_n(mesh().mBones, mesh().mNumBones, bones);
        bones[mesh().mNumBones++] = bone;
        delete[] mesh().mBones;
        mesh().mBones = bones;
        return *this;
    }

    // Heights of the vertices at a time, in the space of a node that shows them.
    std::vector<float> heights(int seconds, unsigned node = 2) {
        warnings_.clear();
        const NodeIndex nodes(model_);
        const ModelAnimation animation(model_, nodes, warnings_);
        const DeformingParts parts(model_, nodes, animation, warnings_);
        Mesh at_rest;
        EXPECT_TRUE(
            parts.join(*model_.mRootNode->mChildren[node], {{&mesh(), 0}}, at_rest, deformation_));
        Mesh moved(at_rest);
        deformation_->apply(seconds * TIME_TICKSPERSEC, at_rest, moved);
        std::vector<float> result;
        for (int v = 0; v < moved.numVerts; ++v) {
            result.push_back(moved.verts[v].z);
        }
        return result;
    }
    const MeshDeformation& deformation() const { return *deformation_; }
    const std::vector<std::string>& warnings() const { return warnings_; }

private:
    aiScene model_;
    std::vector<std::string> warnings_;
    std::shared_ptr<const MeshDeformation> deformation_;
};

TEST(DeformingParts, ApartOnlyWhereTheyMoveApart) {
    Square square;
    square.bone("A", {{0, 3}, {3, 0.5f}, {2, 1}, {4, 0.5f}});  // of 0 and 3 only 0 is all A's
    square.bone("B", {{3, 0.5f}, {4, 1.5f}, {5, 1}});
    const auto by_corner = square.heights(1);  // 0, 1, 2, 3, 4, 5
    EXPECT_EQ(by_corner, (std::vector<float>{10, 0, 10, 5, 2.5f, 0}));
    EXPECT_EQ(square.warnings(), std::vector<std::string>());

    Square together;
    together.bone("A", {{0, 1}, {2, 0.5f}, {3, 1}, {5, 1}}).bone("B", {{2, 0.5f}, {5, 1}});
    EXPECT_EQ(together.heights(1), (std::vector<float>{10, 0, 5, 0})) << "what moves alike is one";
    EXPECT_EQ(together.heights(1, 3), (std::vector<float>{7, 0, 2, 0})) << "in a higher node";
}

TEST(DeformingParts, RestOnTheWayToTargets) {
    Square square;
    square.bone("A", {{1, 1}});
    square.mesh().mAnimMeshes =
        new aiAnimMesh* [square.mesh().mNumAnimMeshes = 1] { new aiAnimMesh };
    square.mesh().mAnimMeshes[0]->mVertices = new aiVector3D[6];
    square.mesh().mAnimMeshes[0]->mVertices[1] = {1, 0, 8};
    square.mesh().mAnimMeshes[0]->mNumVertices = 6;
    square.mesh().mAnimMeshes[0]->mWeight = 0.25f;
    EXPECT_EQ(square.heights(1)[1], 12) << "first the target, then the bone";
}

TEST(DeformingParts, TellHowLongTheyRest) {
    Square square;
    square.bone("A", {{0, 1}});
    square.heights(0);
    constexpr int kSecond = TIME_TICKSPERSEC;
    const std::pair<int, Interval> cases[] = {{-5, {TIME_NegInfinity, 0}},
                                              {kSecond / 2, {kSecond / 2, kSecond / 2}},
                                              {kSecond, {kSecond, TIME_PosInfinity}},
                                              {3 * kSecond, {kSecond, TIME_PosInfinity}}};
    for (const auto& [t, wanted] : cases) {
        const Interval valid = square.deformation().validity(t);
        EXPECT_EQ(valid.Start(), wanted.Start()) << t;
        EXPECT_EQ(valid.End(), wanted.End()) << t;
    }
    EXPECT_FALSE(square.deformation().is_still());
    Square still;
    still.bone("B", {{0, 1}}).heights(0);
    EXPECT_TRUE(still.deformation().is_still());
}

TEST(DeformingParts, LeaveOutWhatIsBrokenAndSaySo) {
    constexpr float kNan = std::numeric_limits<float>::quiet_NaN();
    Square square;
    square.bone("A", {{0, 1}, {6, 1}, {1, kNan}, {2, -1}, {0xFFFFFFFF, 1}});
    square.bone("nobody", {{1, 1}}).bone("B", {}).bone("B", {{1, 1}});
    square.mesh().mBones[3]->mOffsetMatrix.a1 = kNan;
    square.mesh().mAnimMeshes =
        new aiAnimMesh* [square.mesh().mNumAnimMeshes = 1] { new aiAnimMesh };
    square.mesh().mAnimMeshes[0]->mVertices = new aiVector3D[2];
    square.mesh().mAnimMeshes[0]->mNumVertices = 2;
    square.mesh().mAnimMeshes[0]->mWeight = 1;
    EXPECT_EQ(square.heights(1), (std::vector<float>{10, 0, 0, 0, 0}));
    EXPECT_THAT(square.warnings(),
                testing::UnorderedElementsAre(HasSubstr("bone \"nobody\" is left out: no node"),
                                              HasSubstr("bone \"B\" is left out: its place"),
                                              HasSubstr("it has other vertices than its mesh"),
                                              HasSubstr("left out: 4 are no weights")));
}

}  // namespace
