#pragma once

// The one way to the host: its genuine headers where the build has them, the stand-in's otherwise.
// Both declare the same names, and nothing else in the product asks which of them it is.

#ifdef VSQ_GENUINE_HOST_SDK
#ifdef _MSC_VER
#pragma warning(push, 0)
#endif
#include <max.h>
// The others rely on max.h, and some on one another.
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

// The host's headers define words that the standard library and the product use.
#undef min
#undef max
#undef small
