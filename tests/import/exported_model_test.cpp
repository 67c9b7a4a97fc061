#include <algorithm>
#include <array>
#include <cmath>
#include <filesystem>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include <assimp/postprocess.h>
#include <assimp/scene.h>
#include <gtest/gtest.h>
#include <assimp/Importer.hpp>

#include "standins/host/import/model_import.h"
#include "tests/support/exported_meshes.h"
#include "tests/support/exported_scene.h"
#include "tests/support/registry_entries.h"

namespace {

using Vector = ExportedMesh::Vector;

Vector unit(const Vector& v) {
    const double length = std::hypot(v[0], v[1], v[2]);
    return {v[0] / length, v[1] / length, v[2] / length};
}

double distance(const Vector& a, const Vector& b) {
    return std::hypot(a[0] - b[0], a[1] - b[1], a[2] - b[2]);
}

// A corner of a triangle, in world space with Z up.
struct Corner {
    Vector position;
    std::optional<Vector> normal;
    std::optional<std::array<float, 2>> uv;
};

// Two corners of a face that lie at one place have one normal in the host.
bool shares_its_place(const std::vector<Corner>& corners, size_t i) {
    const size_t first = i - i % 3;
    return corners[i].position == corners[first + (i + 1) % 3].position ||
           corners[i].position == corners[first + (i + 2) % 3].position;
}

std::vector<Corner> corners_of(const std::vector<ExportedMesh>& meshes) {
    std::vector<Corner> corners;
    for (const ExportedMesh& mesh : meshes) {
        if (mesh.normals.empty()) {
            continue;  // what carries a light
        }
        for (const std::int32_t vertex : mesh.triangles) {
            const size_t v = static_cast<size_t>(vertex);
            Corner corner = {mesh.vertices[v], unit(mesh.normals[v]), std::nullopt};
            if (!mesh.uvs.empty()) {
                corner.uv = mesh.uvs[v];
            }
            corners.push_back(corner);
        }
    }
    return corners;
}

// The corners of a model as assimp has them, in the order of an export: the nodes below a node
// first, and at a node the triangles of each material together.
class AssimpCorners {
public:
    explicit AssimpCorners(const aiScene& model) : model_(model) {}

    std::vector<Corner> all(const aiMatrix4x4& z_up) {
        add(*model_.mRootNode, z_up);
        return corners_;
    }

private:
    void add(const aiNode& node, const aiMatrix4x4& parent_world) {
        const aiMatrix4x4 world = parent_world * node.mTransformation;
        for (unsigned i = 0; i < node.mNumChildren; ++i) {
            add(*node.mChildren[i], world);
        }
        std::vector<const aiMesh*> left;
        bool has_uv = false;
        for (unsigned i = 0; i < node.mNumMeshes; ++i) {
            left.push_back(model_.mMeshes[node.mMeshes[i]]);
            has_uv = has_uv || left.back()->HasTextureCoords(0);
        }
        while (!left.empty()) {
            const unsigned material = left.front()->mMaterialIndex;
            std::vector<const aiMesh*> others;
            for (const aiMesh* mesh : left) {
                if (mesh->mMaterialIndex == material) {
                    add(*mesh, world, has_uv && is_textured(*model_.mMaterials[material]));
                } else {
                    others.push_back(mesh);
                }
            }
            left = others;
        }
    }

