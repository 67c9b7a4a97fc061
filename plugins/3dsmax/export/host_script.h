#pragma once

// The way to the host's scripts, apart from host.h: the genuine header defines names that clash
// with the product's own.

#ifdef VSQ_GENUINE_HOST_SDK
#ifdef _MSC_VER
#pragma warning(push, 0)
#endif
#include <maxscript/maxscript.h>
#ifdef _MSC_VER
#pragma warning(pop)
#endif
#else
#include "standins/host/sdk/maxscript/maxscript.h"
#endif
