#pragma once

#include <cstddef>
#include <cstdint>
#include <istream>
#include <memory>
#include <optional>

namespace vsqinfo {

/// The bytes of a stream in order, with their offsets and a look at the next two.
///
/// It holds one buffer of fixed size, whatever the length of the stream. Every operation throws
/// `UnreadableFile` if the stream fails in reading, as opposed to coming to its end.
class ByteSource {
public:
    static constexpr int kEnd = -1;

    /// Reads from where `stream` stands; that byte has the offset 0. The stream is borrowed.
    explicit ByteSource(std::istream& stream);

    /// The offset of the next byte, so also the number of bytes taken.
    std::uint64_t offset() const { return buffer_offset_ + position_; }

    /// The number of bytes up to the end, if the stream tells its length; a pipe doesn't.
    std::optional<std::uint64_t> bytes_left() const;

    /// The next byte, or `kEnd`.
    int peek() { return position_ < filled_ || fill(1) ? buffer_[position_] : kEnd; }

    /// The byte behind the next one, or `kEnd`.
    int peek_second() { return position_ + 1 < filled_ || fill(2) ? buffer_[position_ + 1] : kEnd; }

    /// Takes the byte that `peek` has just shown.
    void drop() { ++position_; }

    /// Takes up to `count` bytes into `target` and gives the number taken, which is smaller only
    /// at the end of the stream.
    std::size_t read(unsigned char* target, std::size_t count);

    /// The same without a target.
    std::uint64_t skip(std::uint64_t count);

private:
    /// Reads on until `count` bytes, 1 or 2, lie ahead in the buffer; false if there are fewer.
    bool fill(std::size_t count);

    std::istream& stream_;
    std::unique_ptr<unsigned char[]> buffer_;
    std::size_t position_ = 0;
    std::size_t filled_ = 0;
    std::uint64_t buffer_offset_ = 0;  // offset of the first byte in the buffer
    std::optional<std::uint64_t> length_;
};

}  // namespace vsqinfo
