#include "plugins/3dsmax/export/scene_exporter.h"

// Meshes don't reach the scene yet.
bool SceneExporter::ExportMesh(INode*) {
    return false;
}
