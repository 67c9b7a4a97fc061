#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace vsqinfo {

/// Sixteen numbers, row by row; the fourth row is the translation.
using VsqMatrix = std::array<double, 16>;

/// The head of a block, valid during the call that passes it.
struct VsqBlock {
    std::string_view keyword;  ///< "group", "object", "shader", ...
    /// Empty for a block without a name. An anonymous shader gets the name of the parameter, or the
    /// kind of the assignment, whose value it is.
    std::string name;
    std::string type;                    ///< of shaders, geometries and animations
    std::optional<std::int64_t> number;  ///< of a numbered shader
    bool is_definition = false;          ///< follows "#define"
    std::uint64_t offset = 0;            ///< of the block's statement
};

/// Receives a scene's content while the file is read, in file order.
///
/// The file may turn out to be malformed later, so the content is valid only once the reader
/// returns. Each operation does nothing unless it is overridden.
class VsqListener {
public:
    virtual ~VsqListener() = default;

    virtual void block_begins(const VsqBlock&) {}
    /// Closes the last block that is open.
    virtual void block_ends() {}
    /// A "transform" statement, or with `replaces` a "set transform".
    virtual void matrix(const VsqMatrix&, bool /*replaces*/) {}
};

}  // namespace vsqinfo
