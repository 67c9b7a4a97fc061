#pragma once

#include "plugins/3dsmax/export/export_notes.h"
#include "plugins/3dsmax/export/host.h"

/// The host's inverse of a matrix, or the identity if there is none. The host guarantees nothing
/// for a matrix that is singular or contains NaN.
Matrix3 InverseOrIdentity(const Matrix3& matrix);

/// The same, with a note if there is no inverse. `whose` says which matrix it is.
Matrix3 InverseOrIdentity(const Matrix3& matrix, const NodeNotes& notes, const char* whose);

/// Whether all numbers of a matrix are finite.
bool IsFinite(const Matrix3& matrix);
