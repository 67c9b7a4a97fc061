#pragma once

#include "plugins/3dsmax/export/host.h"

/// The luminous flux of a photometric light in lumens, after dimming.
float LightLumens(LightscapeLight& light, TimeValue time);
