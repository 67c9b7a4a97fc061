#pragma once

#include "plugins/3dsmax/export/host.h"

/// The system's handle of the plug-in's library, from which its strings and its dialog are loaded.
/// Null until the library's entry point has set it.
extern HINSTANCE module_handle;

/// A text of the string table, or null if the id is unknown or there is no module. All calls share
/// one buffer, so a text is valid only until the next call: copy it at once.
const wchar_t* LoadStringResource(UINT id);
