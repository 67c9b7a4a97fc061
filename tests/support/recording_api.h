#pragma once

#include <deque>
#include <sstream>
#include <string>
#include <vector>

#include "importers/sceneapi/dev/null_api.h"
#include "importers/sceneapi/dev/parameter_codes.h"

/// Keeps one line for each call that an object causes, so that tests can compare whole streams.
class RecordingApi final : public NullApi {
public:
    std::vector<std::string> calls;

    bool begin_object(const char* name, bool place) override {
        return add(place ? "begin_object" : "define_object", name);
    }
    void end_object() override { add("end_object"); }
    bool begin_geometry(const char* kind) override { return add("begin_geometry", kind); }
    void end_geometry() override { add("end_geometry"); }
    void transform(const qorMatrix& matrix) override {
        std::string numbers;
        for (const auto& row : matrix.m) {
            numbers += list<double>(row, 4) + " ";
        }
        add("transform", numbers);
    }
    bool begin_material(const char* name, bool place) override {
        return add(place ? "begin_material" : "define_material", name);
    }
    void end_material() override { add("end_material"); }
    void assign_shader(std::int32_t kind, qorShaderHandle shader) override {
        add("assign_shader", kind, *static_cast<const std::string*>(shader));
    }
    bool begin_shader(const char* name, const char* type) override {
        shader_types_.emplace_back(type);
        return add("begin_shader", name == nullptr ? "-" : name, type);
    }
    void end_shader() override { add("end_shader"); }
    qorShaderHandle current_shader() override {
        add("current_shader");
        return &shader_types_.back();
    }
    bool set_parameter(const char* name, std::int32_t type, const void* value) override {
        return add(name, value_text(type, value));
    }
    void set_flags(std::uint32_t flags) override { add("set_flags", flags); }
    void print_error(const char* error) override { add("print_error", error); }

private:
    std::deque<std::string> shader_types_;  // a handle points to one

    template <typename... Arguments>
    bool add(const std::string& call, const Arguments&... arguments) {
        std::ostringstream line;
        line << std::fixed << call;
        ((line << ' ' << arguments), ...);
        calls.push_back(line.str());
        return true;
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
            case kInt:
                return list<std::int32_t>(data, count);
            case kBool:
                return *static_cast<const std::int32_t*>(data) == 1 ? "on" : "off";
            case kText:
                return "\"" + std::string(static_cast<const char*>(data)) + "\"";
            default:
                return "code " + std::to_string(type) + elements;
        }
    }
};
