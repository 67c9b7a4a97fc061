#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <unordered_set>
#include <vector>

#include "tools/vsqinfo/checks/scene_check.h"
#include "tools/vsqinfo/shader_numbers.h"

namespace vsqinfo {

/// Checks that what refers to something finds it: shader numbers, names of materials, and the
/// numbers of the objects that instances repeat and animations deform.
class ReferenceCheck final : public SceneCheck {
public:
    using SceneCheck::SceneCheck;

    void block_begins(const VsqBlock& block) override;
    void block_ends() override;
    void statement(const VsqStatement& statement) override;
    void parameter(const VsqParameter& parameter) override;
    bool array_begins(const VsqArray& array) override;
    void array_numbers(const VsqNumbers& numbers) override;
    void scene_ends(const VsqSummary& summary) override;

private:
    struct ToObject {
        Check check;
        std::int64_t id;
        FilePlace place;
    };
    struct ToMaterial {
        std::string name;
        FilePlace place;
    };

    void use_shader(std::int64_t number) { unused_shaders_.erase(number); }

    // The target of a reference can come later in the file.
    std::vector<ToObject> to_objects_;
    std::vector<ToMaterial> to_materials_;
    ShaderNumbers object_ids_;
    std::unordered_set<std::string> materials_;
    ShaderNumbers shaders_;
    std::map<std::int64_t, FilePlace> unused_shaders_;
    bool instance_has_id_ = false;
};

}  // namespace vsqinfo
