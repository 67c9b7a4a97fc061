#include "plugins/3dsmax/export/light_converter.h"

#include <utility>

LightConverter::LightConverter(std::shared_ptr<Qor::Options> options, Interface*)
    : options_(std::move(options)) {}

void LightConverter::Convert(INode*, qor::qorSceneapi_oo&, TimeValue) {}
