#include "tools/vsqexport/import/light_import.h"

#include <algorithm>
#include <cmath>
#include <memory>

#include "standins/host/memory/lights.h"
#include "tools/vsqexport/import/left_out.h"
#include "tools/vsqexport/import/model_reader.h"

namespace vsqexport {
namespace {

const char* kind_of(const aiLight& light) {
    switch (light.mType) {
        case aiLightSource_DIRECTIONAL:
            return "it is directional";
        case aiLightSource_SPOT:
            return "it is a spot light";
        case aiLightSource_AMBIENT:
            return "it is ambient";
        case aiLightSource_AREA:
            return "it is an area light";
        default:
            return "its kind is not known";
    }
}

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
std::shared_ptr<Object> make_omni(const aiColor3D& colour) {
    const float intensity = std::max({colour.r, colour.g, colour.b, 1.0f});
    auto light = std::make_shared<memhost::OmniLight>();
    light->intensity(intensity);
    light->color({colour.r / intensity, colour.g / intensity, colour.b / intensity});
    return light;
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
        if (source.mType != aiLightSource_POINT) {
            left_out.add(name, kind_of(source));
        } else if (!node) {
            left_out.add(name, "no node has that name");
        } else if (!is_colour(source.mColorDiffuse)) {
            left_out.add(name, "its colour is not valid");
        } else {
            Matrix3 node_from_light;
            node_from_light.SetRow(3, place_in_node(*node, source.mPosition));
            held[node].push_back({name, make_omni(colour_of(source, reader)), node_from_light});
        }
    }
    left_out.warn(warnings);
}

}  // namespace vsqexport
