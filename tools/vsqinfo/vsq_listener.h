#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "tools/vsqinfo/byte_source.h"
#include "tools/vsqinfo/malformed_file.h"

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
    bool is_change = false;              ///< follows "#modify"
    FilePlace place;                     ///< of the block's statement
};

/// A statement that is neither a block nor a matrix, valid during the call that passes it.
struct VsqStatement {
    /// "flags", "version", "#error", "surface", "reflection map", ...; "material" and "instance"
    /// name what is defined elsewhere.
    std::string_view word;
    std::string_view text;               ///< the name or message; of "attribute", its value
    std::optional<std::int64_t> number;  ///< of an assignment, the shader's
    std::array<double, 3> vector{};      ///< of "scale", "rotate" and "translate"
    FilePlace place;
};

/// The kind of a parameter's value.
enum class ValueForm : std::uint8_t {
    kNone,
    kWords,   ///< numbers, "on" and "off"
    kText,    ///< a name
    kShader,  ///< the number of a shader
    kData,    ///< hexadecimal data, which isn't kept
};

/// A parameter whose value is neither an array nor an anonymous shader, valid during the call that
/// passes it.
struct VsqParameter {
    std::string_view name;
    std::string_view value;  ///< words with one blank between them, or the decoded text
    ValueForm form;
    std::optional<std::int64_t> shader;
    bool is_quoted;  ///< written as a name and a comma
    FilePlace place;
};

/// The head of an array, valid during the call that passes it.
struct VsqArray {
    std::string_view name;
    bool is_quoted;
    FilePlace place;  ///< of the parameter
};

/// Successive numbers of an array.
struct VsqNumbers {
    const double* numbers;
    std::size_t count;
    FilePlace place;   ///< of the first number
    std::size_t size;  ///< of a number in bytes; 0 for text, whose numbers come one by one
};

/// What an array turned out to be.
struct VsqArrayEnd {
    char tag = 0;  ///< of its binary body; 0 for text
    std::uint64_t numbers = 0;
    std::uint64_t texts = 0;
    std::uint64_t shaders = 0;
};

/// Receives a scene's content while the file is read, in file order.
///
/// The file may turn out to be malformed later, so the content is valid only once the reader
/// returns. Each operation does nothing unless it is overridden, except `fault`.
class VsqListener {
public:
    virtual ~VsqListener() = default;

    virtual void block_begins(const VsqBlock&) {}
    /// Closes the last block that is open.
    virtual void block_ends() {}
    /// A "transform" statement, or with `replaces` a "set transform".
    virtual void matrix(const VsqMatrix&, bool /*replaces*/, FilePlace) {}
    virtual void statement(const VsqStatement&) {}
    virtual void parameter(const VsqParameter&) {}

    /// True to get the array's numbers. A shader that is an element of the array is a block between
    /// the begin and the end.
    virtual bool array_begins(const VsqArray&) { return false; }
    virtual void array_numbers(const VsqNumbers&) {}
    virtual void array_ends(const VsqArrayEnd&) {}

    /// Every name or text of the file: its bytes, and whether they are in hexadecimal form.
    virtual void name(std::string_view, bool /*is_hex*/, FilePlace) {}
    /// Every number that is written as text, apart from integers of statements and from progress.
    virtual void number(std::string_view /*word*/, FilePlace) {}

    /// A broken rule after which the file can be read on. By default, the file is refused.
    virtual void fault(Check check, FilePlace place, const std::string& reason) {
        throw MalformedFile(place, reason, check);
    }
};

}  // namespace vsqinfo
