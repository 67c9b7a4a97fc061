#pragma once

#include <string>

/// The host's hair modifier doesn't expose its hair, so scripts convert the hair to splines for the
/// duration of a pass. The splines carry the attribute that `find_hair_attributes` reads.

/// The text of the script that adds a spline object, under the same name, for each object with
/// hair.
std::wstring HairScript();

/// The text of the script that deletes those splines.
extern const wchar_t* const HairCleanupScript;

/// Both wait until the script has ended. False if it failed; the export goes on without hair.
bool RunHairScript();
bool RunHairCleanupScript();
