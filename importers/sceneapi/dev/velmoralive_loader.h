#pragma once

#include "importers/sceneapi/dev/live_library.h"

/// The renderer's live library, opened when it is first asked for something and the same for the
/// whole process until it is unloaded. `min_version` and `max_version` bound the major version of
/// the renderer. The results are null if there is no library to be had, in which case the next call
/// looks for it anew; otherwise they belong to the library.
qorScene_api* qor_get_scene_api(int min_version, int max_version);
live_library::QueryApi* qor_get_query_api(int min_version, int max_version);

/// Takes back all that the library has given.
void unload();
