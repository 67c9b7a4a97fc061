#include "tools/vsqinfo/byte_source.h"

#include <algorithm>
#include <cstring>
#include <string>

#include "tools/vsqinfo/malformed_file.h"

namespace vsqinfo {
namespace {

constexpr std::size_t kBufferSize = 256 * 1024;

std::optional<std::uint64_t> length_of(std::istream& stream) {
    const std::istream::pos_type start = stream.tellg();
    if (start != std::istream::pos_type(-1) && stream.seekg(0, std::ios::end)) {
        const std::istream::pos_type end = stream.tellg();
        if (stream.seekg(start) && end >= start) {
            return static_cast<std::uint64_t>(end - start);
        }
    }
    stream.clear();
    return std::nullopt;
}

}  // namespace

ByteSource::ByteSource(std::istream& stream)
    : stream_(stream), buffer_(new unsigned char[kBufferSize]), length_(length_of(stream)) {}

std::optional<std::uint64_t> ByteSource::bytes_left() const {
    // A device, or a file that has grown meanwhile, has more bytes than its length says.
    if (!length_ || *length_ < offset()) {
        return std::nullopt;
    }
    return *length_ - offset();
}

bool ByteSource::fill(std::size_t count) {
    std::memmove(buffer_.get(), buffer_.get() + position_, filled_ - position_);
    buffer_offset_ += position_;
    filled_ -= position_;
    position_ = 0;

    while (filled_ < count && stream_) {
        stream_.read(reinterpret_cast<char*>(buffer_.get() + filled_),
                     static_cast<std::streamsize>(kBufferSize - filled_));
        filled_ += static_cast<std::size_t>(stream_.gcount());
    }
    if (stream_.bad()) {
        throw UnreadableFile("cannot be read at offset " + std::to_string(offset() + filled_));
    }
    return filled_ >= count;
}

void ByteSource::take(std::size_t count) {
    const unsigned char* const first = buffer_.get() + position_;
    line_ += static_cast<std::uint64_t>(std::count(first, first + count, '\n'));
    position_ += count;
}

std::size_t ByteSource::read(unsigned char* target, std::size_t count) {
    std::size_t taken = 0;
    while (taken < count && peek() != kEnd) {
        const std::size_t part = std::min(count - taken, filled_ - position_);
        std::memcpy(target + taken, buffer_.get() + position_, part);
        take(part);
        taken += part;
    }
    return taken;
}

std::uint64_t ByteSource::skip(std::uint64_t count) {
    std::uint64_t taken = 0;
    while (taken < count && peek() != kEnd) {
        const std::uint64_t part = std::min<std::uint64_t>(count - taken, filled_ - position_);
        take(static_cast<std::size_t>(part));
        taken += part;
    }
    return taken;
}

}  // namespace vsqinfo
