#include "plugins/3dsmax/export/deformable_capture.h"

#include <algorithm>
#include <map>
#include <string>

#include "model/deformable_triangle_animation.h"
#include "model/triangle_object.h"
#include "plugins/3dsmax/export/converted_object.h"
#include "plugins/3dsmax/export/material_notes.h"
#include "plugins/3dsmax/export/material_table.h"
#include "plugins/3dsmax/export/mesh_notes.h"
#include "plugins/3dsmax/export/mesh_part.h"
#include "plugins/3dsmax/export/narrow_name.h"

namespace {

// The folder for this plug-in's libraries, below the renderer's folder for animations.
constexpr char kLibraryFolder[] = "3ds max";

// Captures a node frame by frame, into one animation for each of its parts.
class DeformableRecorder {
public:
    DeformableRecorder(INode* node, const FrameTiming& timing, const Qor::Options& options,
                       MeshPartBuilder& parts, ExportNotes* notes)
        : node_(node),
          name_(NarrowName(node->GetName())),
          timing_(timing),
          options_(options),
          parts_(parts),
          notes_{notes, node} {}

    void CaptureFrame(TimeValue t, int frame);
    std::vector<std::shared_ptr<qor::DeformableTriangleAnimation>> Finish();

private:
    void CapturePart(int part, int frame, TimeValue t, const MaterialTable& table,
                     const Matrix3& node_from_object);
    std::shared_ptr<qor::DeformableTriangleAnimation> MakeAnimation() const;

    INode* node_;
    std::string name_;
    const FrameTiming& timing_;
    const Qor::Options& options_;
    MeshPartBuilder& parts_;
    NodeNotes notes_;
    CopiedMesh copy_;  // of the current frame; the storage is reused for all frames
    std::shared_ptr<qor::TriangleObject> object_ = std::make_shared<qor::TriangleObject>("temp");
    std::map<int, std::shared_ptr<qor::DeformableTriangleAnimation>> animations_;  // by part
};

// A frame in which the node has no mesh just leaves a gap in the frame numbers.
void DeformableRecorder::CaptureFrame(TimeValue t, int frame) {
    Object* object = node_->EvalWorldState(t, TRUE).obj;
    if (object == nullptr || object->SuperClassID() != GEOMOBJECT_CLASS_ID) {
        notes_.add(Note::kObjectMissing, "in some of the frames that are captured");
        return;
    }
    const Class_ID class_id = object->ClassID();
    if (IsLeftOutAsMesh(class_id, options_)) {
        NoteLeftOutClass(notes_, class_id, options_);
        return;
    }
    const ConvertedObject<TriObject> tri_object(object, t, kTriangleObject);
    if (tri_object.get() == nullptr) {
        if (notes_) {
            notes_.add(Note::kMeshNotConvertible, ClassText(class_id));
        }
        return;
    }
    copy_.Assign(tri_object->GetMesh());
    const Mesh& mesh = copy_.mesh;
    if (mesh.numVerts < 1 || mesh.numFaces < 1 || !UsesItsOwnVertices(mesh)) {
        NoteLeftOutMesh(notes_, mesh);
        return;
    }

    NoteMeshExtras(notes_, mesh);
    const MaterialTable table = make_material_table(mesh, node_, t, notes_.notes);
    parts_.begin(copy_, table);
    const Matrix3 node_from_object = NodeFromObject(node_, t, notes_.notes);
    for (int part = 0; parts_.has_part(part); ++part) {
        CapturePart(part, frame, t, table, node_from_object);
    }
}

void DeformableRecorder::CapturePart(int part, int frame, TimeValue t, const MaterialTable& table,
                                     const Matrix3& node_from_object) {
    if (!parts_.build(part, node_from_object, *object_)) {
        NoteUnsoundCoordinates(*table.entry(part));
    }
    std::shared_ptr<qor::DeformableTriangleAnimation>& animation = animations_[part];
    const bool is_new = animation == nullptr;
    if (is_new) {
        animation = MakeAnimation();
    }
    animation->add_frame({object_, frame});
    animation->add_timestamp(timing_.FrameKeyTime(t));
    if (is_new) {
        animation->set_material(table.entry(part)->material);
    }
    parts_.keep_storage_of(*object_);
}

std::shared_ptr<qor::DeformableTriangleAnimation> DeformableRecorder::MakeAnimation() const {
    auto animation = std::make_shared<qor::DeformableTriangleAnimation>(
        name_, 0.0f, timing_.TrackDuration(), "", kLibraryFolder);
    animation->reserve_frames(static_cast<std::size_t>(std::max(timing_.FrameCount(), 1.0f)));
    return animation;
}

std::vector<std::shared_ptr<qor::DeformableTriangleAnimation>> DeformableRecorder::Finish() {
    std::vector<std::shared_ptr<qor::DeformableTriangleAnimation>> animations;
    for (const auto& [part, animation] : animations_) {
        if (!animation->write_library() && notes_) {
            NoteUnwrittenLibrary(notes_, animation->library_path());
        }
        animations.push_back(animation);
    }
    return animations;
}

}  // namespace

std::vector<std::shared_ptr<qor::DeformableTriangleAnimation>> CaptureDeformable(
    INode* node, const FrameTiming& timing, Interface* host, const Qor::Options& options,
    MeshPartBuilder& parts, ExportNotes* notes) {
    DeformableRecorder recorder(node, timing, options, parts, notes);
    int frame = 0;
    for (const TimeValue t : timing.Times()) {
        if (host->GetCancel()) {
            NodeNotes{notes, node}.add(Note::kCaptureCancelled,
                                       std::to_string(frame) + " frames were captured");
            break;
        }
        recorder.CaptureFrame(t, frame);
        ++frame;
    }
    return recorder.Finish();
}
