#include "importers/sceneapi/dev/numeric_locale.h"

#include <clocale>

NumericLocale::NumericLocale() {
    const char* current = std::setlocale(LC_NUMERIC, nullptr);
    saved_ = current != nullptr ? current : "C";
    std::setlocale(LC_NUMERIC, "C");
}

NumericLocale::~NumericLocale() {
    std::setlocale(LC_NUMERIC, saved_.c_str());
}
