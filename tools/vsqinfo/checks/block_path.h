#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "tools/vsqinfo/vsq_listener.h"

namespace vsqinfo {

/// The blocks that are open at a place of a scene, from the outermost to the innermost.
class BlockPath {
public:
    void open(const VsqBlock& block) { blocks_.push_back(block); }
    void close() { blocks_.pop_back(); }

    std::size_t depth() const { return blocks_.size(); }
    /// The innermost block, or null at the top level.
    const VsqBlock* innermost() const { return blocks_.empty() ? nullptr : &blocks_.back(); }
    /// The block around the innermost one, or null.
    const VsqBlock* around() const {
        return blocks_.size() < 2 ? nullptr : &blocks_[blocks_.size() - 2];
    }

    /// Whether the innermost block has that keyword and, unless it is empty, that type.
    bool is_in(std::string_view keyword, std::string_view type = {}) const {
        return !blocks_.empty() && blocks_.back().keyword == keyword &&
               (type.empty() || blocks_.back().type == type);
    }

    /// The nearest object, camera, light or group for a person: `object "Box001"`.
    std::string shown() const;

private:
    std::vector<VsqBlock> blocks_;
};

}  // namespace vsqinfo
