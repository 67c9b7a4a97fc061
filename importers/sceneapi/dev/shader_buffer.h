#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string_view>

/// The text of one anonymous shader. It grows while the shader is open and is copied to each place
/// where the shader is used. It may contain null bytes, because binary arrays can be part of it.
class ShaderBuffer {
public:
    ShaderBuffer() = default;
    ShaderBuffer(const ShaderBuffer&) = delete;
    ShaderBuffer& operator=(const ShaderBuffer&) = delete;

    void append_text(std::string_view text) { append(text.data(), text.size()); }

    /// Like `append_text`, but marks the buffer as one that must be copied without changes.
    void append_bytes(const void* bytes, size_t size);

    std::string_view contents() const;

    /// True after `append_bytes`.
    bool holds_bytes() const { return holds_bytes_ != 0; }

private:
    void append(const void* data, size_t size);

    std::unique_ptr<char[]> text_;  // null-terminated
    std::int32_t length_ = 0;
    std::int32_t capacity_ = -1;
    std::int32_t holds_bytes_ = 0;
};
