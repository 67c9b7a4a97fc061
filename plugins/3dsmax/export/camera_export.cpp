#include <cstdint>
#include <memory>
#include <string>

#include "importers/sceneapi/dev/qorsceneapi_oo.h"
#include "model/light_camera.h"
#include "model/light_viewset.h"
#include "plugins/3dsmax/export/light_converter.h"
#include "plugins/3dsmax/export/motion_samples.h"
#include "plugins/3dsmax/export/motion_track.h"
#include "plugins/3dsmax/export/narrow_name.h"
#include "plugins/3dsmax/export/scene_exporter.h"
#include "plugins/3dsmax/export/scene_matrix.h"
#include "plugins/3dsmax/export/truncated_int.h"

namespace {

constexpr float kPi = 3.1415927f;

// A near plane at or below this distance counts as not set.
constexpr float kLeastNearPlane = 1.0f;

struct StateAtTime {
    CameraState state;  // all zero until the camera fills it
    Interval valid = FOREVER;
    bool is_read = false;
};

StateAtTime StateOf(CameraObject& camera, TimeValue t) {
    StateAtTime at_time;
    at_time.is_read = camera.EvalCameraState(t, at_time.valid, &at_time.state) == REF_SUCCEED;
    if (!at_time.is_read) {
        at_time.state = CameraState();  // a camera that fails can leave anything behind
    }
    return at_time;
}

// The state can change without a change of the field of view, so the frames are asked.
bool FovChanges(CameraObject& camera, float fov, const FrameTiming& timing) {
    for (const TimeValue t : timing.Times()) {
        if (StateOf(camera, t).state.fov != fov) {
            return true;
        }
    }
    return false;
}

bool ClippingIsSent(const CameraState& state) {
    return state.hither > kLeastNearPlane && state.manualClip;
}

// `timing` is null for a frame of an animation.
void NoteState(const NodeNotes& notes, CameraObject& camera, const StateAtTime& at_time,
               TimeValue t, const FrameTiming* timing) {
    const CameraState& state = at_time.state;
    if (!at_time.is_read) {
        notes.add(Note::kCameraStateUnread, "at tick " + std::to_string(t));
        return;
    }
    if (state.isOrtho) {
        notes.add(Note::kCameraOrthographic);
    }
    if (state.manualClip && !ClippingIsSent(state)) {
        notes.add(Note::kCameraClippingNotSent,
                  "near " + std::to_string(state.hither) + ", far " + std::to_string(state.yon));
    }
    if (timing != nullptr && !timing->RangeIsWithin(at_time.valid) &&
        FovChanges(camera, state.fov, *timing)) {
        notes.add(Note::kCameraFovAnimated);
    }
}

// Four times the diagonal of the scene. The product wraps at 32 bits: an empty scene box has an
// infinite diagonal, which gives the radius 0.
int EnvironmentRadius(const Box3& scene_box) {
    const float diagonal = (scene_box.pmax - scene_box.pmin).Length();
    const auto whole = static_cast<std::uint32_t>(TruncateToInt(static_cast<double>(diagonal)));
    return static_cast<int>(whole * 4u);
}

// Cameras are written before the lights and meshes of their pass. So a sky light appears only in
// the cameras of a later run of the same exporter, and the box covers only earlier passes.
std::unique_ptr<qor::LightCamera> MakeCamera(const std::string& name,
                                             const std::string& environment,
                                             const Box3& scene_box) {
    if (environment.empty()) {
        return std::make_unique<qor::LightCamera>(name);
    }
    return std::make_unique<qor::LightViewset>(name, environment, EnvironmentRadius(scene_box));
}

// The host's angles are in radians.
void SetLens(qor::LightCamera& camera, const CameraState& state) {
    camera.set_fov(state.fov * 180.0f / kPi);
    if (ClippingIsSent(state)) {
        camera.set_clipping(state.hither, state.yon);
    }
}

// A camera's track holds whole matrices, one per frame. A node's track holds changes.
std::shared_ptr<qor::Animation> MotionOf(INode* node, const FrameTiming& timing,
                                         MotionSamples& motion) {
    motion.prepare(node);
    const Matrix3* sample = motion.of(node);
    auto track = std::make_shared<qor::FBXAnimation>(MakeMotionTrack("", timing));
    for (const TimeValue t : timing.Times()) {
        track->add_key(timing.KeyTimestamp(t),
                       ToSceneMatrix(sample != nullptr ? *sample++ : node->GetNodeTM(t)));
    }
    return track;
}

}  // namespace

// The matrix alone carries position and aim. This holds for target cameras too, since the host
// turns their nodes towards the target.
void SceneExporter::ExportCamera(INode* node) {
    Object* object = node->EvalWorldState(timing_.rangeStart, TRUE).obj;
    if (notes_ != nullptr) {
        notes_->begin_node();
    }
    if (object == nullptr) {
        NoteMissingObject(node);
        return;
    }
    CameraObject& host_camera = *static_cast<CameraObject*>(object);
    const StateAtTime at_time = StateOf(host_camera, timing_.time);
    if (notes_ != nullptr) {
        NoteState(NotesOf(node), host_camera, at_time, timing_.time,
                  animation_ ? nullptr : &timing_);
    }
    const std::unique_ptr<qor::LightCamera> camera =
        MakeCamera(NarrowName(node->GetName()), lights_->environment(), scene_box_);

    Interval valid = FOREVER;
    Matrix3 matrix = node->GetNodeTM(timing_.time, &valid);
    const bool moves = !timing_.RangeIsWithin(valid);
    const bool animated = options_->CameraAnimations && moves;
    if (moves && !animated && !animation_) {
        NotesOf(node).add(Note::kTrackSwitchedOff, "the setting CameraAnimations is off");
    }
    if (!animated) {
        matrix.Orthogonalize();
        camera->set_transform(ToSceneMatrix(matrix));
    }
    camera->set_direction(0, 0, -1);
    camera->set_up(0, 1, 0);
    camera->set_position(0, 0, 0);
    SetLens(*camera, at_time.state);
    if (animated) {
        camera->set_animation(MotionOf(node, timing_, *motion_));
    }
    scene_->emit(*camera);
}
