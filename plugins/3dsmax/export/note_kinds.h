#pragma once

#include <iterator>

/// How bad it is for the exported scene.
enum class NoteSeverity {
    kFailed,   ///< something that should have worked didn't
    kLost,     ///< left out, since a scene can't have it or the host's data is unsound
    kChanged,  ///< exported, but not as it is in the host
    kChosen,   ///< left out because of a setting of the export, of the node or of its object
};

constexpr const char* kSeverityNames[] = {"failed", "lost", "changed", "chosen"};

/// What a note can say, in the order of `kNoteKinds`: worst first.
enum class Note {
    kExportFailed,
    kLinkFailed,
    kLinkBroken,
    kLibraryNotWritten,
    kMapNotDrawn,
    kMapNotWritten,
    kHairScriptFailed,
    kFrameScriptNotWritten,

    kExportCancelled,
    kCaptureCancelled,
    kObjectMissing,
    kMeshClassLeftOut,
    kMeshNotConvertible,
    kMeshWithoutFaces,
    kMeshForeignVertices,
    kMeshCoordinatesOutOfRange,
    kMeshChannelMissing,
    kMeshVertexColours,
    kMapSlotNotSent,
    kBitmapMissing,
    kMaterialOpacity,
    kMaterialSelfIllumination,
    kLightKindUnknown,
    kLightWithoutShape,
    kSkyMapTooLate,
    kSkyWithoutPicture,
    kCameraStateUnread,
    kShapeNotConvertible,
    kSplineWithoutSegments,

    kMeshSecondChannel,
    kMaterialGeneric,
    kMapPictureShared,
    kLightFilterColour,
    kLightPowerCut,
    kLightWebMissing,
    kLightWebNotIes,
    kLightDistribution,
    kCameraOrthographic,
    kCameraClippingNotSent,
    kCameraFovAnimated,
    kShapeAtOneTime,
    kMatrixNotFinite,
    kMatrixWithoutInverse,
    kNameNarrowed,
    kNameEmpty,
    kNameTwice,

    kNodeHidden,
    kLightSwitchedOff,
    kMeshBonesOff,
    kShapeNotRenderable,
    kCurvesSwitchedOff,
    kCameraSwitchedOff,
    kTrackSwitchedOff,
};

struct NoteKind {
    Note note;
    const char* code;  ///< in the log and in reports; never changes its meaning
    NoteSeverity severity;
    const char* sentence;
    const char* facts;  ///< what the reason of such a note says
    /// The facts can change from frame to frame. Notes about a node are then merged whatever their
    /// reasons are, and the first reason is kept.
    bool facts_move = false;
};

