#pragma once

#include <cstdint>
#include <optional>
#include <tuple>
#include <vector>

#include "importers/sceneapi/dev/qorscene_api.h"
#include "standins/renderer/link_connection.h"
#include "standins/renderer/scene_calls.h"

namespace velmora {

/// Sends a scene to a running renderer.
///
/// Calls never wait for the renderer, because their results are determined here: a call that opens
/// a block returns whether there is a connection, and shader handles are numbers that the renderer
/// counts in the same way. Without a connection calls do nothing and return false, 0 or null.
class LinkedScene final : public qorScene_api {
public:
    bool connect(const char* host, std::int32_t port, std::int32_t) override;
    /// True if the renderer confirms that it has the whole scene.
    bool disconnect() override;

    void reserved_hook() override {}
    int numeric_query() override { return connection_.is_open() ? 10 : 0; }
    int numeric_query_for(int) override { return numeric_query(); }
    int extension_point() override { return 0; }
    bool status_query() override { return false; }

    bool begin_group(const char* name, bool place) override {
        return forward<&qorScene_api::begin_group>(name, place);
    }
    void end_group() override { forward<&qorScene_api::end_group>(); }
    bool begin_object(const char* name, bool place) override {
        return forward<&qorScene_api::begin_object>(name, place);
    }
    void end_object() override { forward<&qorScene_api::end_object>(); }
    bool begin_geometry(const char* kind) override {
        return forward<&qorScene_api::begin_geometry>(kind);
    }
    void end_geometry() override { forward<&qorScene_api::end_geometry>(); }
    bool begin_animation(const char* kind, const char* name) override {
        return forward<&qorScene_api::begin_animation>(kind, name);
    }
    int end_animation() override {
        forward<&qorScene_api::end_animation>();
        return 0;
    }
    bool begin_load(const char* module) override {
        return forward<&qorScene_api::begin_load>(module);
    }
    void end_load() override { forward<&qorScene_api::end_load>(); }
    bool begin_options() override { return forward<&qorScene_api::begin_options>(); }
    void end_options() override { forward<&qorScene_api::end_options>(); }
    bool begin_camera(const char* name) override {
        return forward<&qorScene_api::begin_camera>(name);
    }
    void end_camera() override { forward<&qorScene_api::end_camera>(); }
    bool begin_image() override { return forward<&qorScene_api::begin_image>(); }
    void end_image() override { forward<&qorScene_api::end_image>(); }
    bool begin_output(const char* name, const char* kind, const char* type) override {
        return forward<&qorScene_api::begin_output>(name, kind, type);
    }
    void end_output() override { forward<&qorScene_api::end_output>(); }
    bool begin_light(const char* name) override {
        return forward<&qorScene_api::begin_light>(name);
    }
    void end_light() override { forward<&qorScene_api::end_light>(); }
    bool begin_accel(const char* name) override {
        return forward<&qorScene_api::begin_accel>(name);
    }
    void end_accel() override { forward<&qorScene_api::end_accel>(); }
    void transform(const qorMatrix& matrix) override { forward<&qorScene_api::transform>(matrix); }
    void set_transform(const qorMatrix& matrix) override {
        forward<&qorScene_api::set_transform>(matrix);
    }
    void scale(const double& x, const double& y, const double& z) override {
        forward<&qorScene_api::scale>(x, y, z);
    }
    void rotate(const double& x, const double& y, const double& z) override {
        forward<&qorScene_api::rotate>(x, y, z);
    }
    void translate(const double& x, const double& y, const double& z) override {
        forward<&qorScene_api::translate>(x, y, z);
    }
    bool begin_matrix(const char* name) override {
        return forward<&qorScene_api::begin_matrix>(name);
    }
    void end_matrix() override { forward<&qorScene_api::end_matrix>(); }
    bool begin_material(const char* name, bool place) override {
        return forward<&qorScene_api::begin_material>(name, place);
    }
    bool use_material(const char* name) override {
        return forward<&qorScene_api::use_material>(name);
    }
    void end_material() override { forward<&qorScene_api::end_material>(); }
    void assign_shader(std::int32_t kind, qorShaderHandle shader) override {
        forward<&qorScene_api::assign_shader>(kind, shader);
    }
    void assign_shader_id(std::int32_t kind, std::int32_t id) override {
        forward<&qorScene_api::assign_shader_id>(kind, id);
    }
    bool begin_shader(const char* name, const char* type) override;
    bool begin_shader_id(const char* type, std::int32_t id) override;
    void end_shader() override;
    qorShaderHandle current_shader() override;
    void push_shader() override;
    void pop_shader() override;
    bool set_parameter(const char* name, std::int32_t type, const void* value) override;
    bool set_parameter_id(const char* name, std::int32_t id) override {
        return forward<&qorScene_api::set_parameter_id>(name, id);
    }
    bool set_parameter_shader(const char* name, qorShaderHandle shader) override {
        return shader != nullptr && forward<&qorScene_api::set_parameter_shader>(name, shader);
    }
    bool begin_array(const char* name) override {
        return forward<&qorScene_api::begin_array>(name);
    }
    void end_array() override { forward<&qorScene_api::end_array>(); }
    void add_array_element(std::int32_t type, const void* value) override;
    void set_attribute(const char* key, const char* value) override {
        forward<&qorScene_api::set_attribute>(key, value);
    }
    void write_text(const char* format, ...) override;
    void set_output_mode(std::uint32_t mode) override {
        forward<&qorScene_api::set_output_mode>(mode);
    }
    void set_version(std::uint32_t version) override {
        forward<&qorScene_api::set_version>(version);
    }
    void set_option_flag(bool flag) override { forward<&qorScene_api::set_option_flag>(flag); }
    void set_progress(const char* text, float fraction) override {
        forward<&qorScene_api::set_progress>(text, fraction);
    }
    void set_icon(const unsigned char* data, std::int32_t size) override;
    void set_binary_parameter(const char* name, const unsigned char* data,
                              std::int32_t size) override;
    /// An id that is set before there is a connection is sent once there is one.
    void set_id(std::uint32_t id) override;
    void set_flags(std::uint32_t flags) override { forward<&qorScene_api::set_flags>(flags); }
    bool render() override { return forward<&qorScene_api::render>(); }
    void print_message(const char* text) override { forward<&qorScene_api::print_message>(text); }
    void print_error(const char* text) override { forward<&qorScene_api::print_error>(text); }

private:
    // False without a connection, or if the connection breaks during the call.
    template <auto Call, typename... Arguments>
    bool forward(const Arguments&... arguments) {
        using Values = typename ArgumentsOf<decltype(Call)>::Values;
        static_assert(std::is_same_v<Values, std::tuple<Arguments...>>);
        return begin_call<Call>() && (put(arguments), ..., end_call());
    }

    template <auto Call>
    bool begin_call() {
        if (!connection_.is_open()) {
            return false;
        }
        connection_.begin_frame(SceneCalls::number_of<Call>());
        return true;
    }
    bool end_call();

    template <typename Value>
    void put(const Value& value) {
        connection_.put(value);
    }
    void put(const char* text) { connection_.put(text); }
    void put(qorShaderHandle shader) {
        connection_.put(static_cast<std::uint64_t>(reinterpret_cast<std::uintptr_t>(shader)));
    }
    void put_value(std::int32_t type, const void* value);
    void put_array(std::int32_t element_code, const qorArray& array);

    LinkConnection connection_;
    std::optional<std::uint32_t> id_for_connection_;

    // Both ends number the anonymous shaders of a connection from 1. The current shader follows the
    // same rules as in a file.
    std::uintptr_t shader_count_ = 0;
    std::uintptr_t current_shader_ = 0;
    std::vector<std::uintptr_t> saved_shaders_;
};

}  // namespace velmora
