#pragma once

// The host's API: the genuine headers if the build has them, otherwise the stand-in's. Both declare
// the same names. host_script.h makes the same choice; no other product code depends on it.

#ifdef VSQ_GENUINE_HOST_SDK
#ifdef _MSC_VER
#pragma warning(push, 0)
#endif
#include <max.h>
// These depend on max.h, and some of them on each other.
// clang-format off
#include <guplib.h>
#include <actiontable.h>
#include <imenuman.h>
#include <imenus.h>
#include <iparamb2.h>
#include <icustattribcontainer.h>
#include <custattrib.h>
#include <genlight.h>
#include <lslights.h>
#include <splshape.h>
#include <stdmat.h>
#include <triobj.h>
#include <MeshNormalSpec.h>
#include <path.h>
#include <bitmap.h>
#include <AssetManagement/AssetType.h>
#include <notify.h>
#include <ISceneEventManager.h>
#include <ILayerProperties.h>
#include <units.h>
#include <Util/IniUtil.h>
#include <winutil.h>
// clang-format on
#ifdef _MSC_VER
#pragma warning(pop)
#endif
#else
#include "standins/host/sdk/max.h"
#endif

// The host's headers define these as macros, but the standard library and the product use them as
// names.
#undef min
#undef max
#undef small
