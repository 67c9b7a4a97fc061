#include "plugins/3dsmax/export/scene_exporter.h"

// The host's layers can't be asked for yet.
void SceneExporter::CountLayerNodes() {}
void SceneExporter::ExportLayers() {}
