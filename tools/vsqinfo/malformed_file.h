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

    /// The first byte, counted from 0, that breaks a rule; the file's length if it is cut short.
    std::uint64_t offset() const { return offset_; }

    /// One line, without the offset.
    const std::string& reason() const { return reason_; }

private:
    std::uint64_t offset_;
    std::string reason_;
};

/// The file can't be read: it is missing, a folder, or causes a read error.
class UnreadableFile : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

}  // namespace vsqinfo
