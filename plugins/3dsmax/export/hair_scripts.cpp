#include "plugins/3dsmax/export/scene_exporter.h"

// The host's scripts can't be run yet, so hair stays with the modifier that grows it.
void SceneExporter::RunHairScript() {}
void SceneExporter::RunHairCleanupScript() {}
