#include "tools/vsqexport/import/material_import.h"

#include <cmath>
#include <cstring>
#include <memory>
#include <optional>

#include <assimp/material.h>

#include "standins/host/memory/host_text.h"
#include "standins/host/memory/image_file.h"
#include "tools/vsqexport/import/model_reader.h"
#include "tools/vsqexport/import/texture_image.h"

namespace vsqexport {
namespace {

struct SlotSource {
    int slot;
    aiTextureType type;
};

// If a slot has several sources, the first one that the material has is taken.
constexpr SlotSource kSlotSources[] = {
    {memhost::kDiffuseSlot, aiTextureType_DIFFUSE},
    {memhost::kDiffuseSlot, aiTextureType_BASE_COLOR},
    {memhost::kSpecularColorSlot, aiTextureType_SPECULAR},
    {memhost::kOpacitySlot, aiTextureType_OPACITY},
    {memhost::kBumpSlot, aiTextureType_HEIGHT},
    {memhost::kBumpSlot, aiTextureType_NORMALS},
    {memhost::kBumpSlot, aiTextureType_NORMAL_CAMERA},
};

// The host's default for a new material.
constexpr Color kDefaultDiffuse(0.588f, 0.588f, 0.588f);

Color color_of(const aiMaterial& source, const char* key, const Color& fallback) {
    aiColor3D color;
    return source.Get(key, 0, 0, color) == AI_SUCCESS ? Color(color.r, color.g, color.b) : fallback;
}

// KHR_texture_transform scales, rotates around the origin and moves, with v downwards. The reader
// stores the negative angle, and an offset for a rotation around the middle of the image that holds
// only for equal scales. This takes that offset back and computes the matrix with v upwards.
Matrix3 gltf_uv_transform(const aiUVTransform& read) {
    const float c = std::cos(read.mRotation);
    const float s = std::sin(-read.mRotation);
    const aiVector2D& scale = read.mScaling;
    const float u_offset = read.mTranslation.x - 0.5f * scale.x * (1 - c + s);
    const float v_offset = 0.5f * scale.y * (s + c - 1) + 1 - scale.y - read.mTranslation.y;
    Matrix3 matrix;
    matrix.SetRow(0, {c * scale.x, s * scale.x, 0});
    matrix.SetRow(1, {-s * scale.y, c * scale.y, 0});
    matrix.SetRow(3, {s * scale.y + u_offset, 1 - c * scale.y - v_offset, 0});
    return matrix;
}

// Scales first, then rotates around the middle of the image, then moves.
Matrix3 uv_transform_of(const aiMaterial& source, aiTextureType type, bool is_gltf) {
    aiUVTransform transform;
    if (source.Get(AI_MATKEY_UVTRANSFORM(type, 0), transform) != AI_SUCCESS) {
        return Matrix3();
    }
    if (is_gltf) {
        return gltf_uv_transform(transform);
    }
    Matrix3 matrix = memhost::scaling(transform.mScaling.x, transform.mScaling.y, 1);
    if (transform.mRotation != 0) {
        const double degrees = static_cast<double>(transform.mRotation) * (180.0 / AI_MATH_PI);
        matrix = matrix * memhost::translation(-0.5f, -0.5f, 0) * memhost::rotation_z(degrees) *
                 memhost::translation(0.5f, 0.5f, 0);
    }
    return matrix * memhost::translation(transform.mTranslation.x, transform.mTranslation.y, 0);
}

}  // namespace

ModelMaterials::ModelMaterials(const aiScene& model, const std::filesystem::path& model_path,
                               const std::filesystem::path& texture_folder,
                               memhost::SceneBuilder& scene, ImportWarnings& warnings)
    : model_(model),
      scene_(scene),
      warnings_(warnings),
      files_(model_path.parent_path()),
      embedded_(texture_folder, model_path.stem().u8string()),
      made_(model.mMaterials ? model.mNumMaterials : 0) {}

Mtl* ModelMaterials::get(unsigned index) {
    if (index >= made_.size() || !model_.mMaterials[index]) {
        return nullptr;
    }
    if (!made_[index]) {
        made_[index] = make(*model_.mMaterials[index], index);
    }
    return made_[index];
}

Mtl* ModelMaterials::make(const aiMaterial& source, unsigned index) {
    auto& material = scene_.make<memhost::StandardMaterial>(name_of(source, index));

    float strength = 1;
    source.Get(AI_MATKEY_SHININESS_STRENGTH, strength);
    const Color base = color_of(source, "$clr.base", kDefaultDiffuse);
    material.diffuse(color_of(source, "$clr.diffuse", base))
        .specular(color_of(source, "$clr.specular", Color()))
        .shininess(strength);
    for (const SlotSource& slot : kSlotSources) {
        if (!material.GetSubTexmap(slot.slot)) {
            material.map(slot.slot, map_of(source, slot.type));
        }
    }
    return &material;
}

// Drawn maps are named after their materials, so materials of one name would show the same picture.
std::string ModelMaterials::name_of(const aiMaterial& source, unsigned index) {
    aiString given;
    source.Get(AI_MATKEY_NAME, given);
    return names_.distinct(given.length > 0 ? std::string(given.C_Str())
                                            : "Material " + std::to_string(index + 1));
}

// Null if the material has no texture of that type, or one that can't be loaded.
Texmap* ModelMaterials::map_of(const aiMaterial& source, aiTextureType type) {
    aiString path;
    unsigned set = 0;
    if (source.GetTexture(type, 0, &path, nullptr, &set) != AI_SUCCESS || path.length == 0) {
        return nullptr;
    }
    source.Get(AI_MATKEY_UVWSRC(type, 0), set);
    const int channel = static_cast<int>(set) + 1;
    const std::string name = path.C_Str();
    const Matrix3 map_from_mesh = uv_transform_of(source, type, reader_of(model_) == kGltf2Reader);
    if (const aiTexture* embedded = model_.GetEmbeddedTexture(name.c_str())) {
        return embedded_map(*embedded, name, map_from_mesh, channel);
    }
    if (name.front() == '*') {
        warn("the model has no embedded texture " + name.substr(1));
        return nullptr;
    }
    return file_map(name, map_from_mesh, channel);
}

// A model whose images can't be written to files gets maps that draw themselves. The plug-in tells
// if it can't write these either.
Texmap* ModelMaterials::embedded_map(const aiTexture& texture, const std::string& name,
                                     const Matrix3& map_from_mesh, int channel) {
    if (!is_image(texture)) {
        warn("the embedded texture " + name + " is not a readable image");
        return nullptr;
    }
    if (const auto path = embedded_.write(texture)) {
        return &scene_.bitmap(path->u8string()).uv_transform(map_from_mesh).channel(channel);
    }
    const auto copy = std::make_shared<const TextureCopy>(texture);
    const auto painter = memhost::picture([copy] { return copy->image(); });
    return &scene_.make<memhost::ProceduralMap>(painter).channel(channel);
}

// A missing file still gets its map, as in the host, where the user can supply the file later.
Texmap* ModelMaterials::file_map(const std::string& name, const Matrix3& map_from_mesh,
                                 int channel) {
    const auto found = files_.find(name);
    if (!found) {
        warn("the texture " + name + " is not found");
    } else if (!memhost::read_image_size(memhost::units_from_utf8(found->u8string()))) {
        warn("the texture " + found->u8string() + " is not a readable image");
    }
    return &scene_.bitmap(found ? found->u8string() : name)
                .uv_transform(map_from_mesh)
                .channel(channel);
}

void ModelMaterials::warn(const std::string& warning) {
    if (warned_.insert(warning).second) {
        warnings_.push_back({"import-texture", warning});
    }
}

}  // namespace vsqexport
