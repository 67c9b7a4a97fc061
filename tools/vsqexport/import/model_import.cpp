#include "tools/vsqexport/import/model_import.h"

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
#include <assimp/material.h>
#include <assimp/postprocess.h>
#include <assimp/scene.h>
#include <assimp/Importer.hpp>

#include "standins/host/memory/host_text.h"
#include "tools/vsqexport/import/animation_choice.h"
#include "tools/vsqexport/import/animation_import.h"
#include "tools/vsqexport/import/camera_import.h"
#include "tools/vsqexport/import/collada_text.h"
#include "tools/vsqexport/import/deep_stack.h"
#include "tools/vsqexport/import/deforming_parts.h"
#include "tools/vsqexport/import/distinct_names.h"
#include "tools/vsqexport/import/frame_rate.h"
#include "tools/vsqexport/import/gltf_curves.h"
#include "tools/vsqexport/import/held_objects.h"
#include "tools/vsqexport/import/host_frame_rate.h"
#include "tools/vsqexport/import/light_import.h"
#include "tools/vsqexport/import/material_import.h"
#include "tools/vsqexport/import/matrix_conversion.h"
#include "tools/vsqexport/import/mend_3ds_scene.h"
#include "tools/vsqexport/import/mesh_import.h"
#include "tools/vsqexport/import/model_reader.h"
#include "tools/vsqexport/import/model_unit.h"
#include "tools/vsqexport/import/node_index.h"
#include "tools/vsqexport/import/off_file_check.h"
#include "tools/vsqexport/import/pivot_helper.h"
#include "tools/vsqexport/import/unshown_parts.h"
#include "tools/vsqexport/import/up_axis.h"

namespace vsqexport {
namespace {

namespace fs = std::filesystem;

// Paths and messages of parsers can contain line feeds; the user gets one line.
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

// Reports the failures that assimp reports unclearly or not at all.
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
        fail(path_utf8, "the header promises more than the file can hold");
    }
}

// Turns whatever a reader throws into a failure of one line.
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

