#include "tools/vsqexport/import/model_unit.h"

#include <algorithm>
#include <cctype>
#include <cmath>

#include "standins/host/sdk/max.h"

namespace vsqexport {

namespace {

struct FormatUnit {
    const char* extension;
    int unit;
};

// Formats that fix their unit, and COLLADA, whose reader converts everything to metres.
constexpr FormatUnit kFormatUnits[] = {
    {".gltf", UNITS_METERS},  {".glb", UNITS_METERS},      {".dae", UNITS_METERS},
    {".blend", UNITS_METERS}, {".3mf", UNITS_MILLIMETERS},
};

struct CentimetreUnit {
    double centimetres;
    int unit;
};

constexpr CentimetreUnit kCentimetreUnits[] = {
    {0.1, UNITS_MILLIMETERS}, {1.0, UNITS_CENTIMETERS}, {2.54, UNITS_INCHES},
    {30.48, UNITS_FEET},      {100.0, UNITS_METERS},    {100000.0, UNITS_KILOMETERS},
    {160934.4, UNITS_MILES},
};

// FBX files give the length of a unit in centimetres.
std::optional<ModelUnit> unit_of_metadata(const aiScene& model) {
    float as_float = 0;
    double centimetres = 0;
    if (model.mMetaData == nullptr) {
        return std::nullopt;
    }
    if (!model.mMetaData->Get("UnitScaleFactor", centimetres)) {
        if (!model.mMetaData->Get("UnitScaleFactor", as_float)) {
            return std::nullopt;
        }
        centimetres = static_cast<double>(as_float);
    }
    for (const CentimetreUnit& known : kCentimetreUnits) {
        if (std::fabs(known.centimetres - centimetres) < 1e-4 * known.centimetres) {
            return ModelUnit{known.unit, 1};
        }
    }
    // The host has no such unit, so the model is scaled to centimetres.
    const bool is_length = centimetres > 0 && std::isfinite(centimetres);
    return is_length ? std::optional<ModelUnit>({UNITS_CENTIMETERS, centimetres}) : std::nullopt;
}

}  // namespace

std::optional<ModelUnit> unit_of_model(const aiScene& model, const std::string& extension) {
    std::string lower = extension;
    std::transform(lower.begin(), lower.end(), lower.begin(),
                   [](unsigned char letter) { return static_cast<char>(std::tolower(letter)); });
    for (const FormatUnit& format : kFormatUnits) {
        if (lower == format.extension) {
            return ModelUnit{format.unit, 1};
        }
    }
    return unit_of_metadata(model);
}

}  // namespace vsqexport
