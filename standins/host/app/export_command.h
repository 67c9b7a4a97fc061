#pragma once

#include <memory>
#include <string>

#include "plugins/3dsmax/export/options.h"
#include "standins/host/sdk/max.h"

namespace app {

/// The Export command: writes the host's scene to `path`, with the host's progress bar up for as
/// long. A file that can't be opened or wasn't written whole is told in a message box, and the
/// result is false.
bool run_export_command(Interface* host, const std::shared_ptr<Qor::Options>& options,
                        const std::string& path);

}  // namespace app
