#pragma once

#include <cstddef>
#include <ostream>
#include <vector>

#include "tools/vsqinfo/vsq_listener.h"

namespace vsqinfo {

/// Prints the groups of a scene while it is read, with the objects, lights, cameras and matrices in
/// them: one line each, indented by depth. A group's matrix comes after the groups in it, as in the
/// file.
class GroupTree final : public VsqListener {
public:
    explicit GroupTree(std::ostream& out) : out_(out) {}

    void block_begins(const VsqBlock& block) override;
    void block_ends() override;
    void matrix(const VsqMatrix& matrix, bool replaces, FilePlace) override;

private:
    void begin_line();

    std::ostream& out_;
    std::vector<bool> is_shown_;  // for each open block
    std::size_t depth_ = 0;       // the number of open blocks that are shown
};

}  // namespace vsqinfo
