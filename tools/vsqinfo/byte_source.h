#pragma once

#include <cstddef>
#include <cstdint>
#include <istream>
#include <memory>
#include <optional>

namespace vsqinfo {

/// Reads the bytes of a stream in order, with their offsets and a look-ahead of two bytes.
///
/// Holds one buffer of fixed size, whatever the length of the stream. Every operation throws
/// `UnreadableFile` on a read error; the end of the stream is not an error.
class ByteSource {
public:
    static constexpr int kEnd = -1;

    /// Reads from the current position of `stream`, which has the offset 0. Borrows the stream.
    explicit ByteSource(std::istream& stream);

    /// The offset of the next byte, which is also the number of bytes taken.
    std::uint64_t offset() const { return buffer_offset_ + position_; }

    /// The number of bytes up to the end. Nothing if the length is unknown, as for a pipe.
    std::optional<std::uint64_t> bytes_left() const;

    /// The next byte, or `kEnd`.
    int peek() { return position_ < filled_ || fill(1) ? buffer_[position_] : kEnd; }

    /// The byte after the next one, or `kEnd`.
    int peek_second() { return position_ + 1 < filled_ || fill(2) ? buffer_[position_ + 1] : kEnd; }

    /// Takes the byte that `peek` has just shown.
    void drop() { ++position_; }

    /// Takes up to `count` bytes into `target` and returns the number taken, which is smaller than
    /// `count` only at the end of the stream.
    std::size_t read(unsigned char* target, std::size_t count);

    /// Takes up to `count` bytes and drops them; returns the number taken.
    std::uint64_t skip(std::uint64_t count);

private:
    /// Reads until the buffer holds `count` bytes, 1 or 2, ahead; false if there are fewer.
    bool fill(std::size_t count);

    std::istream& stream_;
    std::unique_ptr<unsigned char[]> buffer_;
    std::size_t position_ = 0;
    std::size_t filled_ = 0;
    std::uint64_t buffer_offset_ = 0;  // offset of the first byte in the buffer
    std::optional<std::uint64_t> length_;
};

}  // namespace vsqinfo
