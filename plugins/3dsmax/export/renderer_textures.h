#pragma once

#include <string>

/// The folder, with a slash behind it, in which the renderer looks for textures. Without an
/// installation that is "/textures/" alone.
std::string GetRendererTexturesFolder();
