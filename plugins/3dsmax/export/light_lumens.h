#pragma once

#include "plugins/3dsmax/export/host.h"

/// What a photometric light gives off, in lumens, after dimming.
float LightLumens(LightscapeLight& light, TimeValue time);
