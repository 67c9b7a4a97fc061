#include "bench/mesh_scenes.h"

#include <cmath>
#include <vector>

namespace mesh_scenes {

namespace {

constexpr int kChannel = 1;
constexpr int kChildrenOfABox = 5;

// Doesn't use the maths library, whose results differ from system to system in their last bits.
float wave(int i) {
    const float x = static_cast<float>(i % 64) / 64.0f - 0.5f;
    return x * (1.0f - 4.0f * x * x);
}

aiMesh* peer_mesh_of(const Mesh& mesh) {
    const auto corners = static_cast<unsigned>(mesh.numFaces) * 3;
    auto* peer = new aiMesh;
    peer->mPrimitiveTypes = aiPrimitiveType_TRIANGLE;
    peer->mNumVertices = corners;
    peer->mVertices = new aiVector3D[corners];
    peer->mNormals = new aiVector3D[corners];
    const UVVert* coordinates = mesh.mapVerts(kChannel);
    if (coordinates != nullptr) {
        peer->mTextureCoords[0] = new aiVector3D[corners];
        peer->mNumUVComponents[0] = 2;
    }
    peer->mNumFaces = static_cast<unsigned>(mesh.numFaces);
    peer->mFaces = new aiFace[peer->mNumFaces];
    for (unsigned i = 0; i < corners; ++i) {
        const Point3& place = mesh.verts[mesh.faces[i / 3].v[i % 3]];
        peer->mVertices[i] = aiVector3D(place.x, place.y, place.z);
        peer->mNormals[i] = aiVector3D(0, 0, 1);
        if (coordinates != nullptr) {
            const UVVert& uv = coordinates[mesh.mapFaces(kChannel)[i / 3].t[i % 3]];
            peer->mTextureCoords[0][i] = aiVector3D(uv.x, uv.y, 0);
        }
    }
    for (unsigned f = 0; f < peer->mNumFaces; ++f) {
        peer->mFaces[f].mNumIndices = 3;
        peer->mFaces[f].mIndices = new unsigned[3]{3 * f, 3 * f + 1, 3 * f + 2};
    }
    return peer;
}

std::unique_ptr<aiScene> peer_scene(unsigned meshes) {
    auto scene = std::make_unique<aiScene>();
    scene->mRootNode = new aiNode("root");
    scene->mNumMaterials = 1;
    scene->mMaterials = new aiMaterial* [1] { new aiMaterial };
    scene->mNumMeshes = meshes;
    scene->mMeshes = new aiMesh*[meshes];
    return scene;
}

void hang_mesh_on(aiNode* node, unsigned mesh) {
    node->mNumMeshes = 1;
    node->mMeshes = new unsigned[1]{mesh};
}

}  // namespace

Mesh surface(int triangles, Shading shading) {
    const int rows = static_cast<int>(std::sqrt(triangles / 4.0));
    const int columns = (triangles + 2 * rows - 1) / (2 * rows);
    Mesh mesh = memhost::grid_mesh(columns, rows, static_cast<float>(columns));
    for (int i = 0; i < mesh.numVerts; ++i) {
        mesh.verts[i].z = 3.0f * wave(i % (columns + 1)) + 2.0f * wave(i / (columns + 1));
    }
    for (int f = 0; f < mesh.numFaces; ++f) {
        const int row = f / (2 * columns);
        if (shading == Shading::kHard) {
            mesh.faces[f].smGroup = 1u << ((f % (2 * columns) + 11 * row) % 32);
        } else if (shading == Shading::kNone) {
            mesh.faces[f].smGroup = 0;
        }
    }
    if (shading == Shading::kOneHard) {
        mesh.faces[mesh.numFaces / 2].smGroup = 2;
    }
    if (shading == Shading::kExplicit) {
        MeshNormalSpec& spec = mesh.reset_normals(mesh.numVerts);
        for (int i = 0; i < mesh.numVerts; ++i) {
            spec.Normal(i) = Point3(wave(i), wave(i / columns), 1.0f).Normalize();
        }
        for (int f = 0; f < mesh.numFaces; ++f) {
            for (int corner = 0; corner < 3; ++corner) {
                spec.set_normal_index(f, corner, static_cast<int>(mesh.faces[f].v[corner]));
            }
        }
    }
    return mesh;
}

namespace {

memhost::NodeBuilder add_mapped_node(memhost::SceneBuilder& scene) {
    auto& map = scene.bitmap(L"missing.png").channel(kChannel);
    auto& material =
        scene.make<memhost::StandardMaterial>(L"surface").map(memhost::kDiffuseSlot, &map);
    return scene.node(L"surface").material(material);
}

}  // namespace

std::unique_ptr<memhost::SceneBuilder> scene_of(const Mesh& mesh) {
    auto scene = std::make_unique<memhost::SceneBuilder>();
    add_mapped_node(*scene).mesh(mesh);
    return scene;
}

std::unique_ptr<memhost::SceneBuilder> deforming_scene(int triangles, int frames) {
    auto scene = std::make_unique<memhost::SceneBuilder>();
    scene->animation_frames(0, frames - 1);
    memhost::DeformingMesh mesh(surface(triangles, Shading::kSmooth));
    mesh.moves([](TimeValue t, const Mesh& at_rest, Mesh& moved) {
        const float size = 1.0f + static_cast<float>(t) / TIME_TICKSPERSEC;
        for (int v = 0; v < at_rest.numVerts; ++v) {
            moved.verts[v].z = at_rest.verts[v].z * size;
        }
    });
    add_mapped_node(*scene).deforming(mesh);
    return scene;
}

std::unique_ptr<memhost::SceneBuilder> scene_of_boxes(int count) {
    auto scene = std::make_unique<memhost::SceneBuilder>();
    auto& material = scene->make<memhost::StandardMaterial>(L"box");
    const Mesh box = memhost::box_mesh(1, 2, 3);
    std::vector<memhost::NodeBuilder> nodes;
    for (int i = 0; i < count; ++i) {
        const std::wstring name = L"Box" + std::to_wstring(10000 + i);
        memhost::NodeBuilder node =
            i == 0 ? scene->node(name)
                   : nodes[static_cast<size_t>((i - 1) / kChildrenOfABox)].child(name);
        node.mesh(box).material(material).at(static_cast<float>(i) * 0.37f, 1, 2);
        nodes.push_back(node);
    }
    return scene;
}

std::unique_ptr<aiScene> peer_scene_of(const Mesh& mesh) {
    auto scene = peer_scene(1);
    scene->mMeshes[0] = peer_mesh_of(mesh);
    hang_mesh_on(scene->mRootNode, 0);
    return scene;
}

std::unique_ptr<aiScene> peer_scene_of_boxes(int count) {
    const auto total = static_cast<unsigned>(count);
    auto scene = peer_scene(total);
    const Mesh box = memhost::box_mesh(1, 2, 3);
    std::vector<aiNode*> nodes;
    for (unsigned i = 0; i < total; ++i) {
        scene->mMeshes[i] = peer_mesh_of(box);
        auto* node = new aiNode("Box" + std::to_string(10000 + i));
        hang_mesh_on(node, i);
        (i == 0 ? scene->mRootNode : nodes[(i - 1) / kChildrenOfABox])->addChildren(1, &node);
        nodes.push_back(node);
    }
    return scene;
}

}  // namespace mesh_scenes
