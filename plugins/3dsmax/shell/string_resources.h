#pragma once

#include "plugins/3dsmax/export/host.h"

/// The plug-in's library as the system knows it: what its strings and its dialog are loaded from.
/// Null until the library's entry has set it.
extern HINSTANCE module_handle;

/// A text of the string table, or null if there is none of that id or no module. All loads share
/// one buffer, so a text holds until the next one is loaded: copy it at once.
const wchar_t* LoadStringResource(UINT id);
