#include "standins/host/import/model_import.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <exception>
#include <filesystem>
#include <fstream>
#include <map>
#include <memory>
#include <new>
#include <optional>
#include <stdexcept>
#include <system_error>
#include <utility>
#include <vector>

#include <assimp/config.h>
#include <assimp/postprocess.h>
#include <assimp/scene.h>
#include <assimp/Importer.hpp>

#include "standins/host/import/deep_stack.h"
#include "standins/host/import/material_import.h"
#include "standins/host/import/mesh_import.h"
#include "standins/host/import/model_unit.h"
#include "standins/host/import/off_file_check.h"
#include "standins/host/import/up_axis.h"
#include "standins/host/memory/host_text.h"

namespace memhost {
namespace {

namespace fs = std::filesystem;

// Paths and the messages of parsers can hold anything; the user gets one line.
std::string one_line(const std::string& text) {
    std::string line;
    for (const char c : text) {
        const bool is_control = static_cast<unsigned char>(c) < 0x20 || c == 0x7F;
        line += is_control ? ' ' : c;
    }
    while (!line.empty() && line.back() == ' ') {
        line.pop_back();
    }
    return line;
}

[[noreturn]] void fail(const std::string& path_utf8, const std::string& reason) {
    throw std::runtime_error(one_line(path_utf8 + ": " + reason));
}

// Tells what assimp says unclearly or not at all.
void check_file(const std::string& path_utf8) {
    const fs::path path = fs::u8path(path_utf8);
    std::error_code error;
    const fs::file_status status = fs::status(path, error);
    if (status.type() == fs::file_type::not_found) {
        fail(path_utf8, "there is no such file");
    }
    if (error) {
        fail(path_utf8, error.message());
    }
    if (fs::is_directory(status)) {
        fail(path_utf8, "this is a folder, not a model file");
    }
    if (!fs::is_regular_file(status)) {
        fail(path_utf8, "this is not a regular file");
    }
    if (fs::file_size(path, error) == 0) {
        fail(path_utf8, "the file is empty");
    }
    errno = 0;
    std::ifstream file(path, std::ios::binary);
    if (!file) {
        fail(path_utf8, errno ? std::strerror(errno) : "the file can't be opened");
    }
    if (!off_counts_fit_file(file)) {
        fail(path_utf8, "the header counts more than the file can hold");
    }
}

// Whatever a reader throws becomes one line.
template <typename Step>
const aiScene* guarded(const std::string& path_utf8, const Step& step) {
    try {
        return step();
    } catch (const std::bad_alloc&) {
        fail(path_utf8, "there is not enough memory for it");
    } catch (const std::exception& error) {
        fail(path_utf8, error.what());
    } catch (...) {
        fail(path_utf8, "the reader gave up without a reason");
    }
}

// The scene belongs to the importer.
const aiScene& read_scene(Assimp::Importer& importer, const std::string& path_utf8) {
    // COLLADA nodes have an id and a name; the user knows the name.
    importer.SetPropertyBool(AI_CONFIG_IMPORT_COLLADA_USE_COLLADA_NAMES, true);

    const aiScene* scene = guarded(path_utf8, [&] { return importer.ReadFile(path_utf8, 0); });
    if (scene && scene->mRootNode) {
        return *scene;
    }

    // A file of no known ending is tried with whatever reader its content resembles, and what that
    // one has to say misleads.
    const std::string extension = fs::u8path(path_utf8).extension().u8string();
    if (!importer.IsExtensionSupported(extension)) {
        fail(path_utf8, "its format is not known");
    }
    const std::string reason = importer.GetErrorString();
    if (reason.empty() || reason.rfind("No suitable reader", 0) == 0) {
        fail(path_utf8, "its content is not that of a " + extension + " file");
    }
    fail(path_utf8, reason);
}

// Makes every polygon triangles.
void split_polygons(Assimp::Importer& importer, const std::string& path_utf8) {
    const auto split = [&] { return importer.ApplyPostProcessing(aiProcess_Triangulate); };
    if (!guarded(path_utf8, split)) {
        fail(path_utf8, importer.GetErrorString());
    }
}

std::string name_of(const aiNode& node) {
    return node.mName.C_Str();
}

// Assimp has column vectors, its rows lie beside one another in memory.
Matrix3 parent_from_node(const aiNode& node) {
    const aiMatrix4x4& m = node.mTransformation;
    return Matrix3({m.a1, m.b1, m.c1}, {m.a2, m.b2, m.c2}, {m.a3, m.b3, m.c3}, {m.a4, m.b4, m.c4});
}

bool is_identity(const Matrix3& matrix) {
    const Matrix3 identity;
    for (int row = 0; row < 4; ++row) {
        for (int column = 0; column < 3; ++column) {
            if (matrix.GetRow(row)[column] != identity.GetRow(row)[column]) {
                return false;
            }
        }
    }
    return true;
}

// True for a root that assimp made to have one, by the names that its readers give it: none,
// "ROOT", "RootNode", or something in angle brackets.
bool is_wrapper(const aiNode& root) {
    const std::string name = name_of(root);
    const bool is_made_up = name.empty() || name == "ROOT" || name == "RootNode" ||
                            (name.front() == '<' && name.back() == '>');
    return is_made_up && root.mNumMeshes == 0;
}

// Adds a model's nodes to a scene, with their meshes and materials. Nodes that show the same meshes
// share one object.
class NodeImport {
public:
    NodeImport(const aiScene& model, ModelMaterials& materials, SceneBuilder& scene)
        : model_(model), materials_(materials), scene_(scene) {}

