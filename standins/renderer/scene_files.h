#pragma once

#include <cstdint>
#include <string>

namespace velmora {

/// The folder for scenes if the user has set no other, as UTF-8.
std::string default_scene_folder();

/// The file name of this renderer's scene with that number, without the extension.
std::string scene_file_name(std::uint64_t number);

/// Removes the scenes, finished or not, of renderers that no longer run.
void remove_old_scenes(const std::string& folder);

}  // namespace velmora
