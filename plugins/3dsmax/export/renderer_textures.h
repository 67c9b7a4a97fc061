#pragma once

#include <string>

/// The renderer's folder for textures, with a slash at the end. Just "/textures/" if no renderer is
/// installed.
std::string GetRendererTexturesFolder();
