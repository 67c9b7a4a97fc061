#include <algorithm>
#include <iterator>
#include <limits>
#include <memory>
#include <numeric>
#include <string>
#include <tuple>
#include <vector>

#include <gmock/gmock.h>

#include "tests/import/assimp_motion.h"
#include "tests/import/imported_model.h"
#include "tests/import/made_model.h"
#include "tests/support/exported_libraries.h"
#include "tests/support/exported_scene.h"
#include "tools/vsqexport/import/deforming_parts.h"

using namespace memhost;
using namespace vsqexport;
using testing::HasSubstr;

namespace {

constexpr int kTicksPerFrame = 160;

// The shape of a mesh at a time, computed with assimp's own types, in the space of its node.
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

// Compares corner by corner, at the first, the last and some frames in between.
TEST(DeformingModel, AgreesWithAssimp) {
    SKIP_WITHOUT_MODELS();
    const std::tuple<std::string, double, std::string, const char*, size_t> models[] = {
        // file, ticks per second, node, its material, frames
        {"glTF2/simple_skin/simple_skin.gltf", 1000, "nodes[0]", "Material 1", 166},
        {"glTF2/glTF-Sample-Models/AnimatedMorphCube-glTF/AnimatedMorphCube.gltf", 1000,
         "AnimatedMorphCube", "Material", 127},
        {"FBX/animation_with_skeleton.fbx", 24, "Cube", "Material", 26},
        {"FBX/huesitos.fbx", 25, "Cylinder", "Material.001", 48},
        {"Collada/box_nested_animation.dae", 1000, "Cube", "Material", 51},
        {"X/BCN_Epileptic.X", 4800, "Head", "Material 1", 100},
        {"X/BCN_Epileptic.X", 4800, "Legs", "Material 1", 100},
        {"BVH/01_01.bvh", 1 / 0.0083333, "Hips", "SkeletonMaterial", 689},
    };
    for (const auto& [file, ticks_per_second, node_name, material, frames] : models) {
        SCOPED_TRACE(file + " " + node_name);
        const ExportedLibraries libraries;
        ImportedModel scene(kModels + file);
        exported(scene);
        const std::string library_name = node_name + "_" + material + ".qorT";
        const LibraryArrays library(libraries.animations().u8string() + "/3ds max/" + library_name);
        ASSERT_EQ(library.frames.size(), frames);

        const AssimpMotion motion(kModels + file, ticks_per_second);
        const aiNode& node = *motion.find(node_name);
        const aiMesh& mesh = *motion.model().mMeshes[node.mMeshes[0]];
        std::vector<unsigned> corners;
        for (unsigned f = 0; f < mesh.mNumFaces; ++f) {
            const aiFace& face = mesh.mFaces[f];
            corners.insert(corners.end(), face.mIndices,
                           face.mIndices + (face.mNumIndices == 3 ? 3 : 0));
        }
        ASSERT_EQ(corners.size(), library.triangles.size());
        for (size_t part = 0; part <= 4; ++part) {
            const size_t f = (frames - 1) * part / 4;
            const AssimpShape shape(motion, node, mesh, static_cast<TimeValue>(f) * kTicksPerFrame);
            const auto& ranges = library.frames[f].ranges;
            for (size_t corner = 0; corner < corners.size(); ++corner) {
                const unsigned v = corners[corner];
                const size_t output = library.triangles[corner];
                const auto [x, y, z] = library.vertices[ranges[2] + output];
                ASSERT_LT((aiVector3D(x, y, z) - shape.positions[v]).Length(),
                          2e-5f * (1 + shape.positions[v].Length()))
                    << "frame " << f << " vertex " << v;
                if (!shape.normals.empty() && shape.normals[v].Length() > 0) {
                    const auto [nx, ny, nz] = library.normals[ranges[4] + output];
                    aiVector3D normal = shape.normals[v];
                    ASSERT_LT((aiVector3D(nx, ny, nz) - normal.Normalize()).Length(), 2e-3f)
                        << "frame " << f << " vertex " << v;
                }
            }
        }
    }
}

// A square of two triangles, to which the test adds invalid bones and targets. The node "A" rises
// by 10 in the first of two seconds; "B" stays.
struct Square : MadeModel {
    Square() : MadeModel({"A", "B", "Square"}), mesh(append(mMeshes, mNumMeshes)) {
        // The corners 3 and 5 coincide with 0 and 2.
        mesh.mVertices = new aiVector3D[mesh.mNumVertices = 6]{{0, 0, 0}, {1, 0, 0}, {1, 1, 0},
                                                               {0, 0, 0}, {0, 1, 0}, {1, 1, 0}};
        mesh.mFaces = new aiFace[mesh.mNumFaces = 2];
        for (unsigned f = 0; f < 2; ++f) {
            mesh.mFaces[f].mIndices = new unsigned[mesh.mFaces[f].mNumIndices = 3];
            std::iota(mesh.mFaces[f].mIndices, mesh.mFaces[f].mIndices + 3, 3 * f);
        }
        move("A", {{0, 0}, {1, 10}, {2, 10}});
    }

