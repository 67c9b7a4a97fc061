#pragma once

#include <map>
#include <memory>
#include <string>

#include "tools/vsqpicture/picture_scene.h"
#include "tools/vsqpicture/texture.h"

namespace vsqpicture {

/// A colour that can depend on the place.
struct ColourInput {
    Vec3 colour;
    const Texture* texture = nullptr;
    float u_scale = 1;
    float v_scale = 1;
    bool takes_vertex_colour = false;
    Texture::Bytes bytes = Texture::Bytes::kColours;

    Texture::Sample at(float u, float v, Vec3 vertex_colour) const;
};

/// A material in the form in which it is drawn.
struct Surface {
    enum class Kind { kReflecting, kPointLight, kMeshLight };

    Kind kind = Kind::kReflecting;
    ColourInput diffuse{{0.6f, 0.6f, 0.6f}};
    ColourInput specular;
    float roughness = 0;
    std::unique_ptr<ColourInput> opacity;  ///< its brightness, or null if all is opaque
    std::unique_ptr<ColourInput> bump;     ///< its brightness is a height, or null
    float bump_height = 0;
    Vec3 light_colour;
    float power_lumen = 0;
};

/// Makes surfaces of shaders, and keeps their textures.
class SurfaceTable {
public:
    /// `scene`, which is borrowed, gets notes of what can't be drawn and of textures that can't be
    /// read.
    explicit SurfaceTable(PictureScene& scene) : scene_(scene) {}

    /// The surface of a shader; a grey one for null. Stays valid as long as the table.
    const Surface* surface(const ShaderPtr& shader);

private:
    void apply(const Shader& shader, Surface& surface, int depth);
    void apply_light(const Shader& shader, Surface& surface);
    ColourInput input(const Shader& shader, const std::string& name, Vec3 otherwise);
    ColourInput colour_of(const Shader& shader, int depth);
    const Texture* texture(const std::string& path);

    PictureScene& scene_;
    std::map<const Shader*, std::unique_ptr<Surface>> surfaces_;
    std::map<std::string, std::unique_ptr<Texture>> textures_;
};

}  // namespace vsqpicture
