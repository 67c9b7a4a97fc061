#include <optional>
#include <string>
#include <utility>

#include "plugins/3dsmax/export/bitmap_file.h"
#include "plugins/3dsmax/export/light_converter.h"
#include "plugins/3dsmax/export/param_value.h"

namespace {

constexpr ParamID kSkyMap = 2;

// Null if the reference is anything else.
IParamBlock2* as_param_block(ReferenceTarget* reference) {
    if (reference == nullptr || reference->SuperClassID() != PARAMETER_BLOCK2_CLASS_ID) {
        return nullptr;
    }
    return dynamic_cast<IParamBlock2*>(reference);
}

}  // namespace

// Only a bitmap map becomes an environment; a colour or a procedural map doesn't.
void LightConverter::ConvertSkyLight(Object& light, TimeValue time) {
    for (int i = 0; i < light.NumRefs(); ++i) {
        IParamBlock2* const params = as_param_block(light.GetReference(i));
        if (params == nullptr) {
            continue;
        }
        Texmap* const map = ParamValue<Texmap*>(*params, kSkyMap, kFixedTime).value_or(nullptr);
        if (map == nullptr || !is_bitmap_texmap(map)) {
            continue;
        }
        std::optional<std::string> file = bitmap_file(*static_cast<BitmapTex*>(map), time);
        if (!file) {
            continue;
        }
        environment_ = std::move(*file);
    }
}
