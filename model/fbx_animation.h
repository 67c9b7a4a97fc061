#pragma once

#include <string>
#include <utility>
#include <vector>

#include "importers/sceneapi/dev/scene_types.h"
#include "model/animation.h"

namespace qor {

/// The motion of a node or a camera: a track of sampled matrices, one per key.
///
/// A scene holds no controllers and no animation curves. Whoever owns the motion samples it, adds
/// the samples as keys and emits the track once; both arrays go into the scene by value.
///
///     FBXAnimation track("Box013ds_animation", 0.0f, duration, true);
///     track.add_key(0, first_frame);
///     track.add_key(33, second_frame);
///     track.emit(scene);
class FBXAnimation final : public Animation {
public:
    /// `start_time` and `duration` are in seconds, unlike the timestamps of the keys.
    FBXAnimation(std::string name, float start_time, float duration, bool interpolate);

    /// Appends a key. `timestamp` counts 33 units per frame from the first frame of the range. The
    /// caller chooses what `matrix` is relative to: a node gives the change from the matrix that it
    /// has emitted, a camera its whole matrix.
    void add_key(int timestamp, const qorMatrix& matrix);

    void set_folder(std::string folder) { folder_ = std::move(folder); }

    /// Selects the block kind "fbx_animation" in place of "fbx_animation_2".
    void set_old_kind(bool old_kind) { old_kind_ = old_kind; }

    /// Writes the block at the scene's current position: in a group after the node's matrix, or
    /// inside a camera. Arrays of different lengths are written unchanged, after an error message.
    void emit(qorSceneapi_oo& scene) override;

    /// Does nothing: a track can't be defined for later use.
    void define(qorSceneapi_oo&) override {}
    bool is_defined() const override { return false; }

private:
    std::string name_;
    std::string folder_;
    float start_time_;
    float duration_;
    std::vector<int> timestamps_;
    std::vector<qorMatrix> matrices_;  // one per timestamp
    bool interpolate_;
    bool old_kind_ = false;
};

}  // namespace qor
