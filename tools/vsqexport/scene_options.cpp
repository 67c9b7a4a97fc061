#include "tools/vsqexport/scene_options.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdio>
#include <optional>
#include <stdexcept>

#include "importers/sceneapi/dev/installation.h"
#include "tools/vsqexport/frame_number.h"
#include "tools/vsqexport/scene_source.h"

namespace vsqexport {

namespace {

struct UnitName {
    const char* name;
    int unit;
    double metres;
};

constexpr UnitName kUnitNames[] = {
    {"in", UNITS_INCHES, 0.0254},    {"ft", UNITS_FEET, 0.3048},
    {"mi", UNITS_MILES, 1609.344},   {"mm", UNITS_MILLIMETERS, 0.001},
    {"cm", UNITS_CENTIMETERS, 0.01}, {"m", UNITS_METERS, 1},
    {"km", UNITS_KILOMETERS, 1000},
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

double metres_of(int unit) {
    for (const UnitName& known : kUnitNames) {
        if (known.unit == unit) {
            return known.metres;
        }
    }
    return 1;
}

// Where the plug-in puts the maps that it draws. Empty if no renderer is installed.
std::string textures_folder() {
    const std::string resources =
        qor::Installation::get().resource_folder(qor::kOldestRenderer, qor::kNewestRenderer);
    return resources.empty() ? resources : resources + "/textures";
}

// Around all meshes, in the scene's units.
Box3 box_of(memhost::MemoryHost& host) {
    Box3 all;
    all.Init();
    for (const auto& node : host.nodes()) {
        Object* const object = node->EvalWorldState(0).obj;
        if (object != nullptr && object->SuperClassID() == GEOMOBJECT_CLASS_ID) {
            Box3 box;
            object->GetWorldBoundBox(0, node.get(), nullptr, box);
            all += box;
        }
    }
    return all;
}

// A size beyond what anybody models comes from a wrong unit.
void note_size(const std::string& source, memhost::MemoryHost& host, LossReport& losses,
               bool quiet) {
    constexpr double kLargestMetres = 10'000;
    constexpr double kSmallestMetres = 0.001;
    const Box3 box = box_of(host);
    const Point3 size = box.pmax - box.pmin;
    const double metres =
        static_cast<double>(std::max({size.x, size.y, size.z})) * metres_of(host.unit_type());
    // A scene without surfaces has no size.
    if (!(metres > 0) || !std::isfinite(metres) ||
        (metres <= kLargestMetres && metres >= kSmallestMetres)) {
        return;
    }
    char text[160];
    std::snprintf(text, sizeof text,
                  "the scene is %.3g m large; if its unit is wrong, set --unit or --scale", metres);
    if (!quiet) {
        std::fprintf(stderr, "vsqexport: warning: %s: %s\n", source.c_str(), text);
    }
    losses.add_shown({"import-size", "changed", "", source, text, 1});
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
    ImportOptions import = options.import;
    import.has_unit = unit.has_value();
    import.texture_folder = textures_folder();
    if (!options.up.empty()) {
        import.up_axis = options.up[0] - 'x';
    }
    LossReport losses = load_scene(options.scene, scene, quiet, import);
    scene.frames_per_second(options.frames_per_second);
    if (!options.frames.empty()) {
        apply_frames(options.frames, scene);
    }
    if (unit) {
        scene.unit(*unit);
    }
    scene.host().events().deliver();
    note_size(options.scene, scene.host(), losses, quiet);
    return losses;
}

}  // namespace vsqexport
