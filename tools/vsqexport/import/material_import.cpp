#include "tools/vsqexport/import/material_import.h"

#include <cstring>
#include <memory>
#include <optional>

#include <assimp/material.h>

#include "standins/host/memory/host_text.h"
#include "standins/host/memory/image_file.h"

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

// Scales first, then rotates around the middle of the image, then moves.
Matrix3 uv_transform_of(const aiMaterial& source, aiTextureType type) {
    aiUVTransform transform;
    if (source.Get(AI_MATKEY_UVTRANSFORM(type, 0), transform) != AI_SUCCESS) {
        return Matrix3();
    }
    Matrix3 matrix = memhost::scaling(transform.mScaling.x, transform.mScaling.y, 1);
    if (transform.mRotation != 0) {
        const double degrees = static_cast<double>(transform.mRotation) * (180.0 / AI_MATH_PI);
        matrix = matrix * memhost::translation(-0.5f, -0.5f, 0) * memhost::rotation_z(degrees) *
                 memhost::translation(0.5f, 0.5f, 0);
    }
    return matrix * memhost::translation(transform.mTranslation.x, transform.mTranslation.y, 0);
}

// A texture of height 0 holds the bytes of an image file, and its width is their number.
std::vector<unsigned char> file_bytes(const aiTexture& texture) {
    const auto* bytes = reinterpret_cast<const unsigned char*>(texture.pcData);
    return {bytes, bytes + texture.mWidth};
}

memhost::Image raw_image(const aiTexture& texture) {
    memhost::Image image(static_cast<int>(texture.mWidth), static_cast<int>(texture.mHeight));
    for (std::size_t i = 0; i < image.pixels.size(); ++i) {
        const aiTexel& texel = texture.pcData[i];
        image.pixels[i] = {texel.r, texel.g, texel.b, texel.a};
    }
    return image;
}

}  // namespace

ModelMaterials::ModelMaterials(const aiScene& model, const std::filesystem::path& model_folder,
                               memhost::SceneBuilder& scene, ImportWarnings& warnings)
    : model_(model),
      scene_(scene),
      warnings_(warnings),
      files_(model_folder),
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
    aiString name;
    source.Get(AI_MATKEY_NAME, name);
    auto& material = scene_.make<memhost::StandardMaterial>(
        name.length > 0 ? std::string(name.C_Str()) : "Material " + std::to_string(index + 1));

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
    if (const aiTexture* embedded = model_.GetEmbeddedTexture(name.c_str())) {
        return embedded_map(*embedded, name, channel);
    }
    if (name.front() == '*') {
        warn("the model has no embedded texture " + name.substr(1));
        return nullptr;
    }
    return file_map(name, uv_transform_of(source, type), channel);
}

Texmap* ModelMaterials::embedded_map(const aiTexture& texture, const std::string& name,
                                     int channel) {
    memhost::ProceduralMap::Painter painter;
    if (texture.mHeight > 0) {
        painter = memhost::picture([image = std::make_shared<memhost::Image>(raw_image(texture))] {
            return std::optional<memhost::Image>(*image);
        });
    } else {
        const auto bytes = std::make_shared<std::vector<unsigned char>>(file_bytes(texture));
        if (!memhost::image_size(*bytes)) {
            warn("the embedded texture " + name + " is not a readable image");
            return nullptr;
        }
        painter = memhost::picture([bytes] { return memhost::decode_image(*bytes); });
    }
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