    aiBone& bone(const char* name, const std::vector<aiVertexWeight>& weights) {
        aiBone& bone = append(mesh.mBones, mesh.mNumBones);
        bone.mName = name;
        bone.mNumWeights = static_cast<unsigned>(weights.size());
        bone.mWeights = new aiVertexWeight[weights.size()];
        std::copy(weights.begin(), weights.end(), bone.mWeights);
        return bone;
    }

    void target(const std::vector<aiVector3D>& vertices, float weight) {
        aiAnimMesh& target = append(mesh.mAnimMeshes, mesh.mNumAnimMeshes);
        target.mNumVertices = static_cast<unsigned>(vertices.size());
        target.mVertices = new aiVector3D[vertices.size()];
        std::copy(vertices.begin(), vertices.end(), target.mVertices);
        target.mWeight = weight;
    }

    // The heights of the vertices after a second, and of the ends of their normals if there are
    // any.
    std::vector<float> heights() {
        warnings.clear();
        const NodeIndex nodes(*this);
        const ModelAnimation animation(*this, nodes, warnings);
        const DeformingParts parts(*this, nodes, animation, warnings);
        Mesh at_rest;
        std::shared_ptr<const MeshDeformation> deformation;
        EXPECT_TRUE(parts.join(node(2), {{&mesh, 0}}, at_rest, deformation));
        Mesh moved(at_rest);
        deformation->apply(TIME_TICKSPERSEC, at_rest, moved);
        std::vector<float> result;
        for (int v = 0; v < moved.numVerts; ++v) {
            result.push_back(moved.verts[v].z);
        }
        const MeshNormalSpec* const normals = moved.GetSpecifiedNormals();
        for (int n = 0; normals != nullptr && n < normals->GetNumNormals(); ++n) {
            result.push_back(normals->Normal(n).z);
        }
        return result;
    }

    aiMesh& mesh;
};

// Neither the node of the mesh nor the bone has an inverse.
TEST(DeformingParts, CountAFlatMatrixAsTheIdentityWhereItIsInverted) {
    const auto heights = [](const char* rules) {
        SceneBuilder scene(rules);
        Square square;
        square.mRootNode->mChildren[2]->mTransformation.c3 = 0;
        square.bone("A", {{0, 1}, {1, 1}}).mOffsetMatrix.c3 = 0;
        square.mesh.mNormals = new aiVector3D[6];
        std::fill_n(square.mesh.mNormals, 6, aiVector3D(0, 0, 1));
        return square.heights();
    };
    const std::vector<float> wanted = heights("");
    EXPECT_EQ(wanted.front(), 10);
    EXPECT_EQ(wanted.back(), 1);
    EXPECT_EQ(heights("singular-inverse-nan"), wanted);
    EXPECT_EQ(heights("singular-inverse-zero"), wanted);
}

TEST(DeformingParts, LeaveOutInvalidBonesAndTargetsWithWarnings) {
    constexpr float kNan = std::numeric_limits<float>::quiet_NaN();
    Square square;
    square.bone("A", {{0, 1}, {6, 1}, {1, kNan}, {2, -1}, {0xFFFFFFFF, 1}});
    square.bone("nobody", {{1, 1}});
    square.bone("B", {});
    square.bone("B", {{1, 1}}).mOffsetMatrix.a1 = kNan;
    square.target({{}, {}}, 1);
    EXPECT_EQ(square.heights(), (std::vector<float>{10, 0, 0, 0, 0}));
    EXPECT_THAT(texts_of(square.warnings),
                testing::UnorderedElementsAre(
                    HasSubstr("import-bone: the bone \"nobody\" is left out: no"),
                    HasSubstr("bone \"B\" is left out: its matrix"),
                    HasSubstr("import-morph-target: the morph target of"),
                    HasSubstr("import-weights: weights of its bones are left out: 4")));
}

}  // namespace