// The importer owns the scene.
const aiScene& read_scene(Assimp::Importer& importer, const std::string& path_utf8) {
    // COLLADA nodes have an id and a name; the user knows the name.
    importer.SetPropertyBool(AI_CONFIG_IMPORT_COLLADA_USE_COLLADA_NAMES, true);

    const aiScene* scene = guarded(path_utf8, [&] { return importer.ReadFile(path_utf8, 0); });
    if (scene && scene->mRootNode) {
        return *scene;
    }

    // If assimp doesn't know the extension, it tries a reader that the content resembles, whose
    // message would mislead.
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

void process(Assimp::Importer& importer, unsigned steps, const std::string& path_utf8) {
    if (!guarded(path_utf8, [&] { return importer.ApplyPostProcessing(steps); })) {
        fail(path_utf8, importer.GetErrorString());
    }
}

// Whether a texture lies on a mesh as on a sphere, a cylinder or a plane, without coordinates in
// the file.
bool projects_textures(const aiScene& model) {
    for (unsigned m = 0; m < model.mNumMaterials; ++m) {
        const aiMaterial& material = *model.mMaterials[m];
        for (unsigned p = 0; p < material.mNumProperties; ++p) {
            const aiMaterialProperty& property = *material.mProperties[p];
            int mapping = aiTextureMapping_UV;
            if (std::strcmp(property.mKey.C_Str(), "$tex.mapping") == 0 &&
                material.Get("$tex.mapping", property.mSemantic, property.mIndex, mapping) ==
                    AI_SUCCESS &&
                mapping != aiTextureMapping_UV) {
                return true;
            }
        }
    }
    return false;
}

std::string name_of(const aiNode& node) {
    return node.mName.C_Str();
}

// True for a root that assimp has added. Its readers give such a root no name, "ROOT", "RootNode",
// or a name in angle brackets.
bool is_wrapper(const aiNode& root) {
    const std::string name = name_of(root);
    const bool is_made_up = name.empty() || name == "ROOT" || name == "RootNode" ||
                            (name.front() == '<' && name.back() == '>');
    return is_made_up && root.mNumMeshes == 0;
}

// What assimp's readers don't pass on. Each part is empty for files of another format.
struct FileText {
    const ColladaText& collada;
    GltfCurves curves;
};

GltfCurves gltf_curves(const aiScene& model, const fs::path& path) {
    const bool can_have_some = reader_of(model) == kGltf2Reader && model.mNumAnimations > 0;
    return can_have_some ? read_gltf_curves(path) : GltfCurves();
}

// Adds a model's nodes to a scene: transforms, meshes with their materials, cameras and lights.
// Nodes that show the same meshes share one object, unless the meshes have bones or morph targets:
// the shape of these depends on the node.
class NodeImport {
public:
    NodeImport(const aiScene& model, const FileText& text, ModelMaterials& materials,
               memhost::SceneBuilder& scene, ImportWarnings& warnings, const ImportOptions& options,
               double scale)
        : model_(model),
          materials_(materials),
          scene_(scene),
          scene_from_file_(scene_from_model(model, options.up_axis)) {
        if (scale != 1) {
            const auto factor = static_cast<float>(scale);
            scene_from_file_ = scene_from_file_ * memhost::scaling(factor, factor, factor);
        }
        const NodeIndex nodes(model);
        animation_.emplace(model, nodes, warnings, options.animations, text.curves);
        deforming_.emplace(model, nodes, *animation_, warnings);
        import_cameras(model, text.collada.lenses, nodes, held_, warnings);
        import_lights(model, nodes, held_, warnings);
    }

    void add_all();

private:
    // A node whose children are still to be added. If it holds a camera or a light, its matrix can
    // differ from the file's, and `own_from_file` corrects its children for that.
    struct Placed {
        memhost::NodeBuilder builder;
        const aiNode* node;
        Matrix3 own_from_file;
    };

    struct Content {
        std::vector<MeshPart> parts;
        Mtl* material = nullptr;
        std::shared_ptr<Object> object;  // null if each node that shows the parts has its own
    };

    bool is_bare(const aiNode& node) const;
    Content content_of(const aiNode& node);
    std::shared_ptr<Object> still_object(const std::vector<MeshPart>& parts) const;
    std::shared_ptr<Object> deforming_object(const aiNode& node,
                                             const std::vector<MeshPart>& parts) const;
    bool show_meshes(const memhost::NodeBuilder& builder, const aiNode& node);
    Placed add(const memhost::NodeBuilder& builder, const aiNode& node,
               const Matrix3& parent_from_file);
    void add_below(const Placed& top);

    const aiScene& model_;
    ModelMaterials& materials_;
    memhost::SceneBuilder& scene_;
    Matrix3 scene_from_file_;
    std::optional<ModelAnimation> animation_;
    std::optional<DeformingParts> deforming_;
    HeldObjects held_;
    DistinctNames names_;
    std::map<std::vector<unsigned>, Content> contents_;  // by the numbers of the meshes
};

NodeImport::Content NodeImport::content_of(const aiNode& node) {
    Content content;
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
        content.parts.push_back({&mesh, static_cast<MtlID>(known - material_numbers.begin())});
        if (known == material_numbers.end()) {
            material_numbers.push_back(mesh.mMaterialIndex);
        }
    }

    std::vector<Mtl*> materials;
    for (const unsigned number : material_numbers) {
        materials.push_back(materials_.get(number));
    }
    for (MeshPart& part : content.parts) {
        part.needs_coordinates = materials_.needs_coordinates(part.mesh->mMaterialIndex);
    }
    content.object = still_object(content.parts);
    content.material = materials.size() == 1
                           ? materials.front()
                           : &scene_.make<memhost::MultiMaterial>(
                                 memhost::units_from_utf8(name_of(node)), materials);
    return content;
}

