#include "plugins/3dsmax/export/light_converter.h"

#include <utility>

#include "model/black_body.h"
#include "plugins/3dsmax/export/light_notes.h"
#include "plugins/3dsmax/export/narrow_name.h"

namespace {

const Class_ID kSkyLightClass(0x7BF61478, 0x522E4705);
const Class_ID kOmniLightClass(OMNI_LIGHT_CLASS_ID, 0);

}  // namespace

LightConverter::LightConverter(std::shared_ptr<Qor::Options> options, Interface* host,
                               ExportNotes* notes)
    : options_(std::move(options)), host_(host), notes_(notes) {}

void LightConverter::Convert(INode* node, qor::qorSceneapi_oo& scene, TimeValue time) {
    const ObjectState state = node->EvalWorldState(time, TRUE);
    const std::string name = NarrowName(node->GetName());
    const Job job = {scene, time, name, name + std::to_string(light_count_), {notes_, node}};
    ++light_count_;

    if (state.obj == nullptr) {
        job.notes.add(Note::kObjectMissing, "a light");
        return;
    }
    if (state.obj->IsSubClassOf(LIGHTSCAPE_LIGHT_CLASS)) {
        ConvertPhotometricLight(static_cast<LightscapeLight&>(*state.obj), job);
    } else {
        ConvertStandardLight(*state.obj, job);
    }
}

void LightConverter::ConvertPhotometricLight(LightscapeLight& light, const Job& job) {
    struct Kind {
        int type;
        void (LightConverter::*convert)(LightscapeLight&, const Job&);
    };
    static constexpr Kind kKinds[] = {
        {LightscapeLight::TARGET_POINT_TYPE, &LightConverter::ConvertPointLight},
        {LightscapeLight::POINT_TYPE, &LightConverter::ConvertPointLight},
        {LightscapeLight::TARGET_AREA_TYPE, &LightConverter::ConvertPolygonLight},
        {LightscapeLight::AREA_TYPE, &LightConverter::ConvertPolygonLight},
        {LightscapeLight::SPHERE_TYPE, &LightConverter::ConvertSphereLight},
        {LightscapeLight::CYLINDER_TYPE, &LightConverter::ConvertRingLight},
    };

    if (!options_->PhotometricLights) {
        job.notes.add(Note::kLightSwitchedOff, "the setting PhotometricLights is off");
        return;
    }
    const int type = light.Type();
    for (const Kind& kind : kKinds) {
        if (kind.type == type) {
            NotePhotometricLight(job.notes, light);
            (this->*kind.convert)(light, job);
            return;
        }
    }
    NoteUnknownLight(job.notes, light, type);
}

void LightConverter::ConvertStandardLight(Object& object, const Job& job) {
    if (options_->SkyLights && object.CanConvertToType(kSkyLightClass)) {
        ConvertSkyLight(object, job);
        return;
    }
    // An object that converts to an omni light isn't necessarily a `GenLight`.
    auto* const light =
        object.CanConvertToType(kOmniLightClass) ? dynamic_cast<GenLight*>(&object) : nullptr;
    if (light != nullptr && light->Type() == OMNI_LIGHT) {
        ConvertOmniLight(*light, job);
    } else if (job.notes && object.CanConvertToType(kSkyLightClass)) {
        job.notes.add(Note::kLightSwitchedOff, "the setting SkyLights is off");
    } else {
        NoteUnknownLight(job.notes, object);
    }
}

Point3 LightConverter::KelvinToColor(LightscapeLight& light, TimeValue time) {
    const qorColor color = qor::BlackbodyColor(light.GetKelvin(time));
    return Point3(color.r, color.g, color.b);
}
