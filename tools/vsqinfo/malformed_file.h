#pragma once

#include <cstdint>
#include <stdexcept>
#include <string>

#include "tools/vsqinfo/byte_source.h"
#include "tools/vsqinfo/check_table.h"

namespace vsqinfo {

/// The file breaks a rule of its format, so that it can't be read on. `what` is one line: the
/// offset, then the reason.
class MalformedFile : public std::runtime_error {
public:
    MalformedFile(FilePlace place, const std::string& reason, Check check = Check::kMalformed)
        : std::runtime_error("offset " + std::to_string(place.offset) + ": " + reason),
          place_(place),
          reason_(reason),
          check_(check) {}

    /// The first byte, counted from 0, that breaks a rule; the file's length if it is cut short.
    std::uint64_t offset() const { return place_.offset; }

    FilePlace place() const { return place_; }

    /// One line, without the offset.
    const std::string& reason() const { return reason_; }

    /// The check that found it.
    Check check() const { return check_; }

private:
    FilePlace place_;
    std::string reason_;
    Check check_;
};

/// The file can't be read: it is missing, a folder, or causes a read error.
class UnreadableFile : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

}  // namespace vsqinfo
