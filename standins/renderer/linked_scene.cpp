#include "standins/renderer/linked_scene.h"

#include <algorithm>
#include <cstdarg>
#include <cstdio>

#include "importers/sceneapi/dev/numeric_locale.h"

namespace velmora {

bool LinkedScene::connect(const char* host, std::int32_t port, std::int32_t) {
    if (!connection_.open(host != nullptr ? host : "", port)) {
        return false;
    }
    shader_count_ = 0;
    current_shader_ = 0;
    saved_shaders_.clear();
    if (id_for_connection_) {
        forward<&qorScene_api::set_id>(*id_for_connection_);
        id_for_connection_.reset();
    }
    return true;
}

bool LinkedScene::disconnect() {
    if (!connection_.is_open()) {
        return false;
    }
    const std::optional<std::uint64_t> is_whole = connection_.ask_number(operation::kFinish);
    connection_.close();
    return is_whole == std::uint64_t{1};
}

bool LinkedScene::end_call() {
    connection_.end_frame();
    return connection_.is_open();
}

void LinkedScene::set_id(std::uint32_t id) {
    if (!connection_.is_open()) {
        id_for_connection_ = id;
        return;
    }
    forward<&qorScene_api::set_id>(id);
}

qorShaderHandle LinkedScene::current_shader() {
    return connection_.is_open() ? reinterpret_cast<qorShaderHandle>(current_shader_) : nullptr;
}

bool LinkedScene::begin_shader(const char* name, const char* type) {
    saved_shaders_.push_back(current_shader_);
    if (name == nullptr) {
        current_shader_ = ++shader_count_;
    }
    return forward<&qorScene_api::begin_shader>(name, type);
}

bool LinkedScene::begin_shader_id(const char* type, std::int32_t id) {
    saved_shaders_.push_back(current_shader_);
    return forward<&qorScene_api::begin_shader_id>(type, id);
}

// The shader stays current after it ends, so that the caller can ask for it.
void LinkedScene::end_shader() {
    if (!saved_shaders_.empty()) {
        saved_shaders_.pop_back();
    }
    forward<&qorScene_api::end_shader>();
}

void LinkedScene::push_shader() {
    saved_shaders_.push_back(current_shader_);
    forward<&qorScene_api::push_shader>();
}

void LinkedScene::pop_shader() {
    if (!saved_shaders_.empty()) {
        current_shader_ = saved_shaders_.back();
        saved_shaders_.pop_back();
    }
    forward<&qorScene_api::pop_shader>();
}

bool LinkedScene::set_parameter(const char* name, std::int32_t type, const void* value) {
    if (!begin_call<&qorScene_api::set_parameter>()) {
        return false;
    }
    put(name);
    put(type);
    if ((type & parameter_code::kArray) != 0) {
        put_array(type & ~parameter_code::kArray, *static_cast<const qorArray*>(value));
    } else {
        put_value(type, value);
    }
    return end_call();
}

void LinkedScene::add_array_element(std::int32_t type, const void* value) {
    if (begin_call<&qorScene_api::add_array_element>()) {
        put(type);
        put_value(type, value);
        end_call();
    }
}

// Type codes that write nothing to a file send no value here either.
void LinkedScene::put_value(std::int32_t type, const void* value) {
    if (type == parameter_code::kText) {
        put(static_cast<const char*>(value));
    } else if (type == parameter_code::kTextPointer) {
        put(*static_cast<const char* const*>(value));
    } else if (type == parameter_code::kShader) {
        put(*static_cast<const qorShaderHandle*>(value));
    } else if (const std::size_t size = value_size(type); size > 0) {
        connection_.put_block(value, size);
    }
}

void LinkedScene::put_array(std::int32_t element_code, const qorArray& array) {
    put(array.count);
    if (is_text_code(element_code)) {
        const char* const* texts = static_cast<const char* const*>(array.data);
        for (std::uint32_t i = 0; i < array.count; ++i) {
            put(texts[i]);
        }
    } else if (const std::uint64_t size = value_size(element_code); size > 0) {
        connection_.put_block(array.data, size * array.count);
    }
}

void LinkedScene::write_text(const char* format, ...) {
    const NumericLocale point_as_decimal_separator;
    std::va_list arguments;
    va_start(arguments, format);
    std::va_list arguments_again;
    va_copy(arguments_again, arguments);
    const int length = std::vsnprintf(nullptr, 0, format, arguments);
    va_end(arguments);
    if (length >= 0) {
        std::vector<char> text(static_cast<std::size_t>(length) + 1);
        std::vsnprintf(text.data(), text.size(), format, arguments_again);
        if (begin_call<&qorScene_api::write_text>()) {
            put(static_cast<const char*>(text.data()));
            end_call();
        }
    }
    va_end(arguments_again);
}

void LinkedScene::set_icon(const unsigned char* data, std::int32_t size) {
    if (begin_call<&qorScene_api::set_icon>()) {
        connection_.put_block(data, static_cast<std::uint64_t>(std::max(size, 0)));
        end_call();
    }
}

void LinkedScene::set_binary_parameter(const char* name, const unsigned char* data,
                                       std::int32_t size) {
    if (begin_call<&qorScene_api::set_binary_parameter>()) {
        put(name);
        connection_.put_block(data, static_cast<std::uint64_t>(std::max(size, 0)));
        end_call();
    }
}

}  // namespace velmora
