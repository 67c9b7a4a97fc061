#include "plugins/3dsmax/export/hair_attributes.h"

#include <cwchar>

#include "plugins/3dsmax/export/hair_parameters.h"
#include "plugins/3dsmax/export/param_value.h"

namespace {

// Leaves `value` unchanged if the parameter can't be read.
template <typename Type>
void read(IParamBlock2& block, ParamID id, TimeValue time, Type& value) {
    value = ParamValue<Type>(block, id, time).value_or(value);
}

void read_block(IParamBlock2& block, TimeValue time, StrandLook& look) {
    ParamID id = 0;
    for (const HairParameter& parameter : kHairParameters) {
        if (parameter.number != nullptr) {
            read(block, id, time, look.*parameter.number);
        } else if (parameter.color != nullptr) {
            read(block, id, time, look.*parameter.color);
        }
        ++id;
    }
}

bool is_hair_attribute(CustAttrib* attribute) {
    const MCHAR* name = attribute == nullptr ? nullptr : attribute->GetName(false);
    return name != nullptr && std::wcscmp(name, kHairAttribute) == 0;
}

}  // namespace

std::optional<StrandLook> find_hair_attributes(Object* object, TimeValue time) {
    std::optional<StrandLook> look;
    ICustAttribContainer* const container = object->GetCustAttribContainer();
    const int count = container == nullptr ? 0 : container->GetNumCustAttribs();
    for (int i = 0; i < count; ++i) {
        CustAttrib* const attribute = container->GetCustAttrib(i);
        if (!is_hair_attribute(attribute)) {
            continue;
        }
        if (!look) {
            look.emplace();
        }
        if (IParamBlock2* const block = attribute->GetParamBlock(0)) {
            read_block(*block, time, *look);
        }
    }
    return look;
}
