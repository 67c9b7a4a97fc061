#include <algorithm>
#include <limits>
#include <memory>
#include <numeric>
#include <string>
#include <vector>

#include <gmock/gmock.h>

#include "tests/import/imported_model.h"
#include "tests/import/made_model.h"
#include "tools/vsqexport/import/deforming_parts.h"

using namespace memhost;
using namespace vsqexport;
using testing::HasSubstr;

namespace {

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