// Null if there are no triangles, or if the parts deform.
std::shared_ptr<Object> NodeImport::still_object(const std::vector<MeshPart>& parts) const {
    for (const MeshPart& part : parts) {
        if (deforming_->deforms(*part.mesh)) {
            return nullptr;
        }
    }
    auto object = std::make_shared<memhost::MeshObject>();
    return join_parts(parts, object->GetMesh()) ? object : nullptr;
}

// Null if there are no triangles.
std::shared_ptr<Object> NodeImport::deforming_object(const aiNode& node,
                                                     const std::vector<MeshPart>& parts) const {
    Mesh mesh;
    std::shared_ptr<const MeshDeformation> deformation;
    if (!deforming_->join(node, parts, mesh, deformation)) {
        return nullptr;
    }
    if (deformation->is_still()) {
        auto object = std::make_shared<memhost::MeshObject>(mesh);
        deformation->apply(0, mesh, object->GetMesh());
        return object;
    }
    memhost::DeformingMesh over_time(mesh);
    over_time.moves([deformation](TimeValue t, const Mesh& at_rest,
                                  Mesh& moved) { deformation->apply(t, at_rest, moved); },
                    [deformation](TimeValue t) { return deformation->validity(t); });
    return std::make_shared<memhost::DeformingObject>(std::move(over_time));
}

// False if the node has nothing to show.
bool NodeImport::show_meshes(const memhost::NodeBuilder& builder, const aiNode& node) {
    if (node.mNumMeshes == 0) {
        return false;
    }
    const std::vector<unsigned> key(node.mMeshes, node.mMeshes + node.mNumMeshes);
    auto known = contents_.find(key);
    if (known == contents_.end()) {
        known = contents_.emplace(key, content_of(node)).first;
    }
    const Content& content = known->second;
    const std::shared_ptr<Object> object =
        content.object ? content.object : deforming_object(node, content.parts);
    if (!object) {
        return false;
    }
    builder.object(object);
    if (content.material) {
        builder.material(*content.material);
    }
    return true;
}

// A node has one object. If it already has one, a camera or a light gets a child node of its own.
// Otherwise the node itself is rotated and moved to where the camera or light has to be.
NodeImport::Placed NodeImport::add(const memhost::NodeBuilder& builder, const aiNode& node,
                                   const Matrix3& parent_from_file) {
    bool is_taken = show_meshes(builder, node);
    Matrix3 file_from_own;
    Matrix3 own_from_file;
    if (const auto held = held_.find(&node); held != held_.end()) {
        for (const HeldObject& object : held->second) {
            if (is_taken) {
                builder.child(names_.told_apart(object.name))
                    .transform(object.node_from_object * own_from_file)
                    .object(object.object);
                continue;
            }
            builder.object(object.object);
            is_taken = true;
            if (!is_identity(object.node_from_object)) {
                file_from_own = object.node_from_object;
                own_from_file = inverse_or_identity(file_from_own);
            }
        }
    }
    builder.node().set_local_transform(animation_->place(node, file_from_own, parent_from_file));
    return {builder, &node, own_from_file};
}

// A file can nest its nodes thousands deep, so the tree is walked without recursion.
void NodeImport::add_below(const Placed& top) {
    std::vector<Placed> left = {top};
    while (!left.empty()) {
        const Placed parent = left.back();
        left.pop_back();
        for (const aiNode* child : children_without_helpers(*parent.node)) {
            const memhost::NodeBuilder builder =
                parent.builder.child(names_.told_apart(name_of(*child)));
            left.push_back(add(builder, *child, parent.own_from_file));
        }
    }
}

// True for a node that has only children and doesn't move.
bool NodeImport::is_bare(const aiNode& node) const {
    return node.mNumMeshes == 0 && !animation_->animates(node) && held_.count(&node) == 0;
}

