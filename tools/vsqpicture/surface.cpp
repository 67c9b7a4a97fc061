#include "tools/vsqpicture/surface.h"

#include <algorithm>

#include "tools/vsqinfo/vsq_tokens.h"

namespace vsqpicture {
namespace {

// Shaders that refer to one another more deeply are cut off; no material needs so many.
constexpr int kDeepest = 32;

// A power that isn't in lumen is taken as watts of a lamp with this yield.
constexpr float kLumenPerWatt = 100;

Vec3 colour_in(const Shader& shader, const std::string& name, Vec3 otherwise) {
    const auto found = shader.numbers.find(name);
    if (found == shader.numbers.end() || found->second.size() != 3) {
        return otherwise;
    }
    return {static_cast<float>(found->second[0]), static_cast<float>(found->second[1]),
            static_cast<float>(found->second[2])};
}

float number_in(const Shader& shader, const std::string& name, float otherwise) {
    const auto found = shader.numbers.find(name);
    return found == shader.numbers.end() || found->second.empty()
               ? otherwise
               : static_cast<float>(found->second[0]);
}

const Shader* input_of(const Shader& shader, const std::string& name) {
    const auto found = shader.inputs.find(name);
    return found == shader.inputs.end() ? nullptr : found->second.get();
}

}  // namespace

Texture::Sample ColourInput::at(float u, float v, Vec3 vertex_colour) const {
    if (takes_vertex_colour) {
        return {vertex_colour, 1};
    }
    return texture ? texture->at(u * u_scale, v * v_scale, bytes) : Texture::Sample{colour, 1};
}

const Surface* SurfaceTable::surface(const ShaderPtr& shader) {
    std::unique_ptr<Surface>& entry = surfaces_[shader.get()];
    if (!entry) {
        entry = std::make_unique<Surface>();
        if (shader) {
            apply(*shader, *entry, 0);
        }
    }
    return entry.get();
}

void SurfaceTable::apply(const Shader& shader, Surface& surface, int depth) {
    const std::string& type = shader.type;
    if (depth > kDeepest) {
        return;
    }
    if (type == "qor_diffuse" || type == "qor_advanced") {
        surface.diffuse = input(shader, "diffuse", {0.6f, 0.6f, 0.6f});
    } else if (type == "qor_plastic_simple") {
        surface.diffuse = input(shader, "diffuse", {0.6f, 0.6f, 0.6f});
        surface.specular = input(shader, "specular", {});
        surface.roughness = number_in(shader, "roughness", 0);
    } else if (type == "qor_bumpmap") {
        if (const Shader* map = input_of(shader, "bumpmap")) {
            surface.bump = std::make_unique<ColourInput>(colour_of(*map, 0));
            surface.bump->bytes = Texture::Bytes::kNumbers;
            surface.bump_height = number_in(*map, "bump_height", 0);
        }
        if (const Shader* inner = input_of(shader, "shader")) {
            apply(*inner, surface, depth + 1);
        }
    } else if (type == "qor_composite" && !shader.layers.empty() && shader.layers.back()) {
        // The first layer only says where the last one is visible.
        if (shader.layers.size() > 1 && shader.layers.front()) {
            surface.opacity =
                std::make_unique<ColourInput>(input(*shader.layers.front(), "diffuse", {1, 1, 1}));
            surface.opacity->bytes = Texture::Bytes::kNumbers;
        }
        apply(*shader.layers.back(), surface, depth + 1);
    } else if (type == "qor_point_light" || type == "qor_ies_light" || type == "qor_mesh_light") {
        apply_light(shader, surface);
    } else {
        scene_.note("surfaces of the type " + vsqinfo::shown(type));
    }
}

void SurfaceTable::apply_light(const Shader& shader, Surface& surface) {
    surface.kind =
        shader.type == "qor_mesh_light" ? Surface::Kind::kMeshLight : Surface::Kind::kPointLight;
    // The colour of a low temperature can have less than no blue.
    const Vec3 colour = colour_in(shader, "color", {1, 1, 1});
    surface.light_colour = {std::max(colour.x, 0.0f), std::max(colour.y, 0.0f),
                            std::max(colour.z, 0.0f)};
    const bool in_lumen = number_in(shader, "lumen", 1) != 0;
    surface.power_lumen = number_in(shader, "power", 0) * (in_lumen ? 1 : kLumenPerWatt);
    if (shader.type == "qor_ies_light") {
        scene_.note("IES distributions; those lights shine equally to all sides");
    }
}

// A slot with a shader and a colour has the shader.
ColourInput SurfaceTable::input(const Shader& shader, const std::string& name, Vec3 otherwise) {
    if (const Shader* map = input_of(shader, name)) {
        return colour_of(*map, 0);
    }
    return {colour_in(shader, name, otherwise)};
}

ColourInput SurfaceTable::colour_of(const Shader& shader, int depth) {
    const std::string& type = shader.type;
    ColourInput colour;
    if (type == "texture2_rgb" || type == "texture2_rgba") {
        const auto path = shader.texts.find("texture");
        colour.texture = texture(path == shader.texts.end() ? "" : path->second);
        colour.u_scale = number_in(shader, "uv_scale_u", 1);
        colour.v_scale = number_in(shader, "uv_scale_v", 1);
    } else if (type == "vertex_color") {
        colour.takes_vertex_colour = true;
    } else if (type == "qor_color_adjust") {
        colour.colour = colour_in(shader, "color", {1, 1, 1}) * number_in(shader, "value", 1);
    } else {
        if (type == "qor_curve_randomize") {
            scene_.note("random colours of strands");
        } else {
            scene_.note("maps of the type " + vsqinfo::shown(type));
        }
        for (const char* name : {"map", "input"}) {
            if (const Shader* inner = input_of(shader, name); inner && depth < kDeepest) {
                return colour_of(*inner, depth + 1);
            }
        }
        colour.colour = {0.6f, 0.6f, 0.6f};
    }
    return colour;
}

const Texture* SurfaceTable::texture(const std::string& path) {
    std::unique_ptr<Texture>& entry = textures_[path];
    if (!entry) {
        entry = std::make_unique<Texture>(path);
        if (!entry->failure().empty()) {
            scene_.note("texture " + entry->failure());
        }
    }
    return entry.get();
}

}  // namespace vsqpicture
