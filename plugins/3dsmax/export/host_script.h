#pragma once

// The host's scripting API. It isn't part of host.h because the genuine header defines names that
// clash with the product's own.

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
