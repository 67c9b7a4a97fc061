#include "plugins/3dsmax/shell/radius_scale.h"

#include <cmath>
#include <iomanip>
#include <locale>
#include <sstream>

float RadiusMultiplierAt(int position) {
    return 0.0998124f * std::exp(0.0460705f * static_cast<float>(position));
}

std::string RadiusLabel(float multiplier) {
    std::ostringstream label;
    label.imbue(std::locale::classic());
    label << std::fixed << std::setprecision(multiplier < 0.5f ? 2 : 1) << multiplier;
    return label.str();
}
