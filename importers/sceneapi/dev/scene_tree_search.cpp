#include "importers/sceneapi/dev/scene_tree_search.h"

#include <tinyxml.h>

namespace qor {

namespace {

// From this version on, a renderer puts its scenes one level deeper.
constexpr int kDeeperVersion = 7;

// In an empty scene, the root's first child contains only groups without children. A document
// without that child counts as not empty.
bool is_empty_scene(const TiXmlElement& root) {
    const TiXmlNode* top = root.FirstChild();
    if (top == nullptr) {
        return false;
    }
    for (const TiXmlNode* group = top->FirstChild(); group != nullptr;
         group = group->NextSibling()) {
        if (!group->NoChildren()) {
            return false;
        }
    }
    return true;
}

bool has_value(const TiXmlElement& element, const char* attribute, const std::string& value) {
    const char* text = element.Attribute(attribute);
    return text != nullptr && value == text;
}

// `depth` is the number of levels to search, including that of this element.
bool holds_scene(const TiXmlElement& element, const std::string& scene_name, int depth) {
    if (depth <= 0) {
        return false;
    }
    if (element.Attribute("modelset") != nullptr && !has_value(element, "modelset", "active")) {
        return false;
    }
    if (has_value(element, "name", scene_name)) {
        return true;
    }
    const TiXmlElement* child = element.FirstChildElement();
    for (; child != nullptr; child = child->NextSiblingElement()) {
        if (holds_scene(*child, scene_name, depth - 1)) {
            return true;
        }
    }
    return false;
}

}  // namespace

SceneTreeFindings SearchSceneTree(const char* xml, const std::string& scene_name,
                                  int major_version) {
    TiXmlDocument document;
    document.Parse(xml);
    const TiXmlElement* root = document.Error() ? nullptr : document.RootElement();
    if (root == nullptr) {
        return {};
    }
    const int depth = major_version < kDeeperVersion ? 3 : 4;
    return {is_empty_scene(*root), !scene_name.empty() && holds_scene(*root, scene_name, depth)};
}

}  // namespace qor
