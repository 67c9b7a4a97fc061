#pragma once

#include <string>

#include "plugins/3dsmax/export/host.h"

/// Finds a file that a host scene refers to. Gives `name` itself if that file exists, otherwise the
/// first match in the host's folders for that type of asset; empty if there is none. All paths stay
/// in the host's 16-bit units.
std::wstring FindAssetFile(Interface* host, int asset_type, const std::wstring& name);
