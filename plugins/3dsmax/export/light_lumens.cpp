#include "plugins/3dsmax/export/light_lumens.h"

float LightLumens(LightscapeLight& light, TimeValue time) {
    return light.GetResultingFlux(time);
}
