#pragma once

#include <string>

#include "plugins/3dsmax/export/export_notes.h"
#include "plugins/3dsmax/export/material_entry.h"
#include "plugins/3dsmax/export/texture_baking.h"

/// "material 'Stone'", for a reason. Null is a node without a material.
std::string MaterialText(Mtl* mtl);

/// "material 'Stone', diffuse map".
std::string MapText(Mtl* mtl, TextureKind kind);

// Each of these does nothing if the entry has no notes.

/// The opacity and self-illumination of a Standard material.
void NoteStandardValues(const MaterialEntry& entry, StdMat& mtl);
void NoteGenericClass(const MaterialEntry& entry, Mtl* mtl);

/// The map of a slot or parameter that isn't sent, by its name in the host.
void NoteMapNotSent(const MaterialEntry& entry, Mtl* mtl, const MCHAR* slot);
/// The maps in the slots from `first` on, which aren't looked at.
void NoteSlotsFrom(const MaterialEntry& entry, Mtl* mtl, int first);

/// Maps that don't use the channel whose coordinates go out.
void NoteSecondChannels(const MaterialEntry& entry);
void NoteUnsoundCoordinates(const MaterialEntry& entry);

// What became of a map.
void NoteMissingChannel(const MaterialEntry& entry, Mtl* mtl, TextureKind kind, int channel);
void NoteMissingBitmap(const MaterialEntry& entry, Mtl* mtl, BitmapTex& texmap, TextureKind kind);
void NoteBaked(const MaterialEntry& entry, Mtl* mtl, Texmap* texmap, TextureKind kind,
               const std::wstring& path, BakeResult result);

/// A deforming mesh without its mesh file, with the likely cause.
void NoteUnwrittenLibrary(const NodeNotes& notes, const std::string& path);
