#pragma once

#include <cstdint>
#include <string_view>

namespace vsqinfo {

/// How much a finding matters.
enum class Severity : std::uint8_t {
    kError,    ///< the file breaks the format, or a reader can't do what it asks for
    kWarning,  ///< allowed, but hardly meant
    kHint,     ///< worth knowing
};

/// "error", "warning" or "hint".
std::string_view severity_word(Severity severity);

/// What is checked, in the order of the table that `check_rows` gives.
enum class Check : std::uint8_t {
    // Reading.
    kMalformed,
    kCutShort,
    kHeader,
    kMisplaced,
    // The file as a whole.
    kRootTwice,
    kBehindRoot,
    kVersionRange,
    kVersionUnknown,
    kVersionTwice,
    kBannerMissing,
    kErrorMessage,
    kMessageLineFeed,
    // Spelling.
    kStatementMisspelt,
    kNotAscii,
    kHexName,
    kNumberForm,
    // Blocks.
    kFlagsRange,
    kFlagsTwice,
    kNameEmpty,
    kNameTwice,
    kGeometryKind,
    kAnimationKind,
    kObjectBare,
    kGeometryTwice,
    // Parameters.
    kParameterForm,
    kParameterTwice,
    kParameterKind,
    kParameterCount,
    kColourCount,
    kNotFinite,
    kFovRange,
    kClipPlanes,
    kProjectionUnknown,
    kMeterScale,
    kDurationNegative,
    // References.
    kIdTwice,
    kInstanceWithoutId,
    kInstanceTarget,
    kAnimationTarget,
    kShaderTwice,
    kShaderUndefined,
    kShaderUnused,
    kMaterialUndefined,
    kMaterialBare,
    kAssignmentTwice,
    // Matrices.
    kMatrixCount,
    kMatrixNotFinite,
    kMatrixSingular,
    kMatrixColumn,
    kMatrixTwice,
    // Arrays.
    kArrayTag,
    kArrayWidth,
    kArrayTwice,
    kArrayLengths,
    kArrayNotFinite,
    kIndexCount,
    kIndexRange,
    kTrianglesWithoutVertices,
    kTriangleDegenerate,
    kLightDegenerate,
    kNormalLength,
    kGeometryEmpty,
    kFileAndArrays,
    kStrandPoints,
    kStrandLengths,
    kStrandShort,
    kTrackLengths,
    kTrackOrder,
    kTrackEmpty,
    // Files.
    kTextureMissing,
    kMeshFileMissing,
    kMeshFileMalformed,
    kRendererFile,
    // Mesh files.
    kMeshBlocks,
    kMeshLengths,
    kMeshIndex,
    kMeshBox,
    kMeshFrames,
    kMeshEnd,
    kMeshNotFinite,
    kMeshDegenerate,
    kMeshNormalLength,
    kMeshBoxLarge,
    kMeshFrameOrder,
    kMeshFrameGap,
    kCount,
};

struct CheckRow {
    Check check;
    std::string_view code;
    Severity severity;
    std::string_view sentence;  ///< what a finding of it means, ending in a full stop
};

/// The row of `check`, which must not be `kCount`.
const CheckRow& check_row(Check check);

}  // namespace vsqinfo
