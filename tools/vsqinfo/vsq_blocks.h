#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace vsqinfo {

/// The kinds of blocks of a scene file, and the top level outside of all blocks.
enum class BlockKind : std::uint8_t {
    kTop,
    kGroup,
    kObject,
    kGeometry,
    kAnimation,
    kLoad,
    kOptions,
    kCamera,
    kImage,
    kOutput,
    kLight,
    kAccel,
    kMatrix,
    kMaterial,
    kShader,
    kFrame,
    kMotion,
    kArray,  ///< an array with a shader as its open element
};

/// "a camera", "the top level", ...
const char* block_phrase(BlockKind kind);

/// Block kinds as a set of bits.
using BlockSet = std::uint32_t;

template <typename... Kinds>
constexpr BlockSet block_set(Kinds... kinds) {
    return ((BlockSet{1} << static_cast<unsigned>(kinds)) | ... | BlockSet{0});
}

constexpr bool has_block(BlockSet set, BlockKind kind) {
    return (set & block_set(kind)) != 0;
}

/// What comes between the keyword and the opening brace.
enum class HeadForm : std::uint8_t {
    kBare,
    kName,
    kOptionalName,
    kType,
    kTypeAndName,
    kNameAndType,
    kThreeNames,
    kNumber,
    kShader,  ///< two names, or a number and a type without quotes
};

/// The head of a block: its keyword, the blocks that may contain it, and its form. The same keyword
/// after "#define" or "#modify" has its own set of blocks, which is empty if it isn't allowed
/// there.
struct BlockHead {
    std::string_view keyword;
    BlockKind kind;
    BlockSet placed_in;
    HeadForm placed_form;
    BlockSet defined_in;
    HeadForm defined_form;
    BlockSet modified_in;
};

/// Null if `keyword` begins no block.
const BlockHead* find_block_head(std::string_view keyword);

}  // namespace vsqinfo