    void fill(const NodeBuilder& builder, const aiNode& node);
    void add_below(const NodeBuilder& top, const aiNode& top_node);

private:
    struct Content {
        std::shared_ptr<MeshObject> object;
        Mtl* material = nullptr;
    };

    Content content_of(const aiNode& node);

    const aiScene& model_;
    ModelMaterials& materials_;
    SceneBuilder& scene_;
    std::map<std::vector<unsigned>, Content> contents_;  // by the numbers of the meshes
};

// Without an object if there is nothing to show.
NodeImport::Content NodeImport::content_of(const aiNode& node) {
    std::vector<MeshPart> parts;
    std::vector<unsigned> material_numbers;  // in the order of their first use
    for (unsigned i = 0; i < node.mNumMeshes; ++i) {
        if (node.mMeshes[i] >= model_.mNumMeshes) {
            continue;
        }
        const aiMesh& mesh = *model_.mMeshes[node.mMeshes[i]];
        if (mesh.mNumFaces == 0) {
            continue;
        }
        const auto known =
            std::find(material_numbers.begin(), material_numbers.end(), mesh.mMaterialIndex);
        parts.push_back({&mesh, static_cast<MtlID>(known - material_numbers.begin())});
        if (known == material_numbers.end()) {
            material_numbers.push_back(mesh.mMaterialIndex);
        }
    }

    Content content;
    auto object = std::make_shared<MeshObject>();
    if (!join_parts(parts, object->GetMesh())) {
        return content;
    }
    content.object = std::move(object);
    std::vector<Mtl*> materials;
    for (const unsigned number : material_numbers) {
        materials.push_back(materials_.get(number));
    }
    content.material = materials.size() == 1
                           ? materials.front()
                           : &scene_.make<MultiMaterial>(units_from_utf8(name_of(node)), materials);
    return content;
}

void NodeImport::fill(const NodeBuilder& builder, const aiNode& node) {
    if (node.mNumMeshes == 0) {
        return;
    }
    const std::vector<unsigned> key(node.mMeshes, node.mMeshes + node.mNumMeshes);
    auto known = contents_.find(key);
    if (known == contents_.end()) {
        known = contents_.emplace(key, content_of(node)).first;
    }
    const Content& content = known->second;
    if (content.object) {
        builder.object(content.object);
    }
    if (content.material) {
        builder.material(*content.material);
    }
}

// A file can nest its nodes thousands deep, so the tree is walked with a list of what is left.
void NodeImport::add_below(const NodeBuilder& top, const aiNode& top_node) {
    struct Placed {
        const aiNode* node;
        NodeBuilder builder;
    };
    std::vector<Placed> left = {{&top_node, top}};
    while (!left.empty()) {
        const Placed parent = left.back();
        left.pop_back();
        for (unsigned i = 0; i < parent.node->mNumChildren; ++i) {
            const aiNode* child = parent.node->mChildren[i];
            if (!child) {
                continue;  // some readers count more children than they make
            }
            const NodeBuilder builder = parent.builder.child(name_of(*child));
            builder.transform(parent_from_node(*child));
            fill(builder, *child);
            left.push_back({child, builder});
        }
    }
}

// A mesh that names vertices which it hasn't would have whatever comes next read past its end.
void empty_broken_meshes(const aiScene& model, std::vector<std::string>& warnings) {
    for (unsigned i = 0; i < model.mNumMeshes; ++i) {
        aiMesh& mesh = *model.mMeshes[i];
        if (!faces_stay_in_range(mesh)) {
            warnings.push_back("the mesh \"" + std::string(mesh.mName.C_Str()) +
                               "\" is left out: its faces name vertices that it hasn't");
            mesh.mNumFaces = 0;
        }
    }
}

void read_model(const std::string& path_utf8, SceneBuilder& scene,
                std::vector<std::string>& warnings) {
    Assimp::Importer importer;
    const aiScene& model = read_scene(importer, path_utf8);

    const aiNode& root = *model.mRootNode;
    if (is_wrapper(root) && root.mNumChildren == 0) {
        fail(path_utf8, "it holds no nodes");
    }
    empty_broken_meshes(model, warnings);
    split_polygons(importer, path_utf8);

    const fs::path path = fs::u8path(path_utf8);
    if (const std::optional<int> unit = unit_of_model(model, path.extension().u8string())) {
        scene.unit(*unit);
    }
    ModelMaterials materials(model, path.parent_path(), scene, warnings);
    NodeImport nodes(model, materials, scene);
    const Matrix3 scene_from_root = parent_from_node(root) * scene_from_model(model);
    if (is_wrapper(root) && is_identity(scene_from_root)) {
        nodes.add_below(NodeBuilder(scene.host().root()), root);
    } else {
        const NodeBuilder top = scene.node(name_of(root)).transform(scene_from_root);
        nodes.fill(top, root);
        nodes.add_below(top, root);
    }
}

}  // namespace

std::vector<std::string> import_model(const std::string& path_utf8, SceneBuilder& scene) {
    check_file(path_utf8);
    std::vector<std::string> warnings;
    run_on_deep_stack([&] { read_model(path_utf8, scene, warnings); });
    for (std::string& warning : warnings) {
        warning = one_line(path_utf8 + ": " + warning);
    }
    return warnings;
}

}  // namespace memhost
