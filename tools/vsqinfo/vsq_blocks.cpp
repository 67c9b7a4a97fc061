#include "tools/vsqinfo/vsq_blocks.h"

namespace vsqinfo {
namespace {

using B = BlockKind;
using F = HeadForm;

constexpr BlockSet kNowhere = 0;
// Sets of blocks that may contain the parts of a scene. A frame may contain whatever a group may.
constexpr BlockSet kInGroup = block_set(B::kGroup, B::kFrame);
constexpr BlockSet kInScene = kInGroup | block_set(B::kTop);
constexpr BlockSet kInSettings = kInScene | block_set(B::kOptions, B::kImage);
constexpr BlockSet kWithMaterial = kInGroup | block_set(B::kObject, B::kLight);
constexpr BlockSet kWithMotion =
    kInScene | block_set(B::kObject, B::kCamera, B::kLight, B::kAnimation, B::kMatrix);
constexpr BlockSet kWithShaders =
    kInSettings | block_set(B::kObject, B::kCamera, B::kLight, B::kMaterial, B::kShader);

constexpr BlockHead kHeads[] = {
    {"group", B::kGroup, kInScene, F::kName, kInScene, F::kName, kNowhere},
    {"object", B::kObject, kInGroup, F::kName, kInScene, F::kName, kNowhere},
    {"geometry", B::kGeometry, block_set(B::kObject), F::kType, kInScene, F::kNameAndType,
     kNowhere},
    {"material", B::kMaterial, kWithMaterial, F::kName, kWithMaterial | kInScene, F::kName,
     kWithMaterial | kInScene},
    {"shader", B::kShader, kNowhere, F::kShader, kWithShaders, F::kShader, kNowhere},
    {"matrix", B::kMatrix, kNowhere, F::kName, kInScene | block_set(B::kObject, B::kCamera),
     F::kName, kNowhere},
    {"animation", B::kAnimation, kInGroup | block_set(B::kCamera), F::kTypeAndName, kNowhere,
     F::kTypeAndName, kNowhere},
    {"camera", B::kCamera, kInScene, F::kOptionalName, kNowhere, F::kName, kInScene},
    {"load", B::kLoad, block_set(B::kTop), F::kName, kNowhere, F::kName, kNowhere},
    {"options", B::kOptions, kInScene, F::kBare, kNowhere, F::kBare, kNowhere},
    {"image", B::kImage, kInScene, F::kBare, kNowhere, F::kBare, kNowhere},
    {"output", B::kOutput, kInSettings, F::kThreeNames, kNowhere, F::kThreeNames, kNowhere},
    {"light", B::kLight, kInScene, F::kName, kNowhere, F::kName, kNowhere},
    {"accel", B::kAccel, kInSettings | block_set(B::kObject), F::kName, kNowhere, F::kName,
     kNowhere},
    {"frame", B::kFrame, kWithMotion, F::kNumber, kNowhere, F::kNumber, kNowhere},
    {"motion", B::kMotion, kWithMotion, F::kNumber, kNowhere, F::kNumber, kNowhere},
};

constexpr const char* kPhrases[] = {
    "the top level", "a group",        "an object", "a geometry",      "an animation",
    "a load block",  "the options",    "a camera",  "the image block", "an output",
    "a light",       "an accel block", "a matrix",  "a material",      "a shader",
    "a frame",       "a motion",       "an array",
};

}  // namespace

const char* block_phrase(BlockKind kind) {
    return kPhrases[static_cast<std::size_t>(kind)];
}

const BlockHead* find_block_head(std::string_view keyword) {
    for (const BlockHead& head : kHeads) {
        if (head.keyword == keyword) {
            return &head;
        }
    }
    return nullptr;
}

}  // namespace vsqinfo
