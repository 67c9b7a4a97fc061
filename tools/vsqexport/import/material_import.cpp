#include "tools/vsqexport/import/material_import.h"

#include <optional>
#include <utility>

#include <assimp/material.h>

#include "tools/vsqexport/import/model_reader.h"
#include "tools/vsqexport/import/texture_picture.h"

namespace vsqexport {
namespace {

struct SlotSource {
    int slot;
    aiTextureType type;
};

// The slots whose maps are taken as they are. The plug-in sends the specular one and tells of the
// others.
constexpr SlotSource kSlotSources[] = {
    {memhost::kSpecularColorSlot, aiTextureType_SPECULAR},
    {memhost::kGlossinessSlot, aiTextureType_SHININESS},
    {memhost::kSelfIlluminationSlot, aiTextureType_EMISSIVE},
    {memhost::kSelfIlluminationSlot, aiTextureType_EMISSION_COLOR},
    {memhost::kReflectionSlot, aiTextureType_REFLECTION},
    {memhost::kDisplacementSlot, aiTextureType_DISPLACEMENT},
};

constexpr aiTextureType kDiffuseTypes[] = {aiTextureType_DIFFUSE, aiTextureType_BASE_COLOR};

bool is_white(const Color& color) {
    return color.r == 1 && color.g == 1 && color.b == 1;
}

memhost::Image grey(float value) {
    memhost::Image image(1, 1);
    image.pixels[0] = {255, 255, 255, 255};
    return opacity_picture(image, true, value);
}

bool are_alike(const Matrix3& a, const Matrix3& b) {
    for (int row = 0; row < 4; ++row) {
        const Point3 difference = a.GetRow(row) - b.GetRow(row);
        if (!(difference.x == 0 && difference.y == 0 && difference.z == 0)) {
            return false;
        }
    }
    return true;
}

// The plug-in takes the place of the last map for all.
bool has_maps_in_different_places(Mtl& material) {
    std::optional<Matrix3> first;
    for (const int slot : {memhost::kDiffuseSlot, memhost::kSpecularColorSlot,
                           memhost::kOpacitySlot, memhost::kBumpSlot}) {
        if (auto* const map = dynamic_cast<BitmapTex*>(material.GetSubTexmap(slot))) {
            Matrix3 map_from_mesh;
            map->GetUVTransform(map_from_mesh);
            if (first && !are_alike(*first, map_from_mesh)) {
                return true;
            }
            first = map_from_mesh;
        }
    }
    return false;
}

}  // namespace

ModelMaterials::ModelMaterials(const aiScene& model, const std::filesystem::path& model_path,
                               const std::filesystem::path& texture_folder,
                               memhost::SceneBuilder& scene, ImportWarnings& warnings)
    : model_(model),
      scene_(scene),
      warnings_(warnings),
      reader_(reader_of(model)),
      textures_(model, model_path, texture_folder, scene, warnings),
      made_(model.mMaterials ? model.mNumMaterials : 0) {}

Mtl* ModelMaterials::get(unsigned index) {
    if (index >= made_.size() || !model_.mMaterials[index]) {
        return nullptr;
    }
    if (!made_[index]) {
        const aiMaterial& source = *model_.mMaterials[index];
        made_[index] = make(source, name_of(source, index));
    }
    return made_[index];
}

Mtl* ModelMaterials::make(const aiMaterial& source, const std::string& name) {
    const MaterialValues values = values_of(source, reader_, means_of(source));
    auto& material = scene_.make<memhost::StandardMaterial>(name);
    material.diffuse(values.diffuse)
        .specular(values.specular)
        .shininess(values.level)
        .self_illumination(values.glow)
        .map(memhost::kDiffuseSlot, diffuse_map(source, values))
        .map(memhost::kOpacitySlot, opacity_map(source, values))
        .map(memhost::kBumpSlot, bump_map(source, name));
    for (const SlotSource& slot : kSlotSources) {
        if (const auto use = texture(source, slot.type); use && !material.GetSubTexmap(slot.slot)) {
            material.map(slot.slot, textures_.map_of(*use));
        }
    }
    for (const std::string& loss : losses_of(source)) {
        lose(name, loss);
    }
    if (has_maps_in_different_places(material)) {
        lose(name, "its maps lie in different places, and all take that of the last");
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

std::optional<TextureUse> ModelMaterials::texture(const aiMaterial& source,
                                                  aiTextureType type) const {
    return texture_of(source, type, reader_ == kGltf2Reader);
}

std::optional<TextureUse> ModelMaterials::diffuse_texture(const aiMaterial& source) const {
    for (const aiTextureType type : kDiffuseTypes) {
        if (auto use = texture(source, type)) {
            return use;
        }
    }
    return std::nullopt;
}

// glTF keeps roughness in the green and metallic in the blue of one image.
TextureMeans ModelMaterials::means_of(const aiMaterial& source) {
    TextureMeans means;
    if (const auto use = texture(source, aiTextureType_METALNESS)) {
        if (const auto& image = textures_.image_of(*use)) {
            means.metallic = mean_color(*image).b;
        }
    }
    if (const auto use = texture(source, aiTextureType_DIFFUSE_ROUGHNESS)) {
        if (const auto& image = textures_.image_of(*use)) {
            means.roughness = mean_color(*image).g;
        }
    }
    if (const auto use = diffuse_texture(source); use && may_be_metal(source)) {
        if (const auto& image = textures_.image_of(*use)) {
            means.base = mean_light(*image);
        }
    }
    return means;
}

// The host shows a diffuse map instead of the colour. Where the file wants both multiplied, the map
// gets a picture of its own.
Texmap* ModelMaterials::diffuse_map(const aiMaterial& source, const MaterialValues& values) {
    const auto use = diffuse_texture(source);
    if (!use) {
        return nullptr;
    }
    if (values.has_factor && !is_white(values.diffuse)) {
        if (const auto& image = textures_.image_of(*use)) {
            return textures_.map_of(tinted(*image, values.diffuse), use->place);
        }
    }
    return textures_.map_of(*use);
}

// The plug-in sends no opacity but that of a map.
Texmap* ModelMaterials::opacity_map(const aiMaterial& source, const MaterialValues& values) {
    const AlphaUse alpha = alpha_use(source);
    const auto diffuse = diffuse_texture(source);
    const auto use = alpha.counts ? diffuse : texture(source, aiTextureType_OPACITY);
    if (use) {
        const auto& image = textures_.image_of(*use);
        const bool takes_alpha = alpha.counts || (image && has_alpha(*image));
        if (image && (values.opacity < 1 || has_alpha(*image))) {
            return textures_.map_of(
                opacity_picture(*image, takes_alpha, values.opacity, alpha.cutoff), use->place);
        }
        if (!alpha.counts) {
            return textures_.map_of(*use);
        }
    }
    const bool is_cut = alpha.cutoff >= 0;
    const float opacity = is_cut ? (values.opacity >= alpha.cutoff ? 1.0f : 0.0f) : values.opacity;
    return opacity < 1 ? textures_.map_of(grey(opacity), diffuse ? diffuse->place : TexturePlace())
                       : nullptr;
}

// COLLADA and OBJ call any map of a rough surface a bump map, so the picture decides what it is.
Texmap* ModelMaterials::bump_map(const aiMaterial& source, const std::string& name) {
    constexpr aiTextureType kTypes[] = {aiTextureType_HEIGHT, aiTextureType_NORMALS,
                                        aiTextureType_NORMAL_CAMERA};
    for (const aiTextureType type : kTypes) {
        const auto use = texture(source, type);
        if (!use) {
            continue;
        }
        const bool may_be_height = type == aiTextureType_HEIGHT || reader_ == kColladaReader;
        const auto& image = textures_.image_of(*use);
        if (may_be_height && !(image && shows_normals(*image))) {
            return textures_.map_of(*use);
        }
        lose(name, "its normal map isn't used, since the host's bump map holds heights");
    }
    return nullptr;
}

bool ModelMaterials::needs_coordinates(unsigned index) const {
    return index < made_.size() && made_[index] &&
           made_[index]->GetSubTexmap(memhost::kOpacitySlot);
}

void ModelMaterials::lose(const std::string& name, const std::string& what) {
    losses_[what].push_back(name);
}

void ModelMaterials::warn() const {
    for (const auto& [what, names] : losses_) {
        const std::string others =
            names.size() > 1 ? " and " + std::to_string(names.size() - 1) + " more" : "";
        warnings_.push_back(
            {"import-material", "the material \"" + names.front() + "\"" + others + ": " + what});
    }
}

}  // namespace vsqexport
