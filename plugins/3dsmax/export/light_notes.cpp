#include "plugins/3dsmax/export/light_notes.h"

#include <string>

#include "plugins/3dsmax/export/light_converter.h"
#include "plugins/3dsmax/export/mesh_notes.h"
#include "plugins/3dsmax/export/truncated_int.h"

namespace {

// The form of this one in the genuine headers is unverified, so it is called in one place.
Point3 FilterOf(LightscapeLight& light) {
    return light.GetRGBFilter(kFixedTime);
}

// By the light's type, from the lowest on.
constexpr const char* kTypeNames[] = {"target point",  "point",  "target line",     "line",
                                      "target area",   "area",   "target disc",     "disc",
                                      "target sphere", "sphere", "target cylinder", "cylinder"};

bool IsPoint(int type) {
    return type == LightscapeLight::TARGET_POINT_TYPE || type == LightscapeLight::POINT_TYPE;
}

// A point light takes a web, and an area light with the default distribution is a diffuse one.
const char* LostDistribution(LightscapeLight::DistTypes distribution, bool is_point) {
    switch (distribution) {
        case LightscapeLight::SPOTLIGHT_DIST:
            return "a spotlight";
        case LightscapeLight::DIFFUSE_DIST:
            return is_point ? "a diffuse surface" : nullptr;
        case LightscapeLight::WEB_DIST:
            return is_point ? nullptr : "a web";
        default:
            return nullptr;
    }
}

}  // namespace

void NotePhotometricLight(const NodeNotes& notes, LightscapeLight& light) {
    if (!notes) {
        return;
    }
    const Point3 filter = FilterOf(light);
    if (filter.x != 1.0f || filter.y != 1.0f || filter.z != 1.0f) {
        notes.add(Note::kLightFilterColour, "red " + std::to_string(filter.x) + ", green " +
                                                std::to_string(filter.y) + ", blue " +
                                                std::to_string(filter.z));
    }
    if (const char* lost = LostDistribution(light.GetDistribution(), IsPoint(light.Type()))) {
        notes.add(Note::kLightDistribution, lost);
    }
}

void NotePower(const NodeNotes& notes, float power) {
    const int whole = notes ? TruncateToInt(static_cast<double>(power)) : 0;
    if (notes && static_cast<double>(whole) != static_cast<double>(power)) {
        notes.add(Note::kLightPowerCut, std::to_string(power) + " became " + std::to_string(whole));
    }
}

void NoteUnknownLight(const NodeNotes& notes, LightscapeLight& light, int type) {
    const int number = type - LightscapeLight::TARGET_POINT_TYPE;
    if (number >= 0 && number < static_cast<int>(std::size(kTypeNames))) {
        notes.add(Note::kLightKindUnknown, std::string("photometric ") + kTypeNames[number]);
    } else {
        NoteUnknownLight(notes, light);
    }
}

void NoteUnknownLight(const NodeNotes& notes, Object& light) {
    if (notes) {
        notes.add(Note::kLightKindUnknown, ClassText(light.ClassID()));
    }
}
