#pragma once

#include "plugins/3dsmax/export/export_notes.h"

/// Writes one line per kind of note to the renderer's log `sceneapi.log`, worst first: how many
/// nodes, and the first of them. Nothing without notes or without a registered renderer.
void LogReport(const ExportNotes& notes);
