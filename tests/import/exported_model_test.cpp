#include <algorithm>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include <assimp/postprocess.h>
#include <assimp/scene.h>
#include <assimp/Importer.hpp>

#include "tests/import/imported_model.h"
#include "tests/support/exported_libraries.h"
#include "tests/support/exported_meshes.h"
#include "tests/support/exported_scene.h"

namespace {

// A corner of a triangle, in world space with Z up.
struct Corner {
    aiVector3D position;
    std::optional<aiVector3D> normal;
    std::optional<aiVector3D> uv;
};

// Two corners of a face at the same position have one normal in the host.
bool shares_its_position(const std::vector<Corner>& corners, size_t i) {
    const size_t first = i - i % 3;
    return corners[i].position == corners[first + (i + 1) % 3].position ||
           corners[i].position == corners[first + (i + 2) % 3].position;
}

aiVector3D vector_of(const ExportedMesh::Vector& v) {
    return {static_cast<float>(v[0]), static_cast<float>(v[1]), static_cast<float>(v[2])};
}

std::vector<Corner> corners_of(const std::vector<ExportedMesh>& meshes) {
    std::vector<Corner> corners;
    for (const ExportedMesh& mesh : meshes) {
        if (mesh.normals.empty()) {
            continue;  // the mesh of a light
        }
        for (const std::int32_t vertex : mesh.triangles) {
            const size_t v = static_cast<size_t>(vertex);
            corners.push_back(
                {vector_of(mesh.vertices[v]), vector_of(mesh.normals[v]).Normalize(), {}});
            if (!mesh.uvs.empty()) {
                corners.back().uv = aiVector3D(mesh.uvs[v][0], mesh.uvs[v][1], 0);
            }
        }
    }
    return corners;
}

// The corners of a model, read from assimp in the order of an export: a node's children before the
// node itself, and a node's triangles grouped by material.
struct AssimpCorners {
    const aiScene& model;
    std::vector<Corner> corners;

    void add(const aiNode& node, const aiMatrix4x4& parent_world) {
        const aiMatrix4x4 world = parent_world * node.mTransformation;
        for (unsigned i = 0; i < node.mNumChildren; ++i) {
            add(*node.mChildren[i], world);
        }
        std::vector<const aiMesh*> meshes;
        for (unsigned i = 0; i < node.mNumMeshes; ++i) {
            meshes.push_back(model.mMeshes[node.mMeshes[i]]);
        }
        const bool has_uv = std::any_of(meshes.begin(), meshes.end(), [](const aiMesh* mesh) {
            return mesh->HasTextureCoords(0);
        });
        for (auto mesh = meshes.begin(); mesh != meshes.end();) {
            const unsigned material = (*mesh)->mMaterialIndex;
            const auto others = std::stable_partition(
                mesh, meshes.end(),
                [material](const aiMesh* other) { return other->mMaterialIndex == material; });
            for (; mesh != others; ++mesh) {
                add(**mesh, world, has_uv && is_textured(*model.mMaterials[material]));
            }
        }
    }

    void add(const aiMesh& mesh, const aiMatrix4x4& world, bool has_uv) {
        aiMatrix3x3 normal_matrix(world);
        normal_matrix.Inverse().Transpose();
        for (unsigned f = 0; f < mesh.mNumFaces; ++f) {
            const aiFace& face = mesh.mFaces[f];
            for (unsigned i = 0; face.mNumIndices == 3 && i < 3; ++i) {
                const unsigned v = face.mIndices[i];
                Corner corner = {world * mesh.mVertices[v], {}, {}};
                if (mesh.HasNormals() && mesh.mNormals[v].SquareLength() > 0) {
                    corner.normal = (normal_matrix * mesh.mNormals[v]).Normalize();
                }
                if (has_uv) {
                    // A mesh without coordinates that is joined with one that has them gets zeros.
                    const aiVector3D* uvs = mesh.mTextureCoords[0];
                    corner.uv = uvs ? aiVector3D(uvs[v].x, uvs[v].y, 0) : aiVector3D();
                }
                corners.push_back(corner);
            }
        }
    }

    // True if the material has a texture for which coordinates are exported.
    static bool is_textured(const aiMaterial& material) {
        const auto types = {aiTextureType_DIFFUSE, aiTextureType_BASE_COLOR, aiTextureType_OPACITY,
                            aiTextureType_HEIGHT};
        return std::any_of(types.begin(), types.end(), [&material](aiTextureType type) {
            return material.GetTextureCount(type) > 0;
        });
    }
};

// Comparing corner by corner also compares the number of triangles and the box.
void expect_agreement(const std::string& path, bool has_textures) {
    const ExportedLibraries installation;
    ImportedModel scene(path);
    const std::vector<Corner> corners = corners_of(ExportedMeshReader::read(exported(scene)));

    Assimp::Importer importer;
    const aiScene* source = importer.ReadFile(path, aiProcess_Triangulate);
    ASSERT_NE(source, nullptr);
    // All of these models have Y up.
    AssimpCorners from_assimp = {*source, {}};
    from_assimp.add(*source->mRootNode, {1, 0, 0, 0, 0, 0, -1, 0, 0, 1, 0, 0, 0, 0, 0, 1});
    const std::vector<Corner>& wanted = from_assimp.corners;
    ASSERT_EQ(corners.size(), wanted.size());

    // The tolerances allow for matrices with six digits, and for nearly equal normals that share a
    // vertex.
    float size = 1;
    for (const Corner& corner : wanted) {
        size = std::max(size, corner.position.Length());
    }
    size_t normals = 0, uvs = 0;
    for (size_t i = 0; i < wanted.size(); ++i) {
        SCOPED_TRACE("corner " + std::to_string(i));
        ASSERT_LT((corners[i].position - wanted[i].position).Length(), 1e-5f * size);
        if (wanted[i].normal && !shares_its_position(wanted, i)) {
            ASSERT_LT((*corners[i].normal - *wanted[i].normal).Length(), 1e-3f);
            ++normals;
        }
        ASSERT_EQ(corners[i].uv.has_value(), wanted[i].uv.has_value());
        if (wanted[i].uv) {
            ASSERT_LT((*corners[i].uv - *wanted[i].uv).Length(), 1e-6f);
            ++uvs;
        }
    }
    EXPECT_GT(normals, 0u);
    EXPECT_EQ(uvs > 0, has_textures);
}

TEST(ExportedModel, AgreesWithAssimp) {
    SKIP_WITHOUT_MODELS();
    const std::pair<const char*, bool> models[] = {
        // file, has textures
        {"3DS/cube_with_diffuse_texture.3DS", true},
        {"3DS/fels.3ds", false},
        {"ASE/ThreeCubesGreen.ASE", false},
        {"Collada/duck.dae", true},
        {"FBX/cubes_with_mirroring_and_pivot.fbx", false},
        {"FBX/spider.fbx", true},
        {"OBJ/spider.obj", true},
        {"PLY/Wuson.ply", false},
        {"STL/Spider_binary.stl", false},
        {"glTF2/2CylinderEngine-glTF-Binary/2CylinderEngine.glb", false},
        {"glTF2/BoxTextured-glTF/BoxTextured.gltf", true},
    };
    for (const auto& [file, has_textures] : models) {
        SCOPED_TRACE(file);
        expect_agreement(kModels + file, has_textures);
    }
}

}  // namespace
