#pragma once

#include <cstdint>
#include <stdexcept>
#include <string>

namespace vsqinfo {

/// The file breaks the rules of its format. `what` is one line: the offset, then the reason.
class MalformedFile : public std::runtime_error {
public:
    MalformedFile(std::uint64_t offset, const std::string& reason)
        : std::runtime_error("offset " + std::to_string(offset) + ": " + reason),
          offset_(offset),
          reason_(reason) {}

    /// The byte, counted from 0, at which the file stops making sense. For a file that is cut
    /// short it is the file's length.
    std::uint64_t offset() const { return offset_; }

    /// The reason alone, in one line.
    const std::string& reason() const { return reason_; }

private:
    std::uint64_t offset_;
    std::string reason_;
};

/// The bytes of the file can't be had at all: it is missing, a folder, or fails to read.
class UnreadableFile : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

}  // namespace vsqinfo
