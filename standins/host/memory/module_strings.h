#pragma once

#include <string>

#include "standins/host/sdk/max.h"

namespace memhost {

/// A string resource of a loaded module, or nothing if it has none of that id.
std::wstring module_string(HINSTANCE module, UINT id);

}  // namespace memhost
