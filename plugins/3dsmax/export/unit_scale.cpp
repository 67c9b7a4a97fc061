#include "plugins/3dsmax/export/unit_scale.h"

#include "plugins/3dsmax/export/host.h"

namespace {

struct UnitScale {
    int unit;
    float units_per_meter;
};

constexpr UnitScale kUnitScales[] = {
    {UNITS_INCHES, 39.37008f},    {UNITS_FEET, 3.28084f},      {UNITS_MILES, 1.0f / 1609.344f},
    {UNITS_MILLIMETERS, 1000.0f}, {UNITS_CENTIMETERS, 100.0f}, {UNITS_METERS, 1.0f},
    {UNITS_KILOMETERS, 0.001f},
};

}  // namespace

float GetUnitScale() {
    int unit = UNITS_METERS;
    float scale = 1.0f;
    GetSystemUnitInfo(&unit, &scale);
    for (const UnitScale& known : kUnitScales) {
        if (known.unit == unit) {
            return known.units_per_meter;
        }
    }
    return 1.0f;
}
