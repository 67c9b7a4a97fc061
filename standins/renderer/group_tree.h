#pragma once

#include <map>
#include <memory>
#include <string>

namespace velmora {

/// The top levels of the group hierarchy that the renderer holds. Groups with the same path are one
/// group.
struct GroupTree {
    static constexpr int kLevels = 3;

    std::map<std::string, std::unique_ptr<GroupTree>> children;

    /// Returns the child with that name. Adds it if there is none.
    GroupTree& child(const std::string& name);
    void add(const GroupTree& other);

    /// The scene as an XML document: a root element, the scene in it, and the groups in the scene.
    std::string as_xml() const;
};

}  // namespace velmora
