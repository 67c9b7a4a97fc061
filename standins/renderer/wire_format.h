#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <stdexcept>
#include <type_traits>
#include <vector>

// The protocol between the live library and the renderer.
//
// Both sides send frames. A frame consists of two 64-bit numbers, the operation and the size of its
// arguments in bytes, followed by the arguments. Every argument is padded to a multiple of 8 bytes,
// so that numbers are aligned and arrays can be used in place. A text or a block of bytes is
// preceded by its size. Both ends run on one machine and share its byte order.
//
// The client begins with `kHello`. Scene calls get no answer, so that the client can send one after
// another without waiting. Every other operation is answered with one frame, whose number is that
// of the operation with `kAnswer` set.

namespace velmora {

namespace operation {

/// carries `kGreeting` and the client's process id; answered with the renderer's process id
constexpr std::uint64_t kHello = 0;
constexpr std::uint64_t kFinish = 1;           ///< ends a scene; answered with 1 if it was saved
constexpr std::uint64_t kTree = 2;             ///< answered with the scene's groups as XML
constexpr std::uint64_t kStop = 3;             ///< ends the renderer; answered with 1
constexpr std::uint64_t kFirstSceneCall = 16;  ///< see `SceneCalls`

/// Set in the operation number of an answer, to tell a renderer from a server that only echoes.
constexpr std::uint64_t kAnswer = std::uint64_t{1} << 63;

}  // namespace operation

constexpr std::uint64_t kGreeting = 0x324b4e494c515356;  // "VSQLINK2"

struct FrameHead {
    std::uint64_t operation;
    std::uint64_t size;  // of the arguments, in bytes
};

constexpr std::uint64_t kLargestFrame = std::uint64_t{1} << 33;

/// Sent instead of the size of a null text.
constexpr std::uint64_t kNullText = ~std::uint64_t{0};

constexpr std::uint64_t padded(std::uint64_t size) {
    return (size + 7) & ~std::uint64_t{7};
}

/// Builds frames, one after another.
class FrameWriter {
public:
    void begin(std::uint64_t operation) {
        start_ = bytes_.size();
        put(FrameHead{operation, 0});
    }

    template <typename Value>
    void put(const Value& value) {
        static_assert(std::is_trivially_copyable_v<Value> && !std::is_pointer_v<Value>);
        put_bytes(&value, sizeof value);
    }

    void put(const char* text) {
        if (text == nullptr) {
            put(kNullText);
            return;
        }
        const std::uint64_t size = std::strlen(text);
        put(size);
        put_bytes(text, size + 1);
    }

    void put_bytes(const void* bytes, std::uint64_t size) {
        const std::size_t end = bytes_.size();
        bytes_.resize(end + static_cast<std::size_t>(padded(size)));
        std::memcpy(bytes_.data() + end, bytes, static_cast<std::size_t>(size));
    }

    /// `size_elsewhere` is the number of argument bytes that are sent without this writer.
    void end(std::uint64_t size_elsewhere = 0) {
        const std::uint64_t size = bytes_.size() - start_ - sizeof(FrameHead) + size_elsewhere;
        std::memcpy(bytes_.data() + start_ + offsetof(FrameHead, size), &size, sizeof size);
    }

    const std::vector<char>& bytes() const { return bytes_; }
    /// Makes all bytes the same, for a renderer that answers nonsense.
    void overwrite(char byte) { std::fill(bytes_.begin(), bytes_.end(), byte); }
    void clear() { bytes_.clear(); }

private:
    std::vector<char> bytes_;
    std::size_t start_ = 0;  // where the open frame begins
};

class MalformedFrame : public std::runtime_error {
public:
    MalformedFrame() : std::runtime_error("malformed frame") {}
};

/// Reads the arguments of a frame one by one. Every operation throws `MalformedFrame` instead of
/// reading past the end. The blocks and texts that it returns point into the frame.
class FrameReader {
public:
    struct Block {
        const char* data;
        std::uint64_t size;
    };

    FrameReader(const char* arguments, std::uint64_t size) : next_(arguments), left_(size) {}

    template <typename Value>
    Value take() {
        static_assert(std::is_trivially_copyable_v<Value> && !std::is_pointer_v<Value>);
        Value value;
        std::memcpy(&value, take_bytes(sizeof value), sizeof value);
        return value;
    }

    Block take_block() {
        const auto size = take<std::uint64_t>();
        return {take_bytes(size), size};
    }

    /// A null-terminated text, or null.
    const char* take_text() {
        const auto size = take<std::uint64_t>();
        if (size == kNullText) {
            return nullptr;
        }
        if (size >= left_) {
            throw MalformedFrame();
        }
        const char* text = take_bytes(size + 1);
        if (text[size] != '\0') {
            throw MalformedFrame();
        }
        return text;
    }

    void expect_end() const {
        if (left_ != 0) {
            throw MalformedFrame();
        }
    }

private:
    const char* take_bytes(std::uint64_t size) {
        if (size > left_ || padded(size) > left_) {
            throw MalformedFrame();
        }
        const char* bytes = next_;
        next_ += padded(size);
        left_ -= padded(size);
        return bytes;
    }

    const char* next_;
    std::uint64_t left_;
};

// A bool may only hold 0 or 1, so a byte from the link isn't copied into one.
template <>
inline bool FrameReader::take<bool>() {
    return take<std::uint8_t>() != 0;
}

}  // namespace velmora
