#pragma once

#include <string>
#include <vector>

#include "tools/vsqexport/reported_command.h"

namespace vsqexport {

/// The exports of many scenes, each by a process of its own.
struct BatchOptions {
    std::vector<std::string> sources;    ///< scenes, and folders that are searched for model files
    std::string out_folder;              ///< made if it is missing
    int jobs = 0;                        ///< processes at a time; 0 is one for each processor
    double timeout = 0;                  ///< seconds for each file; 0 is no limit
    std::vector<std::string> passed_on;  ///< options for each export
};

struct BatchResult {
    int failed = 0;
    int cancelled = 0;  ///< by Ctrl-C, including those that never began
    int strict = 0;     ///< exports that the strict option calls failed
};

/// Exports the scenes and prints a line for each and a summary; failures on standard error. The
/// report has the results of all. Throws `std::invalid_argument` or `std::runtime_error` with one
/// line if nothing can be begun, or if the report can't be written.
BatchResult export_batch(const BatchOptions& options, const ReportOptions& report);

}  // namespace vsqexport
