#include "tools/vsqexport/scene_options.h"

#include <cstddef>
#include <optional>
#include <stdexcept>

#include "tools/vsqexport/frame_number.h"
#include "tools/vsqexport/scene_source.h"

namespace vsqexport {

namespace {

struct UnitName {
    const char* name;
    int unit;
};

constexpr UnitName kUnitNames[] = {
    {"in", UNITS_INCHES},      {"ft", UNITS_FEET},        {"mi", UNITS_MILES},
    {"mm", UNITS_MILLIMETERS}, {"cm", UNITS_CENTIMETERS}, {"m", UNITS_METERS},
    {"km", UNITS_KILOMETERS},
};

int parse_unit(const std::string& name) {
    std::string known;
    for (const UnitName& unit : kUnitNames) {
        if (name == unit.name) {
            return unit.unit;
        }
        known += (known.empty() ? "" : ", ") + std::string(unit.name);
    }
    throw std::invalid_argument("no unit is named '" + name + "' (known: " + known + ")");
}

void apply_frames(const std::string& frames, memhost::SceneBuilder& scene) {
    const std::size_t colon = frames.find(':');
    std::optional<int> first;
    std::optional<int> last;
    if (colon != std::string::npos) {
        first = parse_frame(frames.substr(0, colon));
        last = parse_frame(frames.substr(colon + 1));
    }
    if (!first || !last || *first > *last) {
        throw std::invalid_argument("--frames takes FIRST:LAST, up to " +
                                    std::to_string(kLargestFrame) + ", not '" + frames + "'");
    }
    scene.animation_frames(*first, *last);
}

}  // namespace

LossReport open_scene(const SceneOptions& options, memhost::SceneBuilder& scene, bool quiet) {
    std::optional<int> unit;
    if (!options.unit.empty()) {
        unit = parse_unit(options.unit);
    }

    // The range of a model is counted in frames, so the rate is set before the scene is loaded. A
    // demo scene sets a rate of its own, which the second call replaces.
    scene.frames_per_second(options.frames_per_second);
    LossReport losses = load_scene(options.scene, scene, quiet, options.animations);
    scene.frames_per_second(options.frames_per_second);
    if (!options.frames.empty()) {
        apply_frames(options.frames, scene);
    }
    if (unit) {
        scene.unit(*unit);
    }
    scene.host().events().deliver();
    return losses;
}

}  // namespace vsqexport