/// Everything that an export notes. docs/report.md lists the same.
constexpr NoteKind kNoteKinds[] = {
    {Note::kExportFailed, "export-failed", NoteSeverity::kFailed,
     "The command ended with an error; the scene is incomplete.", "the error"},
    {Note::kLinkFailed, "link-failed", NoteSeverity::kFailed,
     "No renderer could be reached; nothing was sent.", "why the connection failed"},
    {Note::kLinkBroken, "link-broken", NoteSeverity::kFailed,
     "The link broke while the scene was sent.", "the error, and how many nodes had been sent"},
    {Note::kLibraryNotWritten, "library-not-written", NoteSeverity::kFailed,
     "The mesh file of a deforming mesh could not be written.",
     "the likely cause; the path is the mesh file"},
    {Note::kMapNotDrawn, "map-not-drawn", NoteSeverity::kFailed,
     "The host gave no bitmap to draw a map into.", "material and map; the path is the picture"},
    {Note::kMapNotWritten, "map-not-written", NoteSeverity::kFailed,
     "The picture of a drawn map could not be written.",
     "material and map; the path is the picture"},
    {Note::kHairScriptFailed, "hair-script-failed", NoteSeverity::kFailed,
     "The host's script that makes or removes splines of hair failed.", "which of the two scripts"},
    {Note::kFrameScriptNotWritten, "frame-script-not-written", NoteSeverity::kFailed,
     "The script that renders the frames could not be written.", "none; the path is the script"},

    {Note::kExportCancelled, "export-cancelled", NoteSeverity::kLost,
     "The user cancelled; the rest of the scene was left out.",
     "how many nodes or which frames were reached"},
    {Note::kCaptureCancelled, "capture-cancelled", NoteSeverity::kLost,
     "The user cancelled while a deforming mesh was captured; it has fewer frames.",
     "how many frames it has"},
    {Note::kObjectMissing, "object-missing", NoteSeverity::kLost,
     "A node has an object at tick 0, but not at the time of the export.", "the tick"},
    {Note::kMeshClassLeftOut, "mesh-class-left-out", NoteSeverity::kLost,
     "Geometry that only its own plug-in can render was left out.", "the class"},
    {Note::kMeshNotConvertible, "mesh-not-convertible", NoteSeverity::kLost,
     "Geometry that can't be converted to triangles was left out.", "the class"},
    {Note::kMeshWithoutFaces, "mesh-without-faces", NoteSeverity::kLost,
     "A mesh without vertices or faces was left out.", "both numbers"},
    {Note::kMeshForeignVertices, "mesh-foreign-vertices", NoteSeverity::kLost,
     "A mesh with a face that names a vertex which isn't there was left out.",
     "the first such face, and the number of vertices"},
    {Note::kMeshCoordinatesOutOfRange, "mesh-coordinates-out-of-range", NoteSeverity::kLost,
     "Texture coordinates whose indices are out of range were left out.", "the material"},
    {Note::kMeshChannelMissing, "mesh-channel-missing", NoteSeverity::kLost,
     "A map was left out, since the mesh lacks its mapping channel.",
     "material, map, and the channel"},
    {Note::kMeshVertexColours, "mesh-vertex-colours", NoteSeverity::kLost,
     "The vertex colours of a mesh were left out.", "none"},
    {Note::kMapSlotNotSent, "map-slot-not-sent", NoteSeverity::kLost,
     "A map has no counterpart in the renderer and was left out.", "material and slot"},
    {Note::kBitmapMissing, "bitmap-missing", NoteSeverity::kLost,
     "A map was left out, since its image file can't be loaded.",
     "material and map; the path is the image file"},
    {Note::kMaterialOpacity, "material-opacity", NoteSeverity::kLost,
     "The opacity of a Standard material was left out.", "material and opacity"},
    {Note::kMaterialSelfIllumination, "material-self-illumination", NoteSeverity::kLost,
     "The self-illumination of a Standard material was left out.", "material and value"},
    {Note::kLightKindUnknown, "light-kind-unknown", NoteSeverity::kLost,
     "A light of a kind that isn't exported was left out.", "the kind or the class"},
    {Note::kLightWithoutShape, "light-without-shape", NoteSeverity::kLost,
     "A photometric light whose shape gives no triangles was left out.", "the number of points"},
    {Note::kSkyMapTooLate, "sky-map-too-late", NoteSeverity::kLost,
     "The picture of a sky light was read when the cameras had been written.",
     "none; the path is the picture"},
    {Note::kSkyWithoutPicture, "sky-without-picture", NoteSeverity::kLost,
     "A sky light without a bitmap map that can be loaded was left out.", "what is missing"},
    {Note::kCameraStateUnread, "camera-state-unread", NoteSeverity::kLost,
     "The host didn't tell the state of a camera, which has no field of view.", "the tick"},
    {Note::kShapeNotConvertible, "shape-not-convertible", NoteSeverity::kLost,
     "A shape that can't be converted to splines was left out.", "the class"},
    {Note::kSplineWithoutSegments, "spline-without-segments", NoteSeverity::kLost,
     "Splines without segments were left out.", "how many of how many splines"},

    {Note::kMeshSecondChannel, "mesh-second-channel", NoteSeverity::kChanged,
     "A map goes out with the coordinates of another map's channel.",
     "material, map, and both channels"},
    {Note::kMaterialGeneric, "material-generic", NoteSeverity::kChanged,
     "A material of an unknown class goes out by what most materials have.", "material and class"},
    {Note::kMapPictureShared, "map-picture-shared", NoteSeverity::kChanged,
     "Two maps are drawn into one file, and both materials show the first.",
     "the material; the path is the picture"},
    {Note::kLightFilterColour, "light-filter-colour", NoteSeverity::kChanged,
     "A photometric light goes out without its filter colour.", "the colour"},
    {Note::kLightPowerCut, "light-power-cut", NoteSeverity::kChanged,
     "The power of a point light is cut to a whole number.", "both numbers", true},
    {Note::kLightWebMissing, "light-web-missing", NoteSeverity::kChanged,
     "A light's web file isn't found; it shines in all directions.", "none; the path is the file"},
    {Note::kLightWebNotIes, "light-web-not-ies", NoteSeverity::kChanged,
     "A light's web file isn't an IES file; it shines in all directions.",
     "none; the path is the file"},
    {Note::kLightDistribution, "light-distribution", NoteSeverity::kChanged,
     "The distribution of a photometric light doesn't go out.", "the distribution"},
    {Note::kCameraOrthographic, "camera-orthographic", NoteSeverity::kChanged,
     "An orthographic camera goes out as a perspective one.", "none"},
    {Note::kCameraClippingNotSent, "camera-clipping-not-sent", NoteSeverity::kChanged,
     "The clipping planes of a camera don't go out, since the near one isn't beyond 1.",
     "both distances", true},
    {Note::kCameraFovAnimated, "camera-fov-animated", NoteSeverity::kChanged,
     "A field of view that changes goes out as it is at the time of the export.", "none"},
    {Note::kShapeAtOneTime, "shape-at-one-time", NoteSeverity::kChanged,
     "A shape that changes goes out as it is at the time of the export.",
     "why its frames don't go out"},
    {Note::kMatrixNotFinite, "matrix-not-finite", NoteSeverity::kChanged,
     "The matrix of a node holds NaN or an infinity.", "none"},
    {Note::kMatrixWithoutInverse, "matrix-without-inverse", NoteSeverity::kChanged,
     "A matrix has no inverse; the identity took its place.", "whose matrix it is"},
    {Note::kNameNarrowed, "name-narrowed", NoteSeverity::kChanged,
     "A name or path lost characters that don't fit into one byte, or its end.",
     "whose name it is, and the name in the scene"},
    {Note::kNameEmpty, "name-empty", NoteSeverity::kChanged, "A name is empty in the scene.",
     "whose name it is"},
    {Note::kNameTwice, "name-twice", NoteSeverity::kChanged,
     "A node has the same name as another one beside it.", "none"},

    {Note::kNodeHidden, "node-hidden", NoteSeverity::kChosen,
     "The object of a hidden node was left out.", "none"},
    {Note::kLightSwitchedOff, "light-switched-off", NoteSeverity::kChosen,
     "A light was left out because of a setting.", "the setting"},
    {Note::kMeshBonesOff, "mesh-bones-off", NoteSeverity::kChosen,
     "A bone was left out because of the setting Bones.", "none"},
    {Note::kShapeNotRenderable, "shape-not-renderable", NoteSeverity::kChosen,
     "A shape was left out, since it isn't enabled in the renderer.", "none"},
    {Note::kCurvesSwitchedOff, "curves-switched-off", NoteSeverity::kChosen,
     "A shape was left out because of the setting GeneralCurves.", "none"},
    {Note::kCameraSwitchedOff, "camera-switched-off", NoteSeverity::kChosen,
     "A camera was left out because of the setting cameras.", "none"},
    {Note::kTrackSwitchedOff, "track-switched-off", NoteSeverity::kChosen,
     "Motion was left out because of a setting.", "the setting"},
};

constexpr const NoteKind& KindOf(Note note) {
    return kNoteKinds[static_cast<int>(note)];
}

constexpr const char* SeverityName(NoteSeverity severity) {
    return kSeverityNames[static_cast<int>(severity)];
}

namespace note_kinds {

constexpr bool AreInOrder() {
    for (int i = 0; i < static_cast<int>(std::size(kNoteKinds)); ++i) {
        if (static_cast<int>(kNoteKinds[i].note) != i ||
            (i > 0 && kNoteKinds[i].severity < kNoteKinds[i - 1].severity)) {
            return false;
        }
    }
    return std::size(kNoteKinds) == static_cast<std::size_t>(Note::kTrackSwitchedOff) + 1;
}
static_assert(AreInOrder(), "the table follows the enumeration, worst first");

}  // namespace note_kinds
