#pragma once

#include <string>

#include "plugins/3dsmax/export/host.h"

/// The path of a file that a scene names: the name itself if there is such a file, else the first
/// match in the host's folders for that kind of asset. Empty if there is none. Names and folders
/// stay in the host's 16-bit units.
std::wstring FindAssetFile(Interface* host, int asset_type, const std::wstring& name);
