#include "tools/vsqexport/import/material_values.h"

#include <algorithm>
#include <cmath>
#include <optional>

#include <assimp/GltfMaterial.h>

#include "tools/vsqexport/import/model_reader.h"

namespace vsqexport {
namespace {

// The host's default for a new material.
constexpr Color kDefaultDiffuse(0.588f, 0.588f, 0.588f);

// What any surface that isn't metal reflects when it is seen from the front.
constexpr float kPlainReflection = 0.04f;

// The host's own physical materials, which FBX files hold beside a poor copy in other values.
constexpr const char* kHostBase = "$raw.3dsMax|main|basecolor";
constexpr const char* kHostMetalness = "$raw.3dsMax|main|metalness";
constexpr const char* kHostRoughness = "$raw.3dsMax|main|roughness";
constexpr const char* kHostGlossiness = "$raw.3dsMax|main|glossiness";
constexpr const char* kHostSpecular = "$raw.3dsMax|main|Specular";

constexpr const char* kX3dReader = "Extensible 3D(X3D) Importer";

// NaN counts as 0.
float clamped(float value) {
    return value > 0 ? std::min(value, 1.0f) : 0.0f;
}

Color clamped(const Color& color) {
    return {clamped(color.r), clamped(color.g), clamped(color.b)};
}

std::optional<float> number_of(const aiMaterial& source, const char* key) {
    float number = 0;
    return source.Get(key, 0, 0, number) == AI_SUCCESS ? std::optional<float>(number)
                                                       : std::nullopt;
}

std::optional<Color> color_of(const aiMaterial& source, const char* key) {
    aiColor3D color;
    return source.Get(key, 0, 0, color) == AI_SUCCESS
               ? std::optional<Color>(Color(color.r, color.g, color.b))
               : std::nullopt;
}

Color product(const Color& a, const Color& b) {
    return {a.r * b.r, a.g * b.g, a.b * b.b};
}

float largest(const std::optional<Color>& color) {
    return color ? std::max({color->r, color->g, color->b}) : 0.0f;
}

// How rough a surface is whose highlight has that Phong exponent. Without an exponent a highlight
// is as wide as the surface.
float roughness_of_exponent(float exponent) {
    return exponent > 0 ? std::sqrt(2 / (exponent + 2)) : 1.0f;
}

struct Metal {
    Color base;
    float metallic;
    float roughness;
};

std::optional<Metal> physical_of_host(const aiMaterial& source) {
    const auto base = color_of(source, kHostBase);
    const auto metallic = number_of(source, kHostMetalness);
    const auto roughness = number_of(source, kHostRoughness);
    const auto gloss = number_of(source, kHostGlossiness);
    if (!base || !metallic || (!roughness && !gloss)) {
        return std::nullopt;
    }
    return Metal{*base, *metallic, roughness ? *roughness : 1 - *gloss};
}

// Assimp computes a roughness for every FBX material from its exponent, so that one says nothing.
std::optional<Metal> metal_of(const aiMaterial& source, const std::string& reader,
                              const Color& diffuse) {
    if (reader == kFbxReader) {
        return physical_of_host(source);
    }
    const auto metallic = number_of(source, "$mat.metallicFactor");
    const auto roughness = number_of(source, "$mat.roughnessFactor");
    if ((!metallic && !roughness) || number_of(source, "$mat.glossinessFactor")) {
        return std::nullopt;
    }
    return Metal{color_of(source, "$clr.base").value_or(diffuse), metallic.value_or(0),
                 roughness.value_or(1)};
}

// A plastic surface that looks like the metal. The rougher it is, the less it mirrors. What it then
// doesn't mirror it scatters in the same colour.
void take_metal(const Metal& metal, const TextureMeans& means, MaterialValues& values) {
    const float metallic = clamped(metal.metallic * means.metallic);
    const float level = 1 - clamped(metal.roughness * means.roughness);
    const Color base = clamped(metal.base);
    values.diffuse = base * (1 - metallic * level);
    const float plain = kPlainReflection * (1 - metallic);
    const Color mirrored = product(base, means.base) * metallic;
    values.specular = {plain + mirrored.r, plain + mirrored.g, plain + mirrored.b};
    values.level = level;
}

float level_of_highlight(const aiMaterial& source, const std::string& reader) {
    int shading = aiShadingMode_Phong;
    source.Get(AI_MATKEY_SHADING_MODEL, shading);
    if (shading == aiShadingMode_Flat || shading == aiShadingMode_Gouraud ||
        shading == aiShadingMode_NoShading) {
        return 0;
    }
    for (const char* const key : {"$mat.glossinessFactor", kHostGlossiness}) {
        if (const auto gloss = number_of(source, key)) {
            return *gloss;
        }
    }
    constexpr float kX3dRange = 128;  // X3D divides exponents by it
    const float exponent =
        number_of(source, "$mat.shininess").value_or(0) * (reader == kX3dReader ? kX3dRange : 1.0f);
    return number_of(source, "$mat.shinpercent").value_or(1) *
           (1 - roughness_of_exponent(exponent));
}

std::string alpha_mode_of(const aiMaterial& source) {
    aiString mode;
    source.Get(AI_MATKEY_GLTF_ALPHAMODE, mode);
    return mode.C_Str();
}

bool is_tiled(const aiMaterial& source, aiTextureType type) {
    for (const char* const key : {"$tex.mapmodeu", "$tex.mapmodev"}) {
        int mode = aiTextureMapMode_Wrap;
        source.Get(key, type, 0, mode);
        if (mode != aiTextureMapMode_Wrap) {
            return false;
        }
    }
    return true;
}

}  // namespace

MaterialValues values_of(const aiMaterial& source, const std::string& reader,
                         const TextureMeans& means) {
    MaterialValues values;
    const Color base = color_of(source, "$clr.base").value_or(kDefaultDiffuse);
    values.diffuse = clamped(color_of(source, "$clr.diffuse").value_or(base));
    if (const auto metal = metal_of(source, reader, values.diffuse)) {
        take_metal(*metal, means, values);
    } else {
        const Color specular = color_of(source, "$clr.specular").value_or(Color());
        values.specular = clamped(color_of(source, kHostSpecular).value_or(specular));
        values.level = clamped(level_of_highlight(source, reader));
    }
    const bool has_alpha_mode = !alpha_mode_of(source).empty();
    if (!has_alpha_mode || alpha_use(source).counts) {
        values.opacity = clamped(number_of(source, "$mat.opacity").value_or(1));
    }
    if (!has_alpha_mode && values.opacity == 0) {
        values.opacity = 1;
    }
    values.glow = clamped(largest(color_of(source, "$clr.emissive")));
    values.has_factor = has_alpha_mode;
    return values;
}

bool may_be_metal(const aiMaterial& source) {
    return number_of(source, "$mat.metallicFactor").value_or(0) > 0 ||
           number_of(source, kHostMetalness).value_or(0) > 0;
}

AlphaUse alpha_use(const aiMaterial& source) {
    const std::string mode = alpha_mode_of(source);
    AlphaUse use;
    use.counts = mode == "BLEND" || mode == "MASK";
    if (mode == "MASK") {
        use.cutoff = number_of(source, "$mat.gltf.alphaCutoff").value_or(0.5f);
    }
    return use;
}

std::vector<std::string> losses_of(const aiMaterial& source) {
    std::vector<std::string> losses;
    const auto lose = [&](bool is_lost, const std::string& what) {
        if (is_lost) {
            losses.push_back(what);
        }
    };
    const auto above_0 = [&](const char* key) { return number_of(source, key).value_or(0) > 0; };

    lose(source.GetTextureCount(aiTextureType_METALNESS) +
                 source.GetTextureCount(aiTextureType_DIFFUSE_ROUGHNESS) >
             0,
         "of its textures for metallic and roughness only the mean is used");
    lose(source.GetTextureCount(aiTextureType_LIGHTMAP) +
                 source.GetTextureCount(aiTextureType_AMBIENT_OCCLUSION) >
             0,
         "its texture of baked light or occlusion isn't used");
    lose(above_0("$mat.clearcoat.factor"), "its clear coat isn't used");
    lose(largest(color_of(source, "$clr.sheen.factor")) > 0, "its sheen isn't used");
    lose(above_0("$mat.transmission.factor"), "its transmission isn't used");
    lose(above_0("$mat.volume.thicknessFactor"), "its volume isn't used");
    lose(number_of(source, "$mat.anisotropyFactor").value_or(0) != 0, "its anisotropy isn't used");
    lose(above_0("$mat.reflectivity") && largest(color_of(source, "$clr.reflective")) > 0,
         "its reflection isn't used");
    // Old COLLADA exporters write a transparency of 0 for what isn't transparent.
    lose(alpha_mode_of(source).empty() && number_of(source, "$mat.opacity").value_or(1) == 0,
         "it is opaque, but the file wants it invisible");
    int shading = aiShadingMode_Phong;
    source.Get(AI_MATKEY_SHADING_MODEL, shading);
    lose(shading == aiShadingMode_NoShading, "it is lit, but the file wants it without light");
    for (const aiTextureType type : {aiTextureType_DIFFUSE, aiTextureType_BASE_COLOR}) {
        if (const unsigned count = source.GetTextureCount(type); count > 0) {
            lose(!is_tiled(source, type),
                 "its texture is repeated, but the file wants it clamped or mirrored");
            lose(count > 1, "only the first of its diffuse textures is used");
            break;
        }
    }
    return losses;
}

}  // namespace vsqexport
