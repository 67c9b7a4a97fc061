#pragma once

#include <deque>
#include <sstream>
#include <string>
#include <vector>

#include "importers/sceneapi/dev/null_api.h"
#include "importers/sceneapi/dev/parameter_codes.h"

/// Keeps one line for each call that reaches it, so that tests can compare whole streams.
class RecordingApi final : public NullApi {
public:
    std::vector<std::string> calls;

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
    void transform(const qorMatrix& matrix) override { add("transform" + numbers(matrix)); }
    void set_transform(const qorMatrix& matrix) override { add("set_transform" + numbers(matrix)); }
    bool begin_material(const char* name, bool place) override {
        return add(place ? "begin_material" : "define_material", name);
    }
    bool use_material(const char* name) override { return add("use_material", name); }
    void end_material() override { add("end_material"); }
    void assign_shader(std::int32_t kind, qorShaderHandle shader) override {
        add("assign_shader", kind, shader_text(shader));
    }
    void assign_shader_id(std::int32_t kind, std::int32_t id) override {
        add("assign_shader_id", kind, id);
    }
    bool begin_shader(const char* name, const char* type) override {
        if (name == nullptr) {
            shader_types_.emplace_back(type);
            current_shader_ = &shader_types_.back();
        }
        return add("begin_shader", name == nullptr ? "-" : name, type);
    }
    bool begin_shader_id(const char* type, std::int32_t id) override {
        return add("begin_shader_id", type, id);
    }
    void end_shader() override { add("end_shader"); }
    qorShaderHandle current_shader() override {
        add("current_shader");
        return current_shader_;
    }
    void push_shader() override {
        add("push_shader");
        saved_shaders_.push_back(current_shader_);
    }
    void pop_shader() override {
        add("pop_shader");
        current_shader_ = saved_shaders_.back();
        saved_shaders_.pop_back();
    }
    bool set_parameter(const char* name, std::int32_t type, const void* value) override {
        return add(name, value_text(type, value));
    }
    bool set_parameter_id(const char* name, std::int32_t id) override {
        return add(name, "shader", id);
    }
    bool set_parameter_shader(const char* name, qorShaderHandle shader) override {
        return add(name, "shader", shader_text(shader));
    }
    bool begin_array(const char* name) override { return add("begin_array", name); }
    void end_array() override { add("end_array"); }
    void add_array_element(std::int32_t type, const void* value) override {
        add("add_array_element", value_text(type, value));
    }
    void set_version(std::uint32_t version) override { add("set_version", version); }
    void set_progress(const char* what, float part) override { add("set_progress", what, part); }
    void set_id(std::uint32_t id) override { add("set_id", id); }
    void set_flags(std::uint32_t flags) override { add("set_flags", flags); }
    void print_message(const char* message) override { add("print_message", message); }
    void print_error(const char* error) override { add("print_error", error); }

private:
    std::deque<std::string> shader_types_;  // of the anonymous shaders; a handle points to one
    const std::string* current_shader_ = nullptr;
    std::vector<const std::string*> saved_shaders_;

    template <typename... Arguments>
    bool add(const std::string& call, const Arguments&... arguments) {
        std::ostringstream line;
        line << std::fixed << call;
        ((line << ' ' << arguments), ...);
        calls.push_back(line.str());
        return true;
    }

    static std::string shader_text(qorShaderHandle shader) {
        return shader == nullptr ? "null" : *static_cast<const std::string*>(shader);
    }

    static std::string numbers(const qorMatrix& matrix) {
        std::ostringstream text;
        for (const auto& row : matrix.m) {
            for (const double number : row) {
                text << ' ' << number;
            }
        }
        return text.str();
    }

    template <typename Number>
    static std::string list(const void* data, size_t count) {
        std::string text;
        for (size_t i = 0; i < count; ++i) {
            text += (i > 0 ? " " : "") + std::to_string(static_cast<const Number*>(data)[i]);
        }
        return text;
    }

    static std::string value_text(std::int32_t type, const void* value) {
        using namespace parameter_code;
        const bool is_array = (type & kArray) != 0;
        const auto& [data, count] =
            is_array ? *static_cast<const qorArray*>(value) : qorArray{value, 1};
        const std::string elements = " x" + std::to_string(count);
        switch (type & ~kArray) {
            case kColor:
                return list<float>(data, size_t{3} * count) +
                       (is_array ? " (vec3" + elements + ")" : "");
            case kFloat:
                return list<float>(data, count);
            case kDouble:
                return list<double>(data, count) + (is_array ? "" : " (double)");
            case kInt:
                return list<std::int32_t>(data, count);
            case kVector:
                return list<double>(data, size_t{3} * count) + " (vector)";
            case kBool:
                return *static_cast<const std::int32_t*>(data) == 1 ? "on" : "off";
            case kText:
                return "\"" + std::string(static_cast<const char*>(data)) + "\"";
            default:
                return "code " + std::to_string(type) + elements;
        }
    }
};
