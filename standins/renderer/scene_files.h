#pragma once

#include <cstdint>
#include <string>

namespace velmora {

/// Where scenes are kept that nobody has another folder for, as UTF-8.
std::string default_scene_folder();

/// What this renderer calls its scene of that number: a file's name without its ending.
std::string scene_file_name(std::uint64_t number);

/// Removes the scenes, whole or not, of renderers that are gone.
void remove_old_scenes(const std::string& folder);

}  // namespace velmora
