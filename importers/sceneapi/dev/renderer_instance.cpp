#include "importers/sceneapi/dev/renderer_instance.h"

#include <string>

#include <tinyxml.h>

#include "importers/sceneapi/dev/decimal_text.h"

namespace qor {

namespace {

std::string text_of(const TiXmlElement& instance, const char* name) {
    const TiXmlElement* field = instance.FirstChildElement(name);
    const char* text = field != nullptr ? field->GetText() : nullptr;
    return text != nullptr ? text : "";
}

}  // namespace

std::vector<RendererInstance> ReadInstances(const char* xml, int min_version, int max_version) {
    std::vector<RendererInstance> instances;
    TiXmlDocument document;
    if (xml != nullptr) {
        document.Parse(xml);
    }
    const TiXmlElement* root = document.Error() ? nullptr : document.RootElement();
    const TiXmlElement* element = root != nullptr ? root->FirstChildElement() : nullptr;
    for (; element != nullptr; element = element->NextSiblingElement()) {
        RendererInstance instance;
        instance.version_major = decimal_number(text_of(*element, "version_major"));
        if (instance.version_major < min_version || instance.version_major > max_version) {
            continue;
        }
        instance.version_minor = decimal_number(text_of(*element, "version_minor"));
        instance.process_id = decimal_number_64(text_of(*element, "process_id"));
        instance.livelink_port = decimal_number(text_of(*element, "livelink_port"));
        instances.push_back(instance);
    }
    return instances;
}

}  // namespace qor
