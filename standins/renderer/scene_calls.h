#pragma once

#include <cstddef>
#include <cstdint>
#include <tuple>
#include <type_traits>

#include "importers/sceneapi/dev/parameter_codes.h"
#include "importers/sceneapi/dev/qorscene_api.h"
#include "standins/renderer/wire_format.h"

namespace velmora {

/// Operations of the scene API, numbered by their position in the list.
template <auto... Calls>
struct CallList {
    template <auto Call>
    static constexpr std::uint64_t number_of() {
        constexpr bool is_it[] = {std::is_same_v<Constant<Call>, Constant<Calls>>...};
        std::uint64_t place = 0;
        while (!is_it[place]) {  // a call that isn't in the list doesn't compile
            ++place;
        }
        return operation::kFirstSceneCall + place;
    }

private:
    template <auto Call>
    using Constant = std::integral_constant<decltype(Call), Call>;
};

/// The calls that go over the link. Both ends are generated from this list: one sends the arguments
/// of each call in the order of its declaration, the other makes the call with them.
using SceneCalls = CallList<
    &qorScene_api::begin_group, &qorScene_api::end_group, &qorScene_api::begin_object,
    &qorScene_api::end_object, &qorScene_api::begin_geometry, &qorScene_api::end_geometry,
    &qorScene_api::begin_animation, &qorScene_api::end_animation, &qorScene_api::begin_load,
    &qorScene_api::end_load, &qorScene_api::begin_options, &qorScene_api::end_options,
    &qorScene_api::begin_camera, &qorScene_api::end_camera, &qorScene_api::begin_image,
    &qorScene_api::end_image, &qorScene_api::begin_output, &qorScene_api::end_output,
    &qorScene_api::begin_light, &qorScene_api::end_light, &qorScene_api::begin_accel,
    &qorScene_api::end_accel, &qorScene_api::transform, &qorScene_api::set_transform,
    &qorScene_api::scale, &qorScene_api::rotate, &qorScene_api::translate,
    &qorScene_api::begin_matrix, &qorScene_api::end_matrix, &qorScene_api::begin_material,
    &qorScene_api::use_material, &qorScene_api::end_material, &qorScene_api::assign_shader,
    &qorScene_api::assign_shader_id, &qorScene_api::begin_shader, &qorScene_api::begin_shader_id,
    &qorScene_api::end_shader, &qorScene_api::push_shader, &qorScene_api::pop_shader,
    &qorScene_api::set_parameter, &qorScene_api::set_parameter_id,
    &qorScene_api::set_parameter_shader, &qorScene_api::begin_array, &qorScene_api::end_array,
    &qorScene_api::add_array_element, &qorScene_api::set_attribute, &qorScene_api::write_text,
    &qorScene_api::set_output_mode, &qorScene_api::set_version, &qorScene_api::set_option_flag,
    &qorScene_api::set_progress, &qorScene_api::set_icon, &qorScene_api::set_binary_parameter,
    &qorScene_api::set_id, &qorScene_api::set_flags, &qorScene_api::render,
    &qorScene_api::print_message, &qorScene_api::print_error>;

/// The argument types of an operation, without references and const.
template <typename Call>
struct ArgumentsOf;

template <typename Result, typename... Arguments>
struct ArgumentsOf<Result (qorScene_api::*)(Arguments...)> {
    using Values = std::tuple<std::decay_t<Arguments>...>;
};

/// The size in bytes of a parameter or an array element of that type. 0 if its value isn't plain
/// bytes.
inline std::size_t value_size(std::int32_t code) {
    struct Row {
        std::int32_t code;
        std::size_t size;
    };
    constexpr Row kRows[] = {
        {parameter_code::kColor, sizeof(qorColor)},
        {parameter_code::kFloat4, 4 * sizeof(float)},
        {parameter_code::kFloat, sizeof(float)},
        {parameter_code::kDouble, sizeof(double)},
        {parameter_code::kVector, sizeof(qorVector)},
        {parameter_code::kInt, sizeof(std::int32_t)},
        {parameter_code::kBool, sizeof(std::int32_t)},
        {parameter_code::kMatrix, sizeof(qorMatrix)},
        {parameter_code::kFloat2, 2 * sizeof(float)},
        {parameter_code::kFloat4Too, 4 * sizeof(float)},
        {parameter_code::kInt2, 2 * sizeof(std::int32_t)},
        {parameter_code::kInt3, 3 * sizeof(std::int32_t)},
        {parameter_code::kInt4, 4 * sizeof(std::int32_t)},
        {parameter_code::kIntToo, sizeof(std::int32_t)},
    };
    for (const Row& row : kRows) {
        if (row.code == code) {
            return row.size;
        }
    }
    return 0;
}

inline bool is_text_code(std::int32_t code) {
    return code == parameter_code::kText || code == parameter_code::kTextPointer;
}

}  // namespace velmora
