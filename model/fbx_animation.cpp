#include "model/fbx_animation.h"

#include "importers/sceneapi/dev/qorscene_api.h"
#include "importers/sceneapi/dev/qorsceneapi_oo.h"

namespace qor {

FBXAnimation::FBXAnimation(std::string name, float start_time, float duration, bool interpolate)
    : name_(std::move(name)),
      start_time_(start_time),
      duration_(duration),
      interpolate_(interpolate) {}

void FBXAnimation::add_key(int timestamp, const qorMatrix& matrix) {
    timestamps_.push_back(timestamp);
    matrices_.push_back(matrix);
}

void FBXAnimation::emit(qorSceneapi_oo& scene) {
    qorScene_api& api = *scene.get_api();

    api.begin_animation(old_kind_ ? "fbx_animation" : "fbx_animation_2", name_.c_str());
    scene.set_parameter("start_time", start_time_);
    scene.set_parameter("duration", duration_);

    // The block goes on after a mismatch, so that a reader of the scene finds the error next to
    // the data that caused it.
    if (timestamps_.size() != matrices_.size()) {
        scene.print_error("Number of timestamps(" + std::to_string(timestamps_.size()) +
                          ") does not match number of matrices(" +
                          std::to_string(matrices_.size()) + ")");
    }
    scene.set_array("timestamps", timestamps_);
    scene.set_array("matrices", matrices_);

    scene.set_parameter("interpolate", interpolate_);
    scene.set_parameter("folder", folder_);
    api.end_animation();
}

}  // namespace qor
