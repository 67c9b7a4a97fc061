#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <stdexcept>
#include <type_traits>
#include <vector>

// What goes over the connection between the live library and the renderer.
//
// Either side sends frames: the number of an operation and the size of what follows, each in 64
// bits, then the arguments. Every argument is filled up to a multiple of 8 bytes, so that numbers
// lie where the processor wants them and nobody has to move an array to use it. A text or a block
// of bytes has its size in front. Both ends run on one machine and share its byte order.
//
// The client begins with `kHello`. Scene calls get no answer, so that nothing stands between them;
// every other operation gets one frame back, with its number and `kAnswer`.

namespace velmora {

namespace operation {

/// `kGreeting` and the client's process id; answered with the renderer's process id
constexpr std::uint64_t kHello = 0;
constexpr std::uint64_t kFinish = 1;           ///< ends a scene; answered with 1 if it is whole
constexpr std::uint64_t kTree = 2;             ///< answered with the scene tree as an XML text
constexpr std::uint64_t kStop = 3;             ///< ends the renderer; answered with 1
constexpr std::uint64_t kFirstSceneCall = 16;  ///< see `SceneCalls`

/// Set in the number of an answer, which a server that only repeats what it hears doesn't do.
constexpr std::uint64_t kAnswer = std::uint64_t{1} << 63;

}  // namespace operation

constexpr std::uint64_t kGreeting = 0x324b4e494c515356;  // "VSQLINK2"

struct FrameHead {
    std::uint64_t operation;
    std::uint64_t size;  // of the arguments, in bytes
};

constexpr std::uint64_t kLargestFrame = std::uint64_t{1} << 33;

/// In place of the size of a text that is null.
constexpr std::uint64_t kNullText = ~std::uint64_t{0};

constexpr std::uint64_t padded(std::uint64_t size) {
    return (size + 7) & ~std::uint64_t{7};
}

/// Puts frames together, one behind the other.
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

    /// `size_elsewhere` counts the bytes of the frame that don't go through here.
    void end(std::uint64_t size_elsewhere = 0) {
        const std::uint64_t size = bytes_.size() - start_ - sizeof(FrameHead) + size_elsewhere;
        std::memcpy(bytes_.data() + start_ + offsetof(FrameHead, size), &size, sizeof size);
    }

    const std::vector<char>& bytes() const { return bytes_; }
    void clear() { bytes_.clear(); }

private:
    std::vector<char> bytes_;
    std::size_t start_ = 0;  // of the frame that is open
};

class MalformedFrame : public std::runtime_error {
public:
    MalformedFrame() : std::runtime_error("malformed frame") {}
};

/// Takes the arguments of a frame off one by one; every operation throws `MalformedFrame` rather
/// than to go past the end. What it gives out points into the frame.
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

    /// Zero-terminated, or null.
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

// Any other byte than 0 and 1 is no value that a bool can have.
template <>
inline bool FrameReader::take<bool>() {
    return take<std::uint8_t>() != 0;
}

}  // namespace velmora
