#pragma once

#include <string>
#include <vector>

#include "standins/host/memory/scene_builder.h"

namespace memhost {

/// A scene built in code, for features that model files can't hold.
struct DemoScene {
    const char* name;
    const char* description;  // one line
    void (*build)(SceneBuilder& scene);
};

/// All demo scenes, in the order in which they are listed.
const std::vector<DemoScene>& demo_scenes();

/// Null if there is none with that name.
const DemoScene* find_demo_scene(const std::string& name);

}  // namespace memhost
