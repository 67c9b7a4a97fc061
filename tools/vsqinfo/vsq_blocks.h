#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace vsqinfo {

/// The kinds of blocks of a scene file, and what is outside of all blocks.
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
    kArray,  ///< an array whose element, a shader, is open
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

/// What stands between the keyword and the opening brace.
enum class HeadForm : std::uint8_t {
    kBare,
    kName,
    kOptionalName,
    kType,
    kTypeAndName,
    kNameAndType,
    kThreeNames,
    kNumber,
    kShader,  ///< two names, or a number and a type as it is
};

/// The head of a block: its keyword, where it may stand, and its form. A keyword behind "#define"
/// or "#modify" has a place of its own, and an empty one if it can't be there.
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
