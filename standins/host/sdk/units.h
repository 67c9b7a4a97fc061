#pragma once

#include "standins/host/sdk/maxtypes.h"

/// Units of length.
enum : int {
    UNITS_INCHES = 0,
    UNITS_FEET = 1,
    UNITS_MILES = 2,
    UNITS_MILLIMETERS = 3,
    UNITS_CENTIMETERS = 4,
    UNITS_METERS = 5,
    UNITS_KILOMETERS = 6,
};

/// One unit of the scene is `*scale` times the unit `*type`. Neither pointer may be null.
BOOL GetSystemUnitInfo(int* type, float* scale);
