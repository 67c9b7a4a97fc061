#pragma once

#include <string>

namespace qor {

/// The facts about a renderer's scene that decide whether that renderer is chosen.
struct SceneTreeFindings {
    bool is_empty = false;
    bool holds_scene = false;
};

/// Searches the scene tree in `xml` for `scene_name`; an empty name is never found. `major_version`
/// is that of the renderer and determines how deep the search goes. If `xml` isn't well-formed,
/// both findings are false.
SceneTreeFindings SearchSceneTree(const char* xml, const std::string& scene_name,
                                  int major_version);

}  // namespace qor
