#pragma once

// The one way to the host: its genuine headers where the build has them, the stand-in's otherwise.
// Both declare the same names, and nothing else in the product asks which of them it is.

#ifdef VSQ_GENUINE_HOST_SDK
#include <max.h>
// max.h comes first: the others rely on it.
#include <AssetManagement/AssetType.h>
#include <units.h>
#else
#include "standins/host/sdk/max.h"
#endif
