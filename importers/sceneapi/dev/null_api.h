#pragma once

#include "importers/sceneapi/dev/qorscene_api.h"

/// A scene API that drops everything: each function does nothing and returns false, 0 or null.
class NullApi : public qorScene_api {
public:
    void reserved_hook() override {}
    bool connect(const char*, std::int32_t, std::int32_t) override { return false; }
    bool disconnect() override { return false; }
    bool link_request(void*, void*, void*) override { return false; }
    bool begin_group(const char*, bool) override { return false; }
    void end_group() override {}
    bool begin_object(const char*, bool) override { return false; }
    void end_object() override {}
    bool begin_geometry(const char*) override { return false; }
    void end_geometry() override {}
    bool begin_animation(const char*, const char*) override { return false; }
    int end_animation() override { return 0; }
    bool begin_load(const char*) override { return false; }
    void end_load() override {}
    bool begin_options() override { return false; }
    void end_options() override {}
    bool begin_camera(const char*) override { return false; }
    void end_camera() override {}
    bool begin_image() override { return false; }
    void end_image() override {}
    bool begin_output(const char*, const char*, const char*) override { return false; }
    void end_output() override {}
    bool begin_light(const char*) override { return false; }
    void end_light() override {}
    bool begin_accel(const char*) override { return false; }
    void end_accel() override {}
    void transform(const qorMatrix&) override {}
    void set_transform(const qorMatrix&) override {}
    void scale(const double&, const double&, const double&) override {}
    void rotate(const double&, const double&, const double&) override {}
    void translate(const double&, const double&, const double&) override {}
    bool begin_matrix(const char*) override { return false; }
    void end_matrix() override {}
    bool begin_material(const char*, bool) override { return false; }
    bool use_material(const char*) override { return false; }
    void end_material() override {}
    void assign_shader(std::int32_t, qorShaderHandle) override {}
    void assign_shader_id(std::int32_t, std::int32_t) override {}
    bool begin_shader(const char*, const char*) override { return false; }
    bool begin_shader_id(const char*, std::int32_t) override { return false; }
    void end_shader() override {}
    qorShaderHandle current_shader() override { return nullptr; }
    void push_shader() override {}
    void pop_shader() override {}
    bool set_parameter(const char*, std::int32_t, const void*) override { return false; }
    bool set_parameter_id(const char*, std::int32_t) override { return false; }
    bool set_parameter_shader(const char*, qorShaderHandle) override { return false; }
    bool begin_array(const char*) override { return false; }
    void end_array() override {}
    void add_array_element(std::int32_t, const void*) override {}
    int numeric_query() override { return 0; }
    int numeric_query_for(int) override { return 0; }
    int extension_point() override { return 0; }
    void set_attribute(const char*, const char*) override {}
    void write_text(const char*, ...) override {}
    void set_output_mode(std::uint32_t) override {}
    void set_version(std::uint32_t) override {}
    void set_option_flag(bool) override {}
    void set_progress(const char*, float) override {}
    void set_icon(const unsigned char*, std::int32_t) override {}
    void set_binary_parameter(const char*, const unsigned char*, std::int32_t) override {}
    void set_id(std::uint32_t) override {}
    void set_flags(std::uint32_t) override {}
    bool status_query() override { return false; }
    bool render() override { return false; }
    void print_message(const char*) override {}
    void print_error(const char*) override {}
};
