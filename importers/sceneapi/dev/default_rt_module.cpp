#include "importers/sceneapi/dev/default_rt_module.h"

#include "importers/sceneapi/dev/qorsceneapi_oo.h"

namespace qor {

DefaultRTModule::DefaultRTModule() : LightModule("qorrtopt.so") {}

void DefaultRTModule::write_parameters(qorSceneapi_oo& scene) {
    scene.set_parameter("import_mode", import_mode_);
    scene.set_parameter("import_merge_groups", import_merge_groups_);
    scene.set_parameter("import_merge_objects", import_merge_objects_);
    scene.set_parameter("import_up_vector", import_up_vector_);
    scene.set_parameter("meter_scale", meter_scale_);
    scene.set_parameter("import_keep_original", import_keep_original_);
    scene.set_parameter("import_center_geometry", import_center_geometry_);
    scene.set_parameter("import_snap_to_ground", import_snap_to_ground_);
    scene.set_parameter("import_adjust_camera", import_adjust_camera_);
    scene.set_parameter("import_adjust_environment", import_adjust_environment_);
    if (!import_use_camera_.empty()) {
        scene.set_parameter("import_use_camera", import_use_camera_);
    }
    scene.set_parameter("ext", ext_);
}

}  // namespace qor
