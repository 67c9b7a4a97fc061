#pragma once

#include <charconv>
#include <cstdarg>
#include <cstdint>
#include <cstdio>
#include <deque>
#include <iterator>
#include <string>
#include <type_traits>

#include "importers/sceneapi/dev/parameter_codes.h"
#include "importers/sceneapi/dev/qorscene_api.h"

/// Records each call as a line, so that tests can compare whole streams. Every operation succeeds.
///
/// Numbers have as few digits as identify them. Arrays are in brackets with commas between their
/// elements. A shader's handle is shown as its type.
class RecordingApi final : public qorScene_api {
public:
    std::string calls;

    /// The text that `set_parameter` records after the name.
    static std::string value_text(std::int32_t type, const void* value) {
        using namespace parameter_code;
        if ((type & kArray) == 0) {
            return element_text(type, value, 0);
        }
        const auto& array = *static_cast<const qorArray*>(value);
        std::string elements;
        for (std::uint32_t i = 0; i < array.count; ++i) {
            // The texts of an array are pointers.
            const std::int32_t code = (type & ~kArray) == kText ? kTextPointer : type & ~kArray;
            elements += (i > 0 ? "," : "") + element_text(code, array.data, i);
        }
        return "[" + elements + "]";
    }

    void reserved_hook() override { add("reserved_hook"); }
    bool connect(const char* host, std::int32_t port, std::int32_t version) override {
        return add("connect", host, port, version);
    }
    bool disconnect() override { return add("disconnect"); }
    bool link_request(void*, void*, void*) override { return add("link_request"); }

    bool begin_group(const char* name, bool place) override {
        return add(place ? "begin_group" : "define_group", name);
    }
    void end_group() override { add("end_group"); }
    bool begin_object(const char* name, bool place) override {
        return add(place ? "begin_object" : "define_object", name);
    }
    void end_object() override { add("end_object"); }
    bool begin_geometry(const char* kind) override { return add("begin_geometry", kind); }
    void end_geometry() override { add("end_geometry"); }
    bool begin_animation(const char* kind, const char* name) override {
        return add("begin_animation", kind, name);
    }
    int end_animation() override { return add("end_animation"); }
    bool begin_load(const char* module) override { return add("begin_load", module); }
    void end_load() override { add("end_load"); }
    bool begin_options() override { return add("begin_options"); }
    void end_options() override { add("end_options"); }
    bool begin_camera(const char* name) override { return add("begin_camera", name); }
    void end_camera() override { add("end_camera"); }
    bool begin_image() override { return add("begin_image"); }
    void end_image() override { add("end_image"); }
    bool begin_output(const char* name, const char* kind, const char* type) override {
        return add("begin_output", name, kind, type);
    }
    void end_output() override { add("end_output"); }
    bool begin_light(const char* name) override { return add("begin_light", name); }
    void end_light() override { add("end_light"); }
    bool begin_accel(const char* name) override { return add("begin_accel", name); }
    void end_accel() override { add("end_accel"); }

    void transform(const qorMatrix& matrix) override {
        add("transform", value_text(parameter_code::kMatrix, &matrix));
    }
    void set_transform(const qorMatrix& matrix) override {
        add("set_transform", value_text(parameter_code::kMatrix, &matrix));
    }
    void scale(const double& x, const double& y, const double& z) override {
        add("scale", x, y, z);
    }
    void rotate(const double& x, const double& y, const double& z) override {
        add("rotate", x, y, z);
    }
    void translate(const double& x, const double& y, const double& z) override {
        add("translate", x, y, z);
    }
    bool begin_matrix(const char* name) override { return add("begin_matrix", name); }
    void end_matrix() override { add("end_matrix"); }

    bool begin_material(const char* name, bool place) override {
        return add(place ? "begin_material" : "define_material", name);
    }
    bool use_material(const char* name) override { return add("use_material", name); }
    void end_material() override { add("end_material"); }
    void assign_shader(std::int32_t kind, qorShaderHandle shader) override {
        add("assign_shader", kind, shader);
    }
    void assign_shader_id(std::int32_t kind, std::int32_t id) override {
        add("assign_shader_id", kind, id);
    }
    bool begin_shader(const char* name, const char* type) override {
        shader_types_.emplace_back(type);
        return add("begin_shader", name, type);
    }
    bool begin_shader_id(const char* type, std::int32_t id) override {
        return add("begin_shader_id", type, id);
    }
    void end_shader() override { add("end_shader"); }
    qorShaderHandle current_shader() override {
        add("current_shader");
        return &shader_types_.back();
    }
    void push_shader() override { add("push_shader"); }
    void pop_shader() override { add("pop_shader"); }

