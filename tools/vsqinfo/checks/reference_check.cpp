#include "tools/vsqinfo/checks/reference_check.h"

#include <string_view>

#include "tools/vsqinfo/vsq_tokens.h"

namespace vsqinfo {
namespace {

// The number of a shader or an object, or -1, which none has.
std::int64_t integer_of(double number) {
    constexpr double kLargest = 9e15;  // larger ones aren't exact
    return number >= 0 && number <= kLargest ? static_cast<std::int64_t>(number) : -1;
}

}  // namespace

void ReferenceCheck::block_begins(const VsqBlock& block) {
    if (block.number) {
        if (shaders_.contains(*block.number)) {
            found(Check::kShaderTwice, block.place, "shader " + std::to_string(*block.number));
        }
        shaders_.insert(*block.number);
        unused_shaders_.emplace(*block.number, block.place);
    }
    if (block.keyword == "material" && block.is_definition) {
        materials_.insert(block.name);
    }
    if (block.keyword == "geometry") {
        instance_has_id_ = false;
    }
}

void ReferenceCheck::block_ends() {
    if (path().is_in("geometry", "instance") && !instance_has_id_) {
        found(Check::kInstanceWithoutId, path().innermost()->place, path().shown());
    }
}

void ReferenceCheck::statement(const VsqStatement& statement) {
    if (statement.word == "id" && path().is_in("object")) {
        const std::int64_t id = *statement.number;
        if (object_ids_.contains(id)) {
            found(Check::kIdTwice, statement.place,
                  "id " + std::to_string(id) + " of " + path().shown());
        }
        object_ids_.insert(id);
    } else if (statement.word == "material") {
        to_materials_.push_back({std::string(statement.text), statement.place});
    } else if (path().is_in("material") && statement.number) {
        use_shader(*statement.number);
    }
}

void ReferenceCheck::parameter(const VsqParameter& parameter) {
    if (parameter.shader) {
        use_shader(*parameter.shader);
    }
    const bool repeats = parameter.name == "id" && path().is_in("geometry", "instance");
    const bool deforms = parameter.name == "target_object_id" && path().is_in("animation");
    instance_has_id_ = instance_has_id_ || repeats;
    if ((repeats || deforms) && classify_value(parameter.value) == ValueWord::kFinite) {
        to_objects_.push_back({repeats ? Check::kInstanceTarget : Check::kAnimationTarget,
                               integer_of(number_value(parameter.value)), parameter.place});
    }
}

bool ReferenceCheck::array_begins(const VsqArray& array) {
    return array.name == "shaders" && path().is_in("shader");
}

void ReferenceCheck::array_numbers(const VsqNumbers& numbers) {
    for (std::size_t i = 0; i < numbers.count; ++i) {
        const auto number = integer_of(numbers.numbers[i]);
        if (!shaders_.contains(number)) {
            found(Check::kShaderUndefined, numbers.place.plus(i * numbers.size),
                  "shader " + std::to_string(number) + " is used, but not defined above");
        }
        use_shader(number);
    }
}

void ReferenceCheck::scene_ends(const VsqSummary& summary) {
    for (const auto& [number, place] : unused_shaders_) {
        found(Check::kShaderUnused, place, "shader " + std::to_string(number));
    }
    // A scene that came over the live link can refer to what the renderer already had.
    if (!summary.has_header) {
        return;
    }
    for (const ToObject& reference : to_objects_) {
        if (!object_ids_.contains(reference.id)) {
            found(reference.check, reference.place,
                  "no object has the number " + std::to_string(reference.id));
        }
    }
    for (const ToMaterial& reference : to_materials_) {
        if (materials_.count(reference.name) == 0) {
            found(Check::kMaterialUndefined, reference.place, "material " + shown(reference.name));
        }
    }
}

}  // namespace vsqinfo
