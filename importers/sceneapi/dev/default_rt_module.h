#pragma once

#include <string>
#include <utility>

#include "importers/sceneapi/dev/light_module.h"

namespace qor {

/// The options with which the renderer imports the scene. They come first in every scene.
class DefaultRTModule final : public LightModule {
public:
    DefaultRTModule();

    void set_import_mode(bool on) { import_mode_ = on; }
    void set_import_merge_groups(bool on) { import_merge_groups_ = on; }
    void set_import_merge_objects(bool on) { import_merge_objects_ = on; }
    /// The axis that points up: 0 is x, 1 is y, 2 is z.
    void set_import_up_vector(int axis) { import_up_vector_ = axis; }
    /// Scene units per metre.
    void set_meter_scale(float units_per_meter) { meter_scale_ = units_per_meter; }
    void set_import_keep_original(bool on) { import_keep_original_ = on; }
    void set_import_center_geometry(bool on) { import_center_geometry_ = on; }
    void set_import_snap_to_ground(bool on) { import_snap_to_ground_ = on; }
    void set_import_adjust_camera(bool on) { import_adjust_camera_ = on; }
    void set_import_adjust_environment(bool on) { import_adjust_environment_ = on; }
    /// The camera to look through. With an empty name, the option isn't written.
    void set_import_use_camera(std::string name) { import_use_camera_ = std::move(name); }
    void set_ext(bool on) { ext_ = on; }

    void write_parameters(qorSceneapi_oo& scene) override;

private:
    bool import_mode_ = true;
    bool import_merge_groups_ = true;
    bool import_merge_objects_ = true;
    int import_up_vector_ = 0;
    float meter_scale_ = 1.0f;
    bool import_keep_original_ = false;
    bool import_center_geometry_ = true;
    bool import_snap_to_ground_ = false;
    bool import_adjust_camera_ = true;
    bool import_adjust_environment_ = true;
    std::string import_use_camera_;
    bool ext_ = true;
};

}  // namespace qor
