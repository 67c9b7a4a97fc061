#include "standins/renderer/group_tree.h"

#include <cstdio>

namespace velmora {

namespace {

// Escapes what would end the attribute or isn't allowed in it.
std::string escaped(const std::string& text) {
    std::string result;
    for (const char letter : text) {
        const auto byte = static_cast<unsigned char>(letter);
        if (byte >= 0x20 && letter != '&' && letter != '<' && letter != '>' && letter != '"') {
            result += letter;
            continue;
        }
        char reference[8];
        std::snprintf(reference, sizeof reference, "&#x%02X;", static_cast<unsigned>(byte));
        result += reference;
    }
    return result;
}

void append_groups(const GroupTree& tree, std::string& xml) {
    for (const auto& [name, child] : tree.children) {
        xml += "<group name=\"" + escaped(name) + "\">";
        append_groups(*child, xml);
        xml += "</group>\n";
    }
}

}  // namespace

GroupTree& GroupTree::child(const std::string& name) {
    std::unique_ptr<GroupTree>& found = children[name];
    if (!found) {
        found = std::make_unique<GroupTree>();
    }
    return *found;
}

void GroupTree::add(const GroupTree& other) {
    for (const auto& [name, added] : other.children) {
        child(name).add(*added);
    }
}

std::string GroupTree::as_xml() const {
    std::string xml = "<velmora_scene>\n<scene modelset=\"active\">\n";
    append_groups(*this, xml);
    return xml + "</scene>\n</velmora_scene>\n";
}

}  // namespace velmora
