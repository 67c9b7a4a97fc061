#include "plugins/3dsmax/export/hair_attributes.h"

#include <cwchar>

namespace {

constexpr wchar_t kAttributeName[] = L"velmora_hair_and_fur_data";

// The places in the attribute's block, which follow the order of the parameters in `HairScript`. At
// 2 stands the mark for the script that cleans up.
constexpr struct {
    ParamID id;
    float StrandLook::*field;
} kNumbers[] = {
    {0, &StrandLook::start_radius},
    {1, &StrandLook::end_radius},
    {5, &StrandLook::hue},
    {6, &StrandLook::value},
};
constexpr struct {
    ParamID id;
    Color StrandLook::*field;
} kColors[] = {
    {3, &StrandLook::root_color},
    {4, &StrandLook::tip_color},
};

// A value that can't be read stays as it is.
void read_block(IParamBlock2& block, TimeValue time, StrandLook& look) {
    Interval valid = FOREVER;
    for (const auto& number : kNumbers) {
        block.GetValue(number.id, time, look.*number.field, valid);
    }
    for (const auto& color : kColors) {
        block.GetValue(color.id, time, look.*color.field, valid);
    }
}

bool is_hair_attribute(CustAttrib* attribute) {
    const MCHAR* name = attribute == nullptr ? nullptr : attribute->GetName(false);
    return name != nullptr && std::wcscmp(name, kAttributeName) == 0;
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
