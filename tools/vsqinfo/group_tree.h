#pragma once

#include <cstddef>
#include <ostream>
#include <vector>

#include "tools/vsqinfo/vsq_listener.h"

namespace vsqinfo {

/// Prints the groups of a scene while it is read, one line each and indented by their depth, with
/// the objects, lights, cameras and matrices that stand in them. A group's matrix follows the
/// groups in it, as it does in the file.
class GroupTree final : public VsqListener {
public:
    explicit GroupTree(std::ostream& out) : out_(out) {}

    void block_begins(const VsqBlock& block) override;
    void block_ends() override;
    void matrix(const VsqMatrix& matrix, bool replaces) override;

private:
    void begin_line();

    std::ostream& out_;
    std::vector<bool> is_shown_;  // of each block that is open
    std::size_t depth_ = 0;       // shown blocks that are open
};

}  // namespace vsqinfo
