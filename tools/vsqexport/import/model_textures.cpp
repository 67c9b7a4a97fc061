#include "tools/vsqexport/import/model_textures.h"

#include <cmath>
#include <functional>
#include <memory>
#include <utility>

#include <assimp/material.h>

#include "standins/host/memory/host_text.h"
#include "standins/host/memory/image_file.h"
#include "tools/vsqexport/import/texture_image.h"

namespace vsqexport {
namespace {

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

Texmap* drawn_map(memhost::SceneBuilder& scene,
                  std::function<std::optional<memhost::Image>()> image, const TexturePlace& place) {
    return &scene.make<memhost::ProceduralMap>(memhost::picture(std::move(image)))
                .channel(place.channel);
}

Texmap* bitmap(memhost::SceneBuilder& scene, const std::string& path_utf8,
               const TexturePlace& place) {
    return &scene.bitmap(path_utf8).uv_transform(place.map_from_mesh).channel(place.channel);
}

}  // namespace

std::optional<TextureUse> texture_of(const aiMaterial& source, aiTextureType type, bool is_gltf) {
    aiString path;
    unsigned set = 0;
    if (source.GetTexture(type, 0, &path, nullptr, &set) != AI_SUCCESS || path.length == 0) {
        return std::nullopt;
    }
    source.Get(AI_MATKEY_UVWSRC(type, 0), set);
    return TextureUse{path.C_Str(),
                      {static_cast<int>(set) + 1, uv_transform_of(source, type, is_gltf)}};
}

ModelTextures::ModelTextures(const aiScene& model, const std::filesystem::path& model_path,
                             const std::filesystem::path& texture_folder,
                             memhost::SceneBuilder& scene, ImportWarnings& warnings)
    : model_(model),
      scene_(scene),
      warnings_(warnings),
      files_(model_path.parent_path()),
      embedded_(texture_folder, model_path.stem().u8string()) {}

Texmap* ModelTextures::map_of(const TextureUse& use) {
    if (const aiTexture* embedded = model_.GetEmbeddedTexture(use.name.c_str())) {
        return embedded_map(*embedded, use);
    }
    if (use.name.front() == '*') {
        warn("the model has no embedded texture " + use.name.substr(1));
        return nullptr;
    }
    return file_map(use);
}

// The plug-in tells if it can't write a map that draws itself either.
Texmap* ModelTextures::embedded_map(const aiTexture& texture, const TextureUse& use) {
    if (!is_image(texture)) {
        warn("the embedded texture " + use.name + " is not a readable image");
        return nullptr;
    }
    if (const auto path = embedded_.write(texture)) {
        return bitmap(scene_, path->u8string(), use.place);
    }
    const auto copy = std::make_shared<const TextureCopy>(texture);
    return drawn_map(
        scene_, [copy] { return copy->image(); }, use.place);
}

Texmap* ModelTextures::file_map(const TextureUse& use) {
    const auto found = files_.find(use.name);
    if (!found) {
        warn("the texture " + use.name + " is not found");
    } else if (!memhost::read_image_size(memhost::units_from_utf8(found->u8string()))) {
        warn("the texture " + found->u8string() + " is not a readable image");
    }
    return bitmap(scene_, found ? found->u8string() : use.name, use.place);
}

Texmap* ModelTextures::map_of(const memhost::Image& image, const TexturePlace& place) {
    if (const auto path = embedded_.write(memhost::png_bytes(image), ".png")) {
        return bitmap(scene_, path->u8string(), place);
    }
    return drawn_map(
        scene_, [image] { return std::optional<memhost::Image>(image); }, place);
}

const std::optional<memhost::Image>& ModelTextures::image_of(const TextureUse& use) {
    if (last_name_ != use.name) {
        last_name_ = use.name;
        last_image_ = read(use.name);
    }
    return last_image_;
}

std::optional<memhost::Image> ModelTextures::read(const std::string& name) {
    if (const aiTexture* embedded = model_.GetEmbeddedTexture(name.c_str())) {
        return is_image(*embedded) ? TextureCopy(*embedded).image() : std::nullopt;
    }
    const auto found = files_.find(name);
    return found ? memhost::read_image(memhost::units_from_utf8(found->u8string())) : std::nullopt;
}

void ModelTextures::warn(const std::string& warning) {
    if (warned_.insert(warning).second) {
        warnings_.push_back({"import-texture", warning});
    }
}

}  // namespace vsqexport
