#include "standins/host/memory/materials.h"

#include <utility>

#include "standins/host/memory/host_text.h"
#include "standins/host/memory/strict_rules.h"

namespace memhost {
namespace {

struct SlotName {
    int slot;
    const wchar_t* name;
};

constexpr SlotName kStandardSlotNames[] = {
    {kAmbientSlot, L"Ambient Color"},
    {kDiffuseSlot, L"Diffuse Color"},
    {kSpecularColorSlot, L"Specular Color"},
    {kSpecularLevelSlot, L"Specular Level"},
    {kGlossinessSlot, L"Glossiness"},
    {kSelfIlluminationSlot, L"Self-Illumination"},
    {kOpacitySlot, L"Opacity"},
    {7, L"Filter Color"},
    {kBumpSlot, L"Bump"},
    {kReflectionSlot, L"Reflection"},
    {10, L"Refraction"},
    {kDisplacementSlot, L"Displacement"},
};

MSTR name_in_language(const std::wstring& name, bool localized) {
    const bool translates = localized && host_obeys(StrictRule::kTranslatedNames);
    return MSTR((translates ? translated_name(name) : name).c_str());
}

// The class of the host's multi-material.
constexpr Class_ID kMultiMaterialClass(0x200, 0);

}  // namespace

StandardMaterial::StandardMaterial(const std::wstring& name) {
    SetName(units_from_wide(name).c_str());
}

StandardMaterial::StandardMaterial(const std::string& name_utf8)
    : StandardMaterial(units_from_utf8(name_utf8)) {}

StandardMaterial& StandardMaterial::diffuse(TimedColor color) {
    diffuse_ = std::move(color);
    return *this;
}

StandardMaterial& StandardMaterial::specular(TimedColor color) {
    specular_ = std::move(color);
    return *this;
}

StandardMaterial& StandardMaterial::opacity(float opacity) {
    opacity_ = opacity;
    return *this;
}

StandardMaterial& StandardMaterial::self_illumination(float amount) {
    self_illumination_ = amount;
    return *this;
}

StandardMaterial& StandardMaterial::shininess(TimedNumber shininess) {
    shininess_ = std::move(shininess);
    return *this;
}

StandardMaterial& StandardMaterial::map(int slot, Texmap* map, bool enabled) {
    slots_[static_cast<std::size_t>(slot)] = {map, enabled};
    return *this;
}

Color StandardMaterial::GetDiffuse(int, BOOL) {
    return diffuse_.at(GetCOREInterface()->GetTime());
}

Color StandardMaterial::GetSpecular(int, BOOL) {
    return specular_.at(GetCOREInterface()->GetTime());
}

float StandardMaterial::GetShininess(int, BOOL) {
    return shininess_.at(GetCOREInterface()->GetTime());
}

MSTR StandardMaterial::GetSubTexmapSlotName(int slot, bool localized) {
    for (const SlotName& known : kStandardSlotNames) {
        if (known.slot == slot) {
            return name_in_language(known.name, localized);
        }
    }
    return MSTR();
}

MultiMaterial::MultiMaterial(const std::wstring& name, std::vector<Mtl*> materials)
    : materials_(std::move(materials)) {
    SetName(units_from_wide(name).c_str());
}

Class_ID MultiMaterial::ClassID() {
    return kMultiMaterialClass;
}

Color MultiMaterial::GetDiffuse(int number, BOOL back_face) {
    Mtl* material = of_number(number);
    return material ? material->GetDiffuse(0, back_face) : Color();
}

Color MultiMaterial::GetSpecular(int number, BOOL back_face) {
    Mtl* material = of_number(number);
    return material ? material->GetSpecular(0, back_face) : Color();
}

float MultiMaterial::GetShininess(int number, BOOL back_face) {
    Mtl* material = of_number(number);
    return material ? material->GetShininess(0, back_face) : 0.0f;
}

Mtl* MultiMaterial::of_number(int number) {
    return number < NumSubMtls() ? GetSubMtl(number) : nullptr;
}

BlockMaterial::BlockMaterial(const std::wstring& name, Class_ID class_id) : class_id_(class_id) {
    SetName(units_from_wide(name).c_str());
}

BlockMaterial& BlockMaterial::diffuse(const Color& color) {
    diffuse_ = color;
    return *this;
}

BlockMaterial& BlockMaterial::specular(const Color& color) {
    specular_ = color;
    return *this;
}

BlockMaterial& BlockMaterial::shininess(float shininess) {
    shininess_ = shininess;
    return *this;
}

BlockMaterial& BlockMaterial::slot(const std::wstring& name, Texmap* map, bool on) {
    slots_.push_back({name, map, on});
    return *this;
}

MemoryParamBlock& BlockMaterial::block(BlockID id) {
    for (const Block& block : blocks_) {
        if (block.id == id) {
            return *block.params;
        }
    }
    blocks_.push_back({id, std::make_unique<MemoryParamBlock>()});
    return *blocks_.back().params;
}

IParamBlock2* BlockMaterial::GetParamBlockByID(BlockID id) {
    for (const Block& block : blocks_) {
        if (block.id == id) {
            return block.params.get();
        }
    }
    return nullptr;
}

MSTR BlockMaterial::GetSubTexmapSlotName(int i, bool localized) {
    return name_in_language(slots_[checked_index(i, slots_.size(), "slot")].name, localized);
}

}  // namespace memhost
