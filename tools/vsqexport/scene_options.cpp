#include "tools/vsqexport/scene_options.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdio>
#include <optional>
#include <stdexcept>

#include "importers/sceneapi/dev/installation.h"
#include "tools/vsqexport/frame_number.h"
#include "tools/vsqexport/import/host_frame_rate.h"
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

void note_change(const char* code, const std::string& source, const char* text, LossReport& losses,
                 bool quiet) {
    if (!quiet) {
        std::fprintf(stderr, "vsqexport: warning: %s: %s\n", source.c_str(), text);
    }
    losses.add_shown({code, "changed", "", source, text, 1});
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
    note_change("import-size", source, text, losses, quiet);
}

// The range of a scene that is already there is in ticks, so it stays as it is.
void set_frame_rate(const SceneOptions& options, memhost::SceneBuilder& scene, LossReport& losses,
                    bool quiet) {
    scene.host().set_ticks_per_frame(nearest_ticks_per_frame(options.frames_per_second));
    if (const std::string change = change_of_rate(options.frames_per_second); !change.empty()) {
        note_change("import-frame-rate", options.scene, change.c_str(), losses, quiet);
    }
}

}  // namespace

LossReport open_scene(const SceneOptions& options, memhost::SceneBuilder& scene, bool quiet) {
    std::optional<int> unit;
    if (!options.unit.empty()) {
        unit = parse_unit(options.unit);
    }

    ImportOptions import = options.import;
    if (options.frames_per_second != 0) {
        import.frames_per_second = options.frames_per_second;
    }
    import.has_unit = unit.has_value();
    import.texture_folder = textures_folder();
    if (!options.up.empty()) {
        import.up_axis = options.up[0] - 'x';
    }
    LossReport losses = load_scene(options.scene, scene, quiet, import);
    if (options.frames_per_second != 0) {
        set_frame_rate(options, scene, losses, quiet);
    }
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
