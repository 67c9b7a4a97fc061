#pragma once

#include <cstdarg>
#include <cstdio>
#include <cstring>
#include <deque>
#include <string>
#include <vector>

#include "importers/sceneapi/dev/null_api.h"
#include "importers/sceneapi/dev/parameter_codes.h"

/// Keeps one line for each call that reaches it, so that tests can compare whole streams.
class RecordingApi final : public NullApi {
public:
    std::vector<std::string> calls;

    bool begin_group(const char* name, bool place) override {
        return add(std::string(place ? "begin_group " : "define_group ") + name);
    }
    void end_group() override { add("end_group"); }
    bool begin_object(const char* name, bool place) override {
        return add(std::string(place ? "begin_object " : "define_object ") + name);
    }
    void end_object() override { add("end_object"); }
    bool begin_geometry(const char* kind) override {
        return add(std::string("begin_geometry ") + kind);
    }
    void end_geometry() override { add("end_geometry"); }
    bool begin_animation(const char* kind, const char* name) override {
        return add(std::string("begin_animation ") + kind + " " + name);
    }
    int end_animation() override { return add("end_animation"); }
    bool begin_load(const char* module) override {
        return add(std::string("begin_load ") + module);
    }
    void end_load() override { add("end_load"); }
    void transform(const qorMatrix& matrix) override { add("transform" + numbers(matrix)); }
    void set_transform(const qorMatrix& matrix) override { add("set_transform" + numbers(matrix)); }
    bool begin_material(const char* name, bool place) override {
        return add(std::string(place ? "begin_material " : "define_material ") + name);
    }
    bool use_material(const char* name) override {
        return add(std::string("use_material ") + name);
    }
    void end_material() override { add("end_material"); }
    void assign_shader(std::int32_t kind, qorShaderHandle shader) override {
        add("assign_shader " + std::to_string(kind) + " " + shader_text(shader));
    }
    void assign_shader_id(std::int32_t kind, std::int32_t id) override {
        add("assign_shader_id " + std::to_string(kind) + " " + std::to_string(id));
    }
    bool begin_shader(const char* name, const char* type) override {
        if (name == nullptr) {
            shader_types_.emplace_back(type);
            current_shader_ = &shader_types_.back();
        }
        return add(std::string("begin_shader ") + (name == nullptr ? "-" : name) + " " + type);
    }
    bool begin_shader_id(const char* type, std::int32_t id) override {
        return add(std::string("begin_shader_id ") + type + " " + std::to_string(id));
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
    void write_text(const char* format, ...) override {
        char text[512];
        std::va_list arguments;
        va_start(arguments, format);
        std::vsnprintf(text, sizeof text, format, arguments);
        va_end(arguments);
        add(std::string("write_text ") + text);
    }
    bool set_parameter(const char* name, std::int32_t type, const void* value) override {
        return add(std::string(name) + " " + value_text(type, value));
    }
    bool set_parameter_id(const char* name, std::int32_t id) override {
        return add(std::string(name) + " shader " + std::to_string(id));
    }
    bool set_parameter_shader(const char* name, qorShaderHandle shader) override {
        return add(std::string(name) + " shader " + shader_text(shader));
    }
    bool begin_array(const char* name) override { return add(std::string("begin_array ") + name); }
    void end_array() override { add("end_array"); }
    void add_array_element(std::int32_t type, const void* value) override {
        add("add_array_element " + value_text(type, value));
    }
    void set_version(std::uint32_t version) override {
        add("set_version " + std::to_string(version));
    }
    void set_progress(const char* text, float fraction) override {
        add(std::string("set_progress ") + text + " " + std::to_string(fraction));
    }
    void set_id(std::uint32_t id) override { add("set_id " + std::to_string(id)); }
    void set_flags(std::uint32_t flags) override { add("set_flags " + std::to_string(flags)); }
    void print_message(const char* text) override { add(std::string("print_message ") + text); }
    void print_error(const char* text) override { add(std::string("print_error ") + text); }

private:
    std::deque<std::string> shader_types_;  // of the anonymous shaders; a handle points to one
    const std::string* current_shader_ = nullptr;
    std::vector<const std::string*> saved_shaders_;

    static std::string shader_text(qorShaderHandle shader) {
        return shader == nullptr ? "null" : *static_cast<const std::string*>(shader);
    }

    bool add(std::string call) {
        calls.push_back(std::move(call));
        return true;
    }

    static std::string numbers(const qorMatrix& matrix) {
        std::string text;
        for (const auto& row : matrix.m) {
            for (const double number : row) {
                char one[32];
                std::snprintf(one, sizeof one, " %g", number);
                text += one;
            }
        }
        return text;
    }

    template <typename Number>
    static std::string list(const void* data, size_t count) {
        std::string text;
        for (size_t i = 0; i < count; ++i) {
            Number number;
            std::memcpy(&number, static_cast<const char*>(data) + i * sizeof number, sizeof number);
            text += (i > 0 ? " " : "") + std::to_string(number);
        }
        return text;
    }

    static std::string value_text(std::int32_t type, const void* value) {
        using namespace parameter_code;
        if ((type & kArray) != 0) {
            const qorArray& array = *static_cast<const qorArray*>(value);
            switch (type & ~kArray) {
                case kColor:
                    return list<float>(array.data, size_t{3} * array.count) + " (vec3 x" +
                           std::to_string(array.count) + ")";
                case kFloat:
                    return list<float>(array.data, array.count);
                case kDouble:
                    return list<double>(array.data, array.count);
                case kInt:
                    return list<std::int32_t>(array.data, array.count);
                default:
                    return "code " + std::to_string(type) + " x" + std::to_string(array.count);
            }
        }
        switch (type) {
            case kColor:
                return list<float>(value, 3);
            case kFloat:
                return list<float>(value, 1);
            case kDouble:
                return list<double>(value, 1) + " (double)";
            case kVector:
                return list<double>(value, 3) + " (vector)";
            case kInt:
                return list<std::int32_t>(value, 1);
            case kBool:
                return *static_cast<const std::int32_t*>(value) == 1 ? "on" : "off";
            case kText:
                return "\"" + std::string(static_cast<const char*>(value)) + "\"";
            default:
                return "code " + std::to_string(type);
        }
    }
};
