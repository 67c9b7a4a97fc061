#include "tools/vsqinfo/check_table.h"

#include <cstddef>

namespace vsqinfo {
namespace {

using C = Check;
constexpr Severity kE = Severity::kError;
constexpr Severity kW = Severity::kWarning;
constexpr Severity kH = Severity::kHint;

constexpr CheckRow kRows[] = {
    {C::kMalformed, "malformed", kE, "The file breaks the grammar here; what follows isn't read."},
    {C::kCutShort, "cut-short", kE, "The file ends before it is complete."},
    {C::kHeader, "header", kE, "The header has a wrong text or value."},
    {C::kMisplaced, "misplaced", kE, "A statement is in a block that can't contain it."},

    {C::kRootTwice, "root-twice", kE, "There is more than one root group."},
    {C::kBehindRoot, "behind-root", kW,
     "A statement that belongs before the root group follows it."},
    {C::kVersionRange, "version-range", kE, "The version isn't a positive number of 32 bits."},
    {C::kVersionUnknown, "version-unknown", kW, "The version isn't 9, the only one described."},
    {C::kVersionTwice, "version-twice", kW, "The version is given twice."},
    {C::kBannerMissing, "banner-missing", kH, "No message tells which program wrote the file."},
    {C::kErrorMessage, "error-message", kW, "The writer reports an error."},
    {C::kMessageLineFeed, "message-line-feed", kW, "The text of a message contains a line feed."},

    {C::kStatementMisspelt, "statement-misspelt", kW,
     "A parameter's name is almost that of a statement."},
    {C::kNotAscii, "not-ascii", kW, "The name of a plain parameter has a byte that isn't ASCII."},
    {C::kHexName, "hex-name", kH, "A name is in hexadecimal form without need."},
    {C::kNumberForm, "number-form", kH,
     "A number is written in another form than a writer gives it."},

    {C::kFlagsRange, "flags-range", kE, "The flags don't fit into 32 bits."},
    {C::kFlagsTwice, "flags-twice", kW, "A block has flags twice."},
    {C::kNameEmpty, "name-empty", kW, "A block has an empty name."},
    {C::kNameTwice, "name-twice", kH, "Two objects of a group have one name."},
    {C::kGeometryKind, "geometry-kind", kW, "The kind of a geometry isn't known."},
    {C::kAnimationKind, "animation-kind", kW, "The kind of an animation isn't known."},
    {C::kObjectBare, "object-bare", kH, "An object has no geometry."},
    {C::kGeometryTwice, "geometry-twice", kW, "An object has more than one geometry."},

    {C::kParameterForm, "parameter-form", kW,
     "A parameter is plain where the block takes quoted ones, or the other way round."},
    {C::kParameterTwice, "parameter-twice", kW, "A block has a parameter twice in the same form."},
    {C::kParameterKind, "parameter-kind", kE, "A parameter has a value of the wrong kind."},
    {C::kParameterCount, "parameter-count", kE, "A parameter has a wrong number of numbers."},
    {C::kColourCount, "colour-count", kE, "A colour doesn't have three numbers."},
    {C::kNotFinite, "not-finite", kW, "A parameter is NaN or infinite."},
    {C::kFovRange, "fov-range", kW, "A camera's field of view isn't between 0 and 180 degrees."},
    {C::kClipPlanes, "clip-planes", kW, "A camera's near clip plane isn't before the far one."},
    {C::kProjectionUnknown, "projection-unknown", kW, "A camera's projection isn't known."},
    {C::kMeterScale, "meter-scale", kE, "The number of units per metre isn't positive."},
    {C::kDurationNegative, "duration-negative", kW, "An animation's duration is negative."},

    {C::kIdTwice, "id-twice", kE, "Two objects have the same number."},
    {C::kInstanceWithoutId, "instance-without-id", kE, "An instance doesn't say what it repeats."},
    {C::kInstanceTarget, "instance-target", kE, "An instance repeats an object that isn't there."},
    {C::kAnimationTarget, "animation-target", kE,
     "An animation deforms an object that isn't there."},
    {C::kShaderTwice, "shader-twice", kE, "A shader number is defined twice."},
    {C::kShaderUndefined, "shader-undefined", kE, "A shader number is used before its definition."},
    {C::kShaderUnused, "shader-unused", kH, "A numbered shader is never used."},
    {C::kMaterialUndefined, "material-undefined", kE, "A material is used but not defined."},
    {C::kMaterialBare, "material-bare", kW, "A material has no surface."},
    {C::kAssignmentTwice, "assignment-twice", kW, "A material assigns two shaders to one kind."},

    {C::kMatrixCount, "matrix-count", kE, "A matrix doesn't have sixteen numbers."},
    {C::kMatrixNotFinite, "matrix-not-finite", kW, "A matrix has NaN or an infinity."},
    {C::kMatrixSingular, "matrix-singular", kW, "A matrix has no inverse."},
    {C::kMatrixColumn, "matrix-column", kW, "The fourth column of a matrix isn't 0, 0, 0, 1."},
    {C::kMatrixTwice, "matrix-twice", kH, "A block has more than one matrix; they multiply."},

    {C::kArrayTag, "array-tag", kE, "A known array holds numbers of the wrong type."},
    {C::kArrayWidth, "array-width", kE, "A known array doesn't hold whole elements."},
    {C::kArrayTwice, "array-twice", kE, "A block has an array twice."},
    {C::kArrayLengths, "array-lengths", kW,
     "Arrays that are parallel to the vertices have another length."},
    {C::kArrayNotFinite, "array-not-finite", kW, "An array has NaN or infinities."},
    {C::kIndexCount, "index-count", kE, "The indices aren't whole triangles."},
    {C::kIndexRange, "index-range", kE, "An index refers to a point that isn't there."},
    {C::kTrianglesWithoutVertices, "triangles-without-vertices", kE,
     "A mesh has indices, but not the points that they refer to."},
    {C::kTriangleDegenerate, "triangle-degenerate", kW, "Triangles have two corners in one place."},
    {C::kLightDegenerate, "light-degenerate", kH,
     "Triangles of a light have two corners in one place."},
    {C::kNormalLength, "normal-length", kH, "Normals don't have the length 1."},
    {C::kGeometryEmpty, "geometry-empty", kW, "A geometry has neither arrays nor a file."},
    {C::kFileAndArrays, "file-and-arrays", kW, "A mesh has arrays and a file."},
    {C::kStrandPoints, "strand-points", kE, "The strands don't have as many points as there are."},
    {C::kStrandLengths, "strand-lengths", kE,
     "Radii or colours don't match the points of the strands."},
    {C::kStrandShort, "strand-short", kW, "A strand has fewer points than its order needs."},
    {C::kTrackLengths, "track-lengths", kE, "A track doesn't have a matrix for each timestamp."},
    {C::kTrackOrder, "track-order", kW, "The timestamps of a track don't increase."},
    {C::kTrackEmpty, "track-empty", kW, "A track has no keys."},

    {C::kTextureMissing, "texture-missing", kW, "A texture file isn't there."},
    {C::kMeshFileMissing, "mesh-file-missing", kE, "A mesh file isn't there."},
    {C::kMeshFileMalformed, "mesh-file-malformed", kE, "A mesh file of the scene is malformed."},
    {C::kRendererFile, "renderer-file", kH, "A texture is one that the renderer brings along."},

    {C::kMeshBlocks, "mesh-blocks", kE,
     "A block of a mesh file is unknown, out of order or of a wrong size."},
    {C::kMeshLengths, "mesh-lengths", kE,
     "Arrays of a mesh file that belong together differ in length."},
    {C::kMeshIndex, "mesh-index", kE,
     "An index of a mesh file refers to an element that isn't there."},
    {C::kMeshBox, "mesh-box", kE, "A vertex of a mesh file is outside the box."},
    {C::kMeshFrames, "mesh-frames", kE, "The frames of a mesh file don't fit its arrays."},
    {C::kMeshEnd, "mesh-end", kE, "The end of a mesh file's data doesn't fit its blocks."},
    {C::kMeshNotFinite, "mesh-not-finite", kW, "An array of a mesh file has NaN or infinities."},
    {C::kMeshDegenerate, "mesh-degenerate", kW,
     "Triangles of a mesh file have two corners in one vertex."},
    {C::kMeshNormalLength, "mesh-normal-length", kH,
     "Normals of a mesh file don't have the length 1."},
    {C::kMeshBoxLarge, "mesh-box-large", kH,
     "The box of a mesh file is larger than its vertices need."},
    {C::kMeshFrameOrder, "mesh-frame-order", kW,
     "The frames of a mesh file don't follow one another in time."},
    {C::kMeshFrameGap, "mesh-frame-gap", kH,
     "Numbers are missing between the frames of a mesh file."},
};

constexpr bool rows_are_in_order() {
    std::size_t place = 0;
    for (const CheckRow& row : kRows) {
        if (static_cast<std::size_t>(row.check) != place++) {
            return false;
        }
    }
    return place == static_cast<std::size_t>(Check::kCount);
}
static_assert(rows_are_in_order(), "each check has a row, in the order of the checks");

constexpr std::string_view kSeverityWords[] = {"error", "warning", "hint"};

}  // namespace

std::string_view severity_word(Severity severity) {
    return kSeverityWords[static_cast<std::size_t>(severity)];
}

const CheckRow& check_row(Check check) {
    return kRows[static_cast<std::size_t>(check)];
}

}  // namespace vsqinfo
