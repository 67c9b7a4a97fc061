#include "plugins/3dsmax/export/scene_exporter.h"

// Cameras don't reach the scene yet.
void SceneExporter::ExportCamera(INode*) {}
