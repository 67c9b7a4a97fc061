#include <gtest/gtest.h>

#include "tests/import/assimp_motion.h"
#include "tests/import/imported_model.h"

namespace {

// A corner of a triangle, in world space with assimp's axes. What is absent is zero.
struct Corner {
    aiVector3D position, normal, uv;
};
using Corners = std::vector<Corner>;

// Moves the vertices of a node's mesh to world space. Those with bones follow only these.
void place(Corners& vertices, const AssimpMotion& motion, const aiNode& node, const aiMesh& mesh,
           TimeValue t) {
    Corners blended(vertices.size());
    std::vector<float> sums(vertices.size());
    const auto blend = [&](unsigned v, const aiMatrix4x4& matrix, float weight) {
        const aiMatrix3x3 normal_matrix = aiMatrix3x3(matrix).Inverse().Transpose();
        blended[v].position += matrix * vertices[v].position * weight;
        blended[v].normal += normal_matrix * vertices[v].normal * weight;
        sums[v] += weight;
    };
    for (unsigned b = 0; b < mesh.mNumBones; ++b) {
        const aiBone& bone = *mesh.mBones[b];
        const aiMatrix4x4 matrix =
            motion.world(*motion.find(bone.mName.C_Str()), t) * bone.mOffsetMatrix;
        for (unsigned i = 0; i < bone.mNumWeights; ++i) {
            blend(bone.mWeights[i].mVertexId, matrix, bone.mWeights[i].mWeight);
        }
    }
    const aiMatrix4x4 world = motion.world(node, t);
    for (unsigned v = 0; v < vertices.size(); ++v) {
        if (sums[v] == 0) {
            blend(v, world, 1);
        }
        vertices[v].position = blended[v].position / sums[v];
        vertices[v].normal = blended[v].normal;
    }
}

// Appends the corners of a node and its children, computed with assimp's own types.
void add_expected(const AssimpMotion& motion, const aiNode& node, TimeValue t, Corners& corners) {
    for (unsigned m = 0; m < node.mNumMeshes; ++m) {
        const aiMesh& mesh = *motion.model().mMeshes[node.mMeshes[m]];
        const std::vector<float> weights = motion.morph_weights(node, mesh, t);
        Corners vertices(mesh.mNumVertices);
        for (unsigned v = 0; v < mesh.mNumVertices; ++v) {
            Corner& vertex = vertices[v];
            vertex.position = mesh.mVertices[v];
            vertex.normal = mesh.HasNormals() ? mesh.mNormals[v] : aiVector3D();
            vertex.uv = mesh.HasTextureCoords(0) ? mesh.mTextureCoords[0][v] : aiVector3D();
            for (unsigned i = 0; i < mesh.mNumAnimMeshes; ++i) {
                const aiAnimMesh& target = *mesh.mAnimMeshes[i];
                vertex.position += (target.mVertices[v] - mesh.mVertices[v]) * weights[i];
                if (target.HasNormals()) {
                    vertex.normal += (target.mNormals[v] - mesh.mNormals[v]) * weights[i];
                }
            }
        }
        place(vertices, motion, node, mesh, t);
        for (unsigned f = 0; f < mesh.mNumFaces; ++f) {
            const aiFace& face = mesh.mFaces[f];
            for (unsigned i = 0; face.mNumIndices == 3 && i < 3; ++i) {
                corners.push_back(vertices[face.mIndices[i]]);
            }
        }
    }
    for (unsigned i = 0; i < node.mNumChildren; ++i) {
        add_expected(motion, *node.mChildren[i], t, corners);
    }
}

aiVector3D with_assimps_axes(const Point3& p) {
    return {p.x, p.z, -p.y};
}

// Appends the corners of the same nodes in the host.
void add_imported(INode& node, TimeValue t, Corners& corners) {
    const Matrix3 world = node.GetObjTMAfterWSM(t);
    const Matrix3 inverse = Inverse(world);
    if (auto* object = dynamic_cast<TriObject*>(node.EvalWorldState(t).obj)) {
        Mesh& mesh = object->GetMesh();
        MeshNormalSpec* const normals = mesh.GetSpecifiedNormals();
        for (int f = 0; f < mesh.numFaces; ++f) {
            for (int i = 0; i < 3; ++i) {
                corners.push_back(
                    {with_assimps_axes(mesh.verts[mesh.faces[f].v[i]] * world), {}, {}});
                if (normals != nullptr && normals->GetNormalIndex(f, i) >= 0) {
                    const Point3 n = normals->Normal(normals->GetNormalIndex(f, i));
                    corners.back().normal = with_assimps_axes(
                        {n % inverse.GetRow(0), n % inverse.GetRow(1), n % inverse.GetRow(2)});
                }
                if (mesh.mapSupport(1)) {
                    const Point3 uv = mesh.mapVerts(1)[mesh.mapFaces(1)[f].t[i]];
                    corners.back().uv = {uv.x, uv.y, uv.z};
                }
            }
        }
    }
    for (int i = 0; i < node.NumberOfChildren(); ++i) {
        add_imported(*node.GetChildNode(i), t, corners);
    }
}

// Assimp leaves the axes of all of these models as they are, so Y is taken as up. Each is compared
// at the first frame, the last and some in between.
TEST(ModelMesh, AgreesWithAssimpInEveryCorner) {
    SKIP_WITHOUT_MODELS();
    const struct {
        const char* file;
        double ticks_per_second = 1;
        int last_frame = 0;
    } models[] = {
        {"3DS/cube_with_diffuse_texture.3DS"},
        {"3DS/fels.3ds"},
        {"ASE/ThreeCubesGreen.ASE"},
        {"Collada/duck.dae"},
        {"FBX/cubes_with_mirroring_and_pivot.fbx"},
        {"FBX/spider.fbx"},
        {"OBJ/spider.obj"},
        {"PLY/Wuson.ply"},
        {"STL/Spider_binary.stl"},
        {"glTF2/2CylinderEngine-glTF-Binary/2CylinderEngine.glb"},
        {"glTF2/BoxTextured-glTF/BoxTextured.gltf"},
        {"glTF2/simple_skin/simple_skin.gltf", 1000, 165},
        {"glTF2/glTF-Sample-Models/AnimatedMorphCube-glTF/AnimatedMorphCube.gltf", 1000, 126},
        {"FBX/animation_with_skeleton.fbx", 24, 20},
        {"FBX/huesitos.fbx", 25, 39},
        {"Collada/box_nested_animation.dae", 1000, 50},
        {"X/BCN_Epileptic.X", 4800, 99},
        {"BVH/01_01.bvh", 1 / 0.0083333, 688},
    };
    constexpr int kYUp = 1;
    for (const auto& model : models) {
        SCOPED_TRACE(model.file);
        ImportedModel scene(kModels + model.file, {{}, kYUp, 1, false});
        const AssimpMotion motion(kModels + model.file, model.ticks_per_second);
        bool deforms = false;  // whether it asks for a mesh file
        for (const auto& node : scene.host().nodes()) {
            Object* object = node->EvalWorldState(0).obj;
            deforms = deforms || (object && object->IsDeformable() &&
                                  object->ObjectValidity(0).End() < FOREVER.End());
        }
        EXPECT_EQ(deforms, model.last_frame > 0);
        if (deforms) {
            EXPECT_EQ(scene.host().GetAnimRange().End(),
                      model.last_frame * scene.host().ticks_per_frame());
        }
        for (int part = 0; part <= (model.last_frame > 0 ? 4 : 0); ++part) {
            const TimeValue t = model.last_frame * part / 4 * 160;
            Corners wanted, corners;
            add_expected(motion, *motion.model().mRootNode, t, wanted);
            add_imported(scene.host().root(), t, corners);
            ASSERT_EQ(corners.size(), wanted.size());
            for (size_t i = 0; i < wanted.size(); ++i) {
                Corner &got = corners[i], &want = wanted[i];
                ASSERT_LT((got.position - want.position).Length(),
                          2e-5f * (1 + want.position.Length()))
                    << "tick " << t << " corner " << i;
                ASSERT_EQ(got.uv, want.uv) << i;
                if (want.normal.Length() > 0) {
                    ASSERT_LT((got.normal.Normalize() - want.normal.Normalize()).Length(), 2e-3f)
                        << "tick " << t << " corner " << i;
                }
            }
        }
    }
}

}  // namespace
