#include "tools/vsqinfo/checks/block_path.h"

#include "tools/vsqinfo/vsq_tokens.h"

namespace vsqinfo {

std::string BlockPath::shown() const {
    // Shaders can nest to any depth; a limit keeps a file full of findings from taking forever.
    constexpr std::size_t kFarthest = 64;
    for (std::size_t i = 0; i < blocks_.size() && i < kFarthest; ++i) {
        const VsqBlock& block = blocks_[blocks_.size() - 1 - i];
        for (const std::string_view keyword : {"object", "camera", "light", "group"}) {
            if (block.keyword == keyword) {
                return std::string(keyword) + " " + vsqinfo::shown(block.name);
            }
        }
    }
    return blocks_.empty() ? "the top level" : "a " + std::string(blocks_.back().keyword);
}

}  // namespace vsqinfo
