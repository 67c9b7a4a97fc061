#include "importers/sceneapi/dev/shader_buffer.h"

#include <cstring>
#include <limits>
#include <stdexcept>
#include <utility>

void ShaderBuffer::append_bytes(const void* bytes, size_t size) {
    append(bytes, size);
    holds_bytes_ = 1;
}

std::string_view ShaderBuffer::contents() const {
    return {text_ ? text_.get() : "", static_cast<size_t>(length_)};
}

void ShaderBuffer::append(const void* data, size_t size) {
    const std::int64_t added = static_cast<std::int64_t>(size);
    if (length_ + added + 1 >= capacity_) {
        const std::int64_t grown = added + 2 * static_cast<std::int64_t>(capacity_) + 512;
        if (grown + 2 > std::numeric_limits<std::int32_t>::max()) {
            throw std::length_error("a shader with its arrays is too large");
        }
        auto moved = std::make_unique<char[]>(static_cast<size_t>(grown) + 2);
        if (length_ > 0) {
            std::memcpy(moved.get(), text_.get(), static_cast<size_t>(length_));
        }
        text_ = std::move(moved);
        capacity_ = static_cast<std::int32_t>(grown);
    }
    if (size > 0) {
        std::memcpy(text_.get() + length_, data, size);
    }
    length_ += static_cast<std::int32_t>(added);
    text_[static_cast<size_t>(length_)] = '\0';
}
