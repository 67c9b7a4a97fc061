#pragma once

#include <string>

#include "standins/host/sdk/max.h"

namespace memhost {

/// A string resource of a loaded module. Empty if the module has none with that id.
std::wstring module_string(HINSTANCE module, UINT id);

}  // namespace memhost
