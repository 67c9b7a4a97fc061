#include "fuzz/fuzz_input.h"
#include "importers/sceneapi/dev/renderer_instance.h"
#include "importers/sceneapi/dev/scene_tree_search.h"
#include "importers/sceneapi/dev/xml_nesting.h"

// What a renderer says of itself and of its scene.
int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    FuzzInput input(data, size);
    const int version = static_cast<int>(input.below(13));
    const std::string xml = input.rest();
    if (qor::IsNestedTooDeep(xml.c_str())) {
        return 0;
    }
    for (const qor::RendererInstance& one : qor::ReadInstances(xml.c_str(), 5, 11)) {
        require(one.version_major >= 5 && one.version_major <= 11, "a version out of range");
    }
    const auto found = qor::SearchSceneTree(xml.c_str(), "room", version);
    require(!found.holds_scene || xml.find("room") != std::string::npos || xml.find('&') < size,
            "a scene that the tree doesn't name");
    require(!qor::SearchSceneTree(xml.c_str(), "", version).holds_scene, "a scene without a name");
    return 0;
}
