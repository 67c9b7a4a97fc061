#include "plugins/3dsmax/export/scene_exporter.h"

// Meshes that change their shape don't reach the scene yet.
bool SceneExporter::ExportDeformable(INode*) {
    return false;
}
