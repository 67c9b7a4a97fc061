#include "plugins/3dsmax/export/scene_exporter.h"

// There is no link to a running renderer yet.
void SceneExporter::ExportOverLink(const std::string&) {}
