#pragma once

#include "importers/sceneapi/dev/live_library.h"

/// The renderer's live library. The first call opens it, and the whole process shares it until
/// `unload`. `min_version` and `max_version` are limits of the renderer's major version, both
/// included. The functions return null if the library can't be opened; the next call then tries
/// again. The returned objects belong to the library.
qorScene_api* qor_get_scene_api(int min_version, int max_version);
live_library::QueryApi* qor_get_query_api(int min_version, int max_version);

/// Unloads the library, which invalidates all returned objects.
void unload();