void NodeImport::add_all() {
    animation_->set_range(scene_);
    const aiNode& root = *model_.mRootNode;
    if (is_wrapper(root) && is_bare(root) &&
        is_identity(host_matrix(root.mTransformation) * scene_from_file_)) {
        add_below({memhost::NodeBuilder(scene_.host().root()), &root, Matrix3()});
    } else {
        add_below(add(scene_.node(names_.told_apart(name_of(root))), root, scene_from_file_));
    }
}

// The steps that follow would read past the end of a mesh whose faces refer to missing vertices.
void empty_broken_meshes(const aiScene& model, ImportWarnings& warnings) {
    for (unsigned i = 0; i < model.mNumMeshes; ++i) {
        aiMesh& mesh = *model.mMeshes[i];
        if (!faces_stay_in_range(mesh)) {
            warnings.push_back(
                {"import-mesh",
                 "the mesh \"" + std::string(mesh.mName.C_Str()) +
                     "\" is left out: its faces refer to vertices that it doesn't have"});
            mesh.mNumFaces = 0;
        }
    }
}

// The rate is set before the animation range, which is counted in frames.
void set_frame_rate(const aiScene& model, const ColladaText& collada, const ImportOptions& options,
                    memhost::SceneBuilder& scene, ImportWarnings& warnings) {
    constexpr double kUsual = 30;
    if (options.frames_per_second) {
        scene.host().set_ticks_per_frame(nearest_ticks_per_frame(*options.frames_per_second));
        return;
    }
    const double rate = frame_rate_of(model, collada).value_or(kUsual);
    scene.host().set_ticks_per_frame(nearest_ticks_per_frame(rate));
    if (const std::string change = change_of_rate(rate);
        model.mNumAnimations > 0 && !change.empty()) {
        warnings.push_back({"import-frame-rate", change, "changed"});
    }
}

void read_model(const std::string& path_utf8, memhost::SceneBuilder& scene,
                ImportWarnings& warnings, const ImportOptions& options) {
    Assimp::Importer importer;
    const aiScene& model = read_scene(importer, path_utf8);

    const aiNode& root = *model.mRootNode;
    if (is_wrapper(root) && root.mNumChildren == 0) {
        fail(path_utf8, "it holds no nodes");
    }
    report_unshown_parts(model, warnings);
    empty_broken_meshes(model, warnings);
    process(importer, aiProcess_Triangulate, path_utf8);
    if (projects_textures(model)) {
        process(importer, aiProcess_GenUVCoords, path_utf8);
    }

    const fs::path path = fs::u8path(path_utf8);
    if (reader_of(model) == k3dsReader) {
        mend_3ds_scene(model, path);
    }
    double scale = options.scale;
    if (const std::optional<ModelUnit> unit = unit_of_model(model, path.extension().u8string());
        unit && !options.has_unit) {
        scene.unit(unit->type);
        scale *= unit->count;
    }
    const ColladaText collada =
        reader_of(model) == kColladaReader ? read_collada_text(path) : ColladaText();
    set_frame_rate(model, collada, options, scene, warnings);
    ModelMaterials materials(model, path, fs::u8path(options.texture_folder), scene, warnings);
    try {
        NodeImport(model, {collada, gltf_curves(model, path)}, materials, scene, warnings, options,
                   scale)
            .add_all();
        materials.warn();
    } catch (const UnknownAnimation& error) {
        fail(path_utf8, error.what());
    }
}

}  // namespace

ImportWarnings import_model(const std::string& path_utf8, memhost::SceneBuilder& scene,
                            const ImportOptions& options) {
    check_file(path_utf8);
    ImportWarnings warnings;
    run_on_deep_stack([&] { read_model(path_utf8, scene, warnings, options); });
    for (ImportWarning& warning : warnings) {
        warning.text = one_line(path_utf8 + ": " + warning.text);
    }
    return warnings;
}

std::string list_animations(const std::string& path_utf8) {
    check_file(path_utf8);
    std::string list;
    run_on_deep_stack([&] {
        Assimp::Importer importer;
        list = list_of_animations(read_scene(importer, path_utf8));
    });
    return list;
}

}  // namespace vsqexport
