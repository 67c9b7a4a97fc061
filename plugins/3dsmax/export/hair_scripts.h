#pragma once

#include <string>

/// Hair can't be read off the host's modifier, so scripts bring it into reach: what the modifier
/// grows stands in the scene as splines for as long as a pass takes. They are marked by the
/// attribute that `find_hair_attributes` reads.

/// Adds a spline object for each object with hair, under the object's name.
std::wstring HairScript();

/// Deletes those splines.
extern const wchar_t* const HairCleanupScript;

/// Both run synchronously. Where a script fails, the export goes on without hair.
void RunHairScript();
void RunHairCleanupScript();
