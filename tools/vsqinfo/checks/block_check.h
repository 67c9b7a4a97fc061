#pragma once

#include <cstdint>
#include <string>
#include <unordered_set>
#include <vector>

#include "tools/vsqinfo/checks/scene_check.h"

namespace vsqinfo {

/// Checks which blocks and statements there are: root group, version, messages, flags, names,
/// geometries of objects, shaders of materials, and matrices.
class BlockCheck final : public SceneCheck {
public:
    using SceneCheck::SceneCheck;

    void block_begins(const VsqBlock& block) override;
    void block_ends() override;
    void matrix(const VsqMatrix& matrix, bool replaces, FilePlace place) override;
    void statement(const VsqStatement& statement) override;
    void scene_ends(const VsqSummary& summary) override;

private:
    // What a block has had so far.
    struct Contents {
        bool has_flags = false;
        unsigned geometries = 0;
        unsigned matrices = 0;
        unsigned surfaces = 0;
        unsigned shadows = 0;
        unsigned volumes = 0;
        unsigned reflections = 0;
        std::unordered_set<std::string> object_names;
    };

    void check_top_block(const VsqBlock& block);
    void check_kind(const VsqBlock& block);
    void check_version(const VsqStatement& statement);
    void check_flags(const VsqStatement& statement);
    void count_assignment(std::string_view kind, FilePlace place);

    std::vector<Contents> open_;  // for each open block
    bool has_root_ = false;
    bool has_version_ = false;
    bool has_banner_ = false;
};

}  // namespace vsqinfo
