#include "plugins/3dsmax/export/scene_exporter.h"

// A range of frames can't be exported yet.
void SceneExporter::ExportAnimation(const std::string&) {}
