#include "plugins/3dsmax/export/scene_exporter.h"

// Shapes don't reach the scene yet.
bool SceneExporter::ExportCurves(INode*) {
    return false;
}
