#pragma once

#include "plugins/3dsmax/export/export_notes.h"

// Each of these does nothing without notes.

/// What a photometric light that is exported loses, whatever its shape.
void NotePhotometricLight(const NodeNotes& notes, LightscapeLight& light);

/// The power of a point light, which goes out as a whole number.
void NotePower(const NodeNotes& notes, float power);

/// A light that is left out for its kind. `type` is that of a photometric light.
void NoteUnknownLight(const NodeNotes& notes, LightscapeLight& light, int type);
void NoteUnknownLight(const NodeNotes& notes, Object& light);
