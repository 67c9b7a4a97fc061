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
void LightConverter::ConvertSkyLight(Object& light, const Job& job) {
    const char* missing = "it has no map";
    for (int i = 0; i < light.NumRefs(); ++i) {
        IParamBlock2* const params = as_param_block(light.GetReference(i));
        if (params == nullptr) {
            continue;
        }
        Texmap* const map = ParamValue<Texmap*>(*params, kSkyMap, kFixedTime).value_or(nullptr);
        if (map == nullptr) {
            continue;
        }
        if (!is_bitmap_texmap(map)) {
            missing = "its map isn't a bitmap";
            continue;
        }
        std::optional<std::string> file =
            bitmap_file(*static_cast<BitmapTex*>(map), job.time, job.notes);
        if (!file) {
            missing = "the image file of its map can't be loaded";
            continue;
        }
        missing = nullptr;
        if (environment_ != *file) {
            job.notes.add(Note::kSkyMapTooLate, {}, *file);
        }
        environment_ = std::move(*file);
    }
    if (missing != nullptr) {
        job.notes.add(Note::kSkyWithoutPicture, missing);
    }
}
