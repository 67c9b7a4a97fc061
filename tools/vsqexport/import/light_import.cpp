#include "tools/vsqexport/import/light_import.h"

#include <algorithm>
#include <cmath>
#include <memory>

#include "standins/host/memory/lights.h"
#include "tools/vsqexport/import/aim.h"
#include "tools/vsqexport/import/left_out.h"
#include "tools/vsqexport/import/model_reader.h"

namespace vsqexport {
namespace {

bool is_colour(const aiColor3D& colour) {
    for (unsigned i = 0; i < 3; ++i) {
        if (!std::isfinite(colour[i]) || colour[i] < 0) {
            return false;
        }
    }
    return true;
}

// Colours of old LightWave scenes go up to 255, and their reader passes them on unscaled.
aiColor3D colour_of(const aiLight& light, const std::string& reader) {
    const aiColor3D& colour = light.mColorDiffuse;
    const bool counts_to_255 =
        reader == "LightWave Scene Importer" && std::max({colour.r, colour.g, colour.b}) > 100;
    return counts_to_255 ? colour * (1.0f / 255) : colour;
}

// Readers multiply a light's colour by its intensity. If the largest component is above 1, it is
// taken as the intensity.
float intensity_of(const aiColor3D& colour) {
    return std::max({colour.r, colour.g, colour.b, 1.0f});
}

template <typename Light>
std::shared_ptr<Object> make_standard(const aiColor3D& colour) {
    const float intensity = intensity_of(colour);
    auto light = std::make_shared<Light>();
    light->intensity(intensity);
    light->color({colour.r / intensity, colour.g / intensity, colour.b / intensity});
    return light;
}

// Model files give an area light's power in watts, if at all.
std::shared_ptr<Object> make_area(const aiLight& source, const aiColor3D& colour) {
    constexpr float kLumensPerWatt = 100;
    const float intensity = intensity_of(colour);
    auto light = std::make_shared<memhost::PhotometricLight>(LightscapeLight::AREA_TYPE);
    light->shape(memhost::rectangle_shape(source.mSize.x, source.mSize.y));
    light->lumens(kLumensPerWatt * intensity);
    light->filter({colour.r / intensity, colour.g / intensity, colour.b / intensity});
    return light;
}

// Null for a kind that the host doesn't have.
std::shared_ptr<Object> make_light(const aiLight& source, const aiColor3D& colour) {
    switch (source.mType) {
        case aiLightSource_POINT:
            return make_standard<memhost::OmniLight>(colour);
        case aiLightSource_SPOT:
            return make_standard<memhost::SpotLight>(colour);
        case aiLightSource_DIRECTIONAL:
            return make_standard<memhost::DirectionalLight>(colour);
        case aiLightSource_AREA:
            return source.mSize.x > 0 && source.mSize.y > 0 ? make_area(source, colour) : nullptr;
        default:
            return nullptr;
    }
}

const char* why_there_is_none(const aiLight& light) {
    switch (light.mType) {
        case aiLightSource_AMBIENT:
            return "it is ambient";
        case aiLightSource_AREA:
            return "it has no area";
        default:
            return "its kind is not known";
    }
}

}  // namespace

void import_lights(const aiScene& model, const NodeIndex& nodes, HeldObjects& held,
                   ImportWarnings& warnings) {
    const std::string reader = reader_of(model);
    LeftOut left_out("light", "import-light");
    for (unsigned i = 0; i < model.mNumLights; ++i) {
        const aiLight& source = *model.mLights[i];
        const std::string name = source.mName.C_Str();
        const aiNode* node = nodes.find(source.mName);
        const std::shared_ptr<Object> light = make_light(source, colour_of(source, reader));
        if (!light) {
            left_out.add(name, why_there_is_none(source));
        } else if (!node) {
            left_out.add(name, "no node has that name");
        } else if (!is_colour(source.mColorDiffuse)) {
            left_out.add(name, "its colour is not valid");
        } else {
            Matrix3 node_from_light;
            if (source.mType != aiLightSource_POINT) {
                set_direction(source.mDirection, source.mUp, node_from_light);
            }
            node_from_light.SetRow(3, place_in_node(*node, source.mPosition));
            held[node].push_back({name, light, node_from_light});
        }
    }
    left_out.warn(warnings);
}

}  // namespace vsqexport