    void add(const aiMesh& mesh, const aiMatrix4x4& world, bool has_uv) {
        aiMatrix3x3 normal_matrix(world);
        normal_matrix.Inverse().Transpose();
        for (unsigned f = 0; f < mesh.mNumFaces; ++f) {
            const aiFace& face = mesh.mFaces[f];
            for (unsigned i = 0; face.mNumIndices == 3 && i < 3; ++i) {
                const unsigned v = face.mIndices[i];
                const aiVector3D place = world * mesh.mVertices[v];
                Corner corner = {{place.x, place.y, place.z}, std::nullopt, std::nullopt};
                if (mesh.HasNormals() && mesh.mNormals[v].SquareLength() > 0) {
                    const aiVector3D normal = normal_matrix * mesh.mNormals[v];
                    corner.normal = unit({normal.x, normal.y, normal.z});
                }
                if (has_uv) {
                    // A mesh without coordinates beside one with them has them at zero.
                    const aiVector3D* uvs = mesh.mTextureCoords[0];
                    corner.uv = {uvs ? uvs[v].x : 0, uvs ? uvs[v].y : 0};
                }
                corners_.push_back(corner);
            }
        }
    }

    // Whether it has a texture that brings coordinates along.
    static bool is_textured(const aiMaterial& material) {
        for (const aiTextureType type : {aiTextureType_DIFFUSE, aiTextureType_BASE_COLOR,
                                         aiTextureType_OPACITY, aiTextureType_HEIGHT}) {
            if (material.GetTextureCount(type) > 0) {
                return true;
            }
        }
        return false;
    }

    const aiScene& model_;
    std::vector<Corner> corners_;
};

// Corner by corner, so that the number of triangles and the box agree as well.
void expect_agreement(const std::string& path, bool has_textures) {
    const TemporaryFolder folder;
    const RegistryEntries velmora(
        {{"HKEY_LOCAL_MACHINE", "SOFTWARE\\Quoria\\Velmora 11", "ResourceFolder",
          "\"" + folder.path().generic_u8string() + "\""}});
    memhost::SceneBuilder scene;
    memhost::import_model(path, scene);
    const std::vector<Corner> corners = corners_of(ExportedMeshReader::read(exported(scene)));

    Assimp::Importer importer;
    const aiScene* source = importer.ReadFile(path, aiProcess_Triangulate);
    ASSERT_NE(source, nullptr);
    // All of them have Y up.
    const std::vector<Corner> wanted =
        AssimpCorners(*source).all(aiMatrix4x4(1, 0, 0, 0, 0, 0, -1, 0, 0, 1, 0, 0, 0, 0, 0, 1));
    ASSERT_EQ(corners.size(), wanted.size());

    // Matrices have six digits in the file, and normals that nearly match share a vertex.
    double size = 1;
    for (const Corner& corner : wanted) {
        size = std::max(size, distance(corner.position, {0, 0, 0}));
    }
    const double place_tolerance = 1e-5 * size;
    constexpr double kNormalTolerance = 1e-3;
    constexpr float kUvTolerance = 1e-6f;
    size_t normals = 0;
    size_t uvs = 0;
    for (size_t i = 0; i < wanted.size(); ++i) {
        SCOPED_TRACE("corner " + std::to_string(i));
        ASSERT_LT(distance(corners[i].position, wanted[i].position), place_tolerance);
        if (wanted[i].normal && !shares_its_place(wanted, i)) {
            ASSERT_LT(distance(*corners[i].normal, *wanted[i].normal), kNormalTolerance);
            ++normals;
        }
        ASSERT_EQ(corners[i].uv.has_value(), wanted[i].uv.has_value());
        if (wanted[i].uv) {
            ASSERT_NEAR((*corners[i].uv)[0], (*wanted[i].uv)[0], kUvTolerance);
            ASSERT_NEAR((*corners[i].uv)[1], (*wanted[i].uv)[1], kUvTolerance);
            ++uvs;
        }
    }
    EXPECT_GT(normals, 0u);
    EXPECT_EQ(uvs > 0, has_textures);
}

TEST(ExportedModel, AgreesWithAssimp) {
    if (!std::filesystem::is_directory(std::filesystem::u8path(VSQ_TEST_MODELS))) {
        GTEST_SKIP() << "assimp-testmodels is not at " << VSQ_TEST_MODELS;
    }
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
        expect_agreement(std::string(VSQ_TEST_MODELS) + "/" + file, has_textures);
    }
}

}  // namespace