    bool set_parameter(const char* name, std::int32_t type, const void* value) override {
        return add(name, value_text(type, value));
    }
    bool set_parameter_id(const char* name, std::int32_t id) override {
        return add("set_parameter_id", name, id);
    }
    bool set_parameter_shader(const char* name, qorShaderHandle shader) override {
        return add("set_parameter_shader", name, shader);
    }
    bool begin_array(const char* name) override { return add("begin_array", name); }
    void end_array() override { add("end_array"); }
    void add_array_element(std::int32_t type, const void* value) override {
        add("add_array_element", value_text(type, value));
    }

    int numeric_query() override { return add("numeric_query"); }
    int numeric_query_for(int argument) override { return add("numeric_query_for", argument); }
    int extension_point() override { return add("extension_point"); }
    void set_attribute(const char* key, const char* value) override {
        add("set_attribute", key, value);
    }
    void write_text(const char* format, ...) override {
        char text[1000];
        std::va_list arguments;
        va_start(arguments, format);
        std::vsnprintf(text, sizeof text, format, arguments);
        va_end(arguments);
        add("write_text", text);
    }
    void set_output_mode(std::uint32_t mode) override { add("set_output_mode", mode); }
    void set_version(std::uint32_t version) override { add("set_version", version); }
    void set_option_flag(bool flag) override { add("set_option_flag", flag); }
    void set_progress(const char* text, float fraction) override {
        add("set_progress", text, fraction);
    }
    void set_icon(const unsigned char* data, std::int32_t size) override {
        add("set_icon", bytes_text(data, size));
    }
    void set_binary_parameter(const char* name, const unsigned char* data,
                              std::int32_t size) override {
        add("set_binary_parameter", name, bytes_text(data, size));
    }
    void set_id(std::uint32_t id) override { add("set_id", id); }
    void set_flags(std::uint32_t flags) override { add("set_flags", flags); }
    bool status_query() override { return add("status_query"); }
    bool render() override { return add("render"); }
    void print_message(const char* text) override { add("print_message", text); }
    void print_error(const char* text) override { add("print_error", text); }

private:
    std::deque<std::string> shader_types_;  // handles point to these

    template <typename... Arguments>
    bool add(const std::string& call, const Arguments&... arguments) {
        calls += call;
        ((calls += " " + shown(arguments)), ...);
        calls += "\n";
        return true;
    }

    static std::string shown(const std::string& text) { return text; }
    static std::string shown(const char* text) { return text == nullptr ? "-" : text; }
    static std::string shown(qorShaderHandle shader) {
        return shader == nullptr ? "-" : *static_cast<const std::string*>(shader);
    }
    template <typename Number, typename = std::enable_if_t<std::is_arithmetic_v<Number>>>
    static std::string shown(Number number) {
        char digits[32];
        if constexpr (std::is_same_v<Number, bool>) {
            return number ? "on" : "off";
        } else {
            return {digits, std::to_chars(digits, std::end(digits), number).ptr};
        }
    }

    template <typename Number>
    static std::string list(const void* data, size_t first, size_t count) {
        std::string text;
        for (size_t i = first; i < first + count; ++i) {
            text += (i > first ? " " : "") + shown(static_cast<const Number*>(data)[i]);
        }
        return text;
    }

    // The text of the element at `place`.
    static std::string element_text(std::int32_t code, const void* data, size_t place) {
        using namespace parameter_code;
        constexpr struct {
            std::int32_t code;
            size_t numbers;
            std::string (*list)(const void* data, size_t first, size_t count);
        } kForms[] = {
            {kFloat, 1, list<float>},       {kFloat2, 2, list<float>},
            {kColor, 3, list<float>},       {kFloat4, 4, list<float>},
            {kFloat4Too, 4, list<float>},   {kDouble, 1, list<double>},
            {kVector, 3, list<double>},     {kMatrix, 16, list<double>},
            {kInt, 1, list<std::int32_t>},  {kIntToo, 1, list<std::int32_t>},
            {kInt2, 2, list<std::int32_t>}, {kInt3, 3, list<std::int32_t>},
            {kInt4, 4, list<std::int32_t>},
        };
        for (const auto& form : kForms) {
            if (code == form.code) {
                return form.list(data, form.numbers * place, form.numbers);
            }
        }
        switch (code) {
            case kBool:
                return shown(static_cast<const std::int32_t*>(data)[place] != 0);
            case kText:
                return quoted(static_cast<const char*>(data));
            case kTextPointer:
                return quoted(static_cast<const char* const*>(data)[place]);
            case kShader:
                return shown(static_cast<const qorShaderHandle*>(data)[place]);
            default:
                return "code " + shown(code);
        }
    }

    static std::string quoted(const char* text) { return "\"" + shown(text) + "\""; }
    static std::string bytes_text(const unsigned char* data, std::int32_t size) {
        return list<unsigned char>(data, 0, static_cast<size_t>(size));
    }
};
