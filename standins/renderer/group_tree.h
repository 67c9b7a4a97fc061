#pragma once

#include <map>
#include <memory>
#include <string>

namespace velmora {

/// The groups of the scene that the renderer holds, down to a few levels; groups of one name and
/// place are one.
struct GroupTree {
    static constexpr int kLevels = 3;

    std::map<std::string, std::unique_ptr<GroupTree>> children;

    /// Made if there is none.
    GroupTree& child(const std::string& name);
    void add(const GroupTree& other);

    /// The tree as the XML document that tells the scene: a root, the scene in it, groups in that.
    std::string as_xml() const;
};

}  // namespace velmora
