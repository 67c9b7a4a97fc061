#include "model/material.h"

#include <cstdint>

#include "importers/sceneapi/dev/qorscene_api.h"
#include "importers/sceneapi/dev/qorsceneapi_oo.h"

namespace qor {

namespace {

constexpr std::uint32_t kMaterialFlags = 4096;  // the same for every kind of material

float clamped_component(float value) {
    const double wide = value;
    if (wide < 0.0) {
        return 0.0f;
    }
    return wide > 1.0 ? 1.0f : value;
}

}  // namespace

void Material::emit(qorSceneapi_oo& scene) {
    if (defined_) {
        scene.get_api()->use_material(name_.c_str());
        return;
    }
    write_block(scene, true);
}

void Material::define(qorSceneapi_oo& scene) {
    write_block(scene, false);
    defined_ = true;
}

void Material::write_block(qorSceneapi_oo& scene, bool place) {
    qorScene_api& api = *scene.get_api();
    api.begin_material(name_.c_str(), place);
    emit_surface(scene);
    api.set_flags(kMaterialFlags);
    api.end_material();
}

qorColor Material::clamped(float r, float g, float b) {
    return {clamped_component(r), clamped_component(g), clamped_component(b)};
}

}  // namespace qor
