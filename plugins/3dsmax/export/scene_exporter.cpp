#include "plugins/3dsmax/export/scene_exporter.h"

#include <utility>

#include "importers/sceneapi/dev/default_rt_module.h"
#include "importers/sceneapi/dev/light_file_factory.h"
#include "importers/sceneapi/dev/qorscene_api.h"
#include "importers/sceneapi/dev/qorsceneapi_oo.h"
#include "plugins/3dsmax/export/group_flags.h"
#include "plugins/3dsmax/export/hair_scripts.h"
#include "plugins/3dsmax/export/light_converter.h"
#include "plugins/3dsmax/export/mesh_part.h"
#include "plugins/3dsmax/export/motion_samples.h"
#include "plugins/3dsmax/export/unit_scale.h"

namespace {

constexpr int kUpIsZ = 2;

// Tells the renderer how to import the scene.
void EmitModule(qor::qorSceneapi_oo& scene, bool adjust_camera, bool adjust_environment) {
    qor::DefaultRTModule module;
    module.set_import_mode(true);
    module.set_import_merge_groups(false);
    module.set_import_merge_objects(true);
    module.set_import_adjust_environment(adjust_environment);
    module.set_import_adjust_camera(adjust_camera);
    module.set_import_center_geometry(false);
    module.set_import_keep_original(true);
    module.set_import_up_vector(kUpIsZ);
    module.set_meter_scale(GetUnitScale());
    module.set_ext(false);
    scene.emit(module);
}

}  // namespace

SceneExporter::SceneExporter(Interface* host, INode* root_node,
                             std::shared_ptr<Qor::Options> options, std::set<INode*> changed_nodes,
                             ExportNotes* notes)
    : host_(host),
      root_node_(root_node),
      notes_(notes),
      options_(std::move(options)),
      changed_nodes_(std::move(changed_nodes)),
      lights_(std::make_unique<LightConverter>(options_, host, notes)),
      mesh_parts_(std::make_unique<MeshPartBuilder>()),
      motion_(std::make_unique<MotionSamples>()) {
    const Interval range = host->GetAnimRange();
    timing_ = {range.Start(), range.End(), host->GetTime(), GetTicksPerFrame()};
}

SceneExporter::~SceneExporter() = default;

bool SceneExporter::Run(const std::string& path, bool update, bool to_file, bool animation) {
    animation_ = animation;
    update_ = update;

    node_count_ = 0;
    if (options_->Layers) {
        CountLayerNodes();
    } else {
        CountNodes(root_node_);
    }

    if (!to_file) {
        ExportOverLink(path);
    } else if (animation) {
        ExportAnimation(path);
    } else {
        ExportFile(path);
    }
    return true;
}

void SceneExporter::ExportFile(const std::string& path) {
    OpenFile(path);
    ExportPass(true, true, 0);
    CloseFile();
}

void SceneExporter::OpenFile(const std::string& path) {
    factory_ = std::make_unique<qor::LightFileFactory>(path);
    scene_ = std::make_unique<qor::qorSceneapi_oo>(*factory_);
}

// Closes the factory explicitly, since a destructor can't report a failure.
void SceneExporter::CloseFile() {
    scene_.reset();
    factory_->close();
    factory_.reset();
}

// An object's box counts even if the object is left out later on.
void SceneExporter::AddToSceneBox(INode* node, Object* object, ViewExp* view) {
    Box3 box;
    object->GetWorldBoundBox(timing_.time, node, view, box);
    scene_box_ += box;
}

// Makes one pass over the host's scene and writes it into the open scene.
void SceneExporter::ExportPass(bool adjust_camera, bool adjust_environment,
                               std::uint32_t scene_flags) {
    if (notes_ != nullptr) {
        notes_->begin_pass();
    }
    if (options_->HairAndFur && !RunHairScript()) {
        NotesOf(nullptr).add(Note::kHairScriptFailed, "the script that makes the splines");
    }
    PlanMotion();
    EmitModule(*scene_, adjust_camera, adjust_environment);

    scene_->begin_group("object");
    scene_->get_api()->set_flags(options_->Layers ? scene_flags | kLayersFlag : scene_flags);
    if (options_->cameras) {
        ExportCameras(root_node_);
    }
    if (options_->Layers) {
        ExportLayers();
    } else {
        WalkNode(root_node_, false);
    }
    scene_->end_group();

    if (options_->HairAndFur && !RunHairCleanupScript()) {
        NotesOf(nullptr).add(Note::kHairScriptFailed, "the script that deletes the splines");
    }
}

void SceneExporter::NoteCancel(const std::string& reached) {
    if (notes_ != nullptr) {
        notes_->add_once(Note::kExportCancelled, reached);
    }
}
