#pragma once

#include <string>

namespace qor {

/// What a renderer's scene, told as an XML text, means for the choice among running renderers.
struct SceneTreeFindings {
    bool is_empty = false;
    bool holds_scene = false;
};

/// Searches the tree for `scene_name`; an empty name is found nowhere. `major_version`, the
/// renderer's, decides how deep. A text that isn't well-formed counts as an empty document, which
/// tells neither.
SceneTreeFindings SearchSceneTree(const char* xml, const std::string& scene_name,
                                  int major_version);

}  // namespace qor
