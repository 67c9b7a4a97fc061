#pragma once

#include <cstdint>
#include <memory>
#include <set>
#include <string>
#include <vector>

#include "plugins/3dsmax/export/export_notes.h"
#include "plugins/3dsmax/export/frame_timing.h"
#include "plugins/3dsmax/export/host.h"
#include "plugins/3dsmax/export/options.h"

namespace qor {
class LightFactory;
class qorSceneapi_oo;
}  // namespace qor

template <typename Type>
class ConvertedObject;
class LightConverter;
class MaterialTable;
class MeshPartBuilder;
class MotionSamples;
class SiblingNames;

/// Carries out one Render, Update, Export or Export Animation command from start to end.
///
/// It chooses the destination, walks the host's nodes and passes each to the conversion for its
/// object. It keeps nothing of the scene: a node's objects are built, written and dropped before
/// the walk goes on. An exporter is made for one command, run once, and destroyed.
///
///     SceneExporter exporter(host, host->GetRootNode(), options, changed_nodes);
///     exporter.Run(path, false, true, false);
///
/// Cancelling in the host cuts the walk short but leaves a well-formed scene.
class SceneExporter {
public:
    /// Borrows `host`, `root_node` and `notes`. Only an update uses `changed_nodes`. What is left
    /// out or changed is added to `notes` unless that is null; the export itself stays the same.
    SceneExporter(Interface* host, INode* root_node, std::shared_ptr<Qor::Options> options,
                  std::set<INode*> changed_nodes, ExportNotes* notes = nullptr);
    SceneExporter(const SceneExporter&) = delete;
    SceneExporter& operator=(const SceneExporter&) = delete;
    ~SceneExporter();

    /// Always returns true, even after a cancel or a failed link. `path` is UTF-8, and empty for a
    /// link. Throws `std::runtime_error` if a scene file can't be opened or completely written.
    /// Other exceptions during a file export reach the caller.
    bool Run(const std::string& path, bool update, bool to_file, bool animation);

private:
    // Runs into a file, into one file per frame, or over a link.
    void ExportFile(const std::string& path);
    void ExportAnimation(const std::string& path);
    void ExportFrame(TimeValue t, const std::string& path);
    void ExportOverLink(const std::string& path);
    bool SendOverLink();
    void OpenFile(const std::string& path);
    void CloseFile();
    void ExportPass(bool adjust_camera, bool adjust_environment, std::uint32_t scene_flags);

    // The walk over the node tree, and the pass over the layers.
    void CountNodes(INode* node);
    bool WalkNode(INode* top, bool in_group);
    void OpenNode(INode* node, bool in_group, SiblingNames& siblings);
    bool ExportNode(INode* node, bool child_content);
    void ExportCameras(INode* node);
    void CountLayerNodes();
    std::vector<INode*> LayerNodes() const;
    void ExportLayers();
    bool ExportLayerNode(INode* node);
    void ReportProgress(INode* node);

    // The conversions of a node's object. They return true if the node was handled, even if nothing
    // was written for it. Only such nodes and those above them can have a motion track.
    bool ExportObject(INode* node, Object* object, bool may_deform);
    bool ExportMesh(INode* node);
    bool ExportDeformable(INode* node);
    bool ExportCurves(INode* node);
    bool ExportLight(INode* node);

    void ExportCamera(INode* node);
    void ExportMeshPart(INode* node, int part, const MaterialTable& table);
    ConvertedObject<TriObject> GetTriObject(INode* node, TimeValue t) const;
    void AddToSceneBox(INode* node, Object* object, ViewExp* view);
    bool NodeIsWanted(INode* node) const;
    void EmitNodeTransform(INode* node, bool relative_to_parent, bool has_content);
    void EmitTransformAnimation(INode* node, INode* parent, const Matrix3& base);
    void PlanMotion();
    bool MayHaveContent(INode* node, Object* object) const;

    // What this class notes itself. These do nothing without notes.
    NodeNotes NotesOf(INode* node) const { return {notes_, node}; }
    void NoteHiddenObject(INode* node);
    void NoteMissingObject(INode* node);
    void NoteShapeOverTime(INode* node, const Interval& valid, const char* why);
    void NoteCancel(const std::string& reached);
    void NoteBrokenLink(const char* reason);

    Interface* host_;
    INode* root_node_;
    std::unique_ptr<qor::LightFactory> factory_;  // null between passes, like `scene_`
    std::unique_ptr<qor::qorSceneapi_oo> scene_;
    std::uint32_t node_count_ = 0;  // the total of the progress bar
    std::uint32_t nodes_done_ = 0;
    ExportNotes* notes_;  // null if nothing is noted
    FrameTiming timing_;
    std::shared_ptr<Qor::Options> options_;
    std::set<INode*> changed_nodes_;
    std::unique_ptr<LightConverter> lights_;
    std::unique_ptr<MeshPartBuilder> mesh_parts_;  // reuses its storage for each mesh
    std::unique_ptr<MotionSamples> motion_;
    Box3 scene_box_;  // of all meshes and shapes so far, in world space
    bool animation_ = false;
    bool update_ = false;
};
