#pragma once

#include <cstddef>
#include <cstdint>
#include <istream>
#include <memory>
#include <optional>

namespace vsqinfo {

/// A place in a file.
struct FilePlace {
    std::uint64_t offset = 0;  ///< counted from 0
    std::uint64_t line = 0;    ///< counted from 1, as an editor does; 0 if there are no lines

    /// The place `bytes` further on, with the same line.
    FilePlace plus(std::uint64_t bytes) const { return {offset + bytes, line}; }
};

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

    /// The place of the next byte.
    FilePlace place() const { return {offset(), line_}; }

    /// The number of bytes up to the end. Nothing if the length is unknown, as for a pipe.
    std::optional<std::uint64_t> bytes_left() const;

    /// The next byte, or `kEnd`.
    int peek() { return position_ < filled_ || fill(1) ? buffer_[position_] : kEnd; }

    /// The byte after the next one, or `kEnd`.
    int peek_second() { return position_ + 1 < filled_ || fill(2) ? buffer_[position_ + 1] : kEnd; }

    /// Takes the byte that `peek` has just shown.
    void drop() {
        line_ += buffer_[position_] == '\n' ? 1 : 0;
        ++position_;
    }

    /// Takes up to `count` bytes into `target` and returns the number taken, which is smaller than
    /// `count` only at the end of the stream.
    std::size_t read(unsigned char* target, std::size_t count);

    /// Takes up to `count` bytes and drops them; returns the number taken.
    std::uint64_t skip(std::uint64_t count);

private:
    /// Takes `count` bytes, which the buffer must hold.
    void take(std::size_t count);

    /// Reads until the buffer holds `count` bytes, 1 or 2, ahead; false if there are fewer.
    bool fill(std::size_t count);

    std::istream& stream_;
    std::unique_ptr<unsigned char[]> buffer_;
    std::size_t position_ = 0;
    std::size_t filled_ = 0;
    std::uint64_t buffer_offset_ = 0;  // offset of the first byte in the buffer
    std::uint64_t line_ = 1;
    std::optional<std::uint64_t> length_;
};

}  // namespace vsqinfo
