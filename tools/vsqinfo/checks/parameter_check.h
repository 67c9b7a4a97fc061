#pragma once

#include <string>
#include <unordered_set>
#include <vector>

#include "tools/vsqinfo/checks/scene_check.h"

namespace vsqinfo {

/// Checks the parameters that are known: kind, number and range of their values; and that a block
/// has no parameter or array twice.
class ParameterCheck final : public SceneCheck {
public:
    using SceneCheck::SceneCheck;

    void block_begins(const VsqBlock& block) override;
    void block_ends() override { given_.pop_back(); }
    void parameter(const VsqParameter& parameter) override;
    bool array_begins(const VsqArray& array) override;

private:
    void check_value(const VsqParameter& parameter);
    void check_range(const VsqParameter& parameter);
    void give(char form, std::string_view name, Check check, FilePlace place);

    // For each open block, a letter for the form and the name of each parameter.
    std::vector<std::unordered_set<std::string>> given_;
};

}  // namespace vsqinfo
