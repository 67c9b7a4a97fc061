#pragma once

#include <istream>
#include <optional>
#include <string>
#include <vector>

#include "tools/vsqinfo/checks/findings.h"
#include "tools/vsqinfo/qort_summary.h"
#include "tools/vsqinfo/vsq_listener.h"
#include "tools/vsqinfo/vsq_summary.h"

namespace vsqinfo {

/// What one file holds, and what the checks have found in it.
struct FileReport {
    std::string file;  ///< the path as it was given, or "-"
    bool is_mesh = false;
    /// One of the two, unless reading failed.
    std::optional<VsqSummary> scene;
    std::optional<QortSummary> mesh;
    Findings findings;
    /// Why reading failed, in one line; empty if it didn't. A malformed file is a finding as well.
    std::string failure;

    bool has_errors() const { return !failure.empty() || findings.count(Severity::kError) != 0; }
};

/// Reads and checks the scene or mesh file at `path`, which is UTF-8; "-" is standard input.
/// `listener` gets the blocks and matrices of a scene, and may be null. Never throws for a file
/// that can't be read.
FileReport report_on_file(const std::string& path, VsqListener* listener = nullptr);

/// The summary, and a list of the findings, worst first: of each check the first few.
std::string report_text(const FileReport& report);

/// The reports as one JSON object, as docs/checks.md describes it.
std::string reports_json(const std::vector<FileReport>& reports);

/// All checks with their severity and meaning, one line each.
std::string list_of_checks();

}  // namespace vsqinfo
