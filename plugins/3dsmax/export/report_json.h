#pragma once

#include <string>

#include "plugins/3dsmax/export/export_notes.h"

/// The report of an exporting command as one JSON object in UTF-8, which docs/report.md describes.
/// `command` is "export", "animation", "render" or "update".
std::string ReportJson(const ExportNotes& notes, const std::string& command);
