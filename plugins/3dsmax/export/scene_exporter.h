#pragma once

#include <cstdint>
#include <memory>
#include <set>
#include <string>

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

/// Carries out one Render, Update, Export or Export Animation command from start to end.
///
/// It decides where the scene goes, walks the host's nodes and hands each to the conversion that
/// its object asks for. Nothing of the scene is held: a node's objects are built, written and
/// dropped while the walk is on that node. An exporter is built for a command, run once, and
/// destroyed.
///
///     SceneExporter exporter(host, host->GetRootNode(), options, changed_nodes);
///     exporter.Run(path, false, true, false);
///
/// Cancelling in the host cuts the walk short but leaves a well-formed scene.
class SceneExporter {
public:
    /// Borrows `host` and `root_node`. Only an update looks at `changed_nodes`.
    SceneExporter(Interface* host, INode* root_node, std::shared_ptr<Qor::Options> options,
                  std::set<INode*> changed_nodes);
    SceneExporter(const SceneExporter&) = delete;
    SceneExporter& operator=(const SceneExporter&) = delete;
    ~SceneExporter();

    /// Always true, also after a cancel or a failed link. `path` is UTF-8 and empty for a link.
    /// Throws `std::runtime_error` if a scene file can't be opened or wasn't written whole, and
    /// passes on what else goes wrong on the way.
    bool Run(const std::string& path, bool update, bool to_file, bool animation);

private:
    // The roads of a run.
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
    void OpenNode(INode* node, bool in_group);
    bool ExportNode(INode* node, bool child_content);
    void ExportCameras(INode* node);
    void CountLayerNodes();
    void ExportLayers();
    bool ExportLayerNode(INode* node);
    void ReportProgress(INode* node);

    // What a node's object is turned into. True if the node was taken up, even where nothing of it
    // came out; such a node, and those above it, can carry a track of their motion.
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

    Interface* host_;
    INode* root_node_;
    std::unique_ptr<qor::LightFactory> factory_;  // null between passes, as is the scene
    std::unique_ptr<qor::qorSceneapi_oo> scene_;
    std::uint32_t node_count_ = 0;  // what the progress bar counts against
    std::uint32_t nodes_done_ = 0;
    FrameTiming timing_;
    std::shared_ptr<Qor::Options> options_;
    std::set<INode*> changed_nodes_;
    std::unique_ptr<LightConverter> lights_;
    std::unique_ptr<MeshPartBuilder> mesh_parts_;  // keeps its storage from one mesh to the next
    Box3 scene_box_;  // of all meshes and shapes so far, in world space
    bool animation_ = false;
    bool update_ = false;
};
