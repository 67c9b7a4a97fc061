#include "plugins/3dsmax/export/material_conversion.h"

#include <algorithm>
#include <cstddef>
#include <cwchar>
#include <memory>
#include <optional>

#include "model/smart_material.h"
#include "plugins/3dsmax/export/material_entry.h"
#include "plugins/3dsmax/export/narrow_name.h"
#include "plugins/3dsmax/export/param_value.h"
#include "plugins/3dsmax/export/texture_baking.h"

namespace {

// The slots for maps and the parameter blocks that are looked at, where a class doesn't tell which
// of its own count.
constexpr int kMapSlots = 20;
constexpr int kParamBlocks = 20;

// What a map is for, by the name of the slot or parameter that holds it.
struct NamedKind {
    const wchar_t* name;
    TextureKind kind;
};

constexpr NamedKind kStandardSlots[] = {
    {L"Diffuse Color", TextureKind::kDiffuse},
    {L"Opacity", TextureKind::kOpacity},
    {L"Bump", TextureKind::kBump},
    {L"Specular Color", TextureKind::kSpecular},
    {L"Specular Level", TextureKind::kSpecular},
};

constexpr NamedKind kGenericSlots[] = {
    {L"Diffuse Color", TextureKind::kDiffuse},
    {L"Diffuse Color Map", TextureKind::kDiffuse},
    {L"Opacity", TextureKind::kOpacity},
    {L"Opacity Map", TextureKind::kOpacity},
    {L"Bump", TextureKind::kBump},
    {L"Bump Map", TextureKind::kBump},
    {L"Specular", TextureKind::kSpecular},
    {L"Specular Map", TextureKind::kSpecular},
};

constexpr NamedKind kNamedTexmaps[] = {
    {L"texmap_bump", TextureKind::kBump},
    {L"texmap_diffuse_color", TextureKind::kDiffuse},
    {L"texmap_specular_glossiness", TextureKind::kSpecular},
};

template <std::size_t N>
std::optional<TextureKind> kind_of(const MSTR& name, const NamedKind (&kinds)[N]) {
    for (const NamedKind& known : kinds) {
        if (std::wcscmp(name.data(), known.name) == 0) {
            return known.kind;
        }
    }
    return std::nullopt;
}

void set_diffuse(MaterialEntry& entry, const Color& color) {
    entry.material->set_diffuse_color(color.r, color.g, color.b);
}

void set_specular(MaterialEntry& entry, const Color& color) {
    entry.material->set_specular_color(color.r, color.g, color.b);
}

// Applies the maps of the slots that are on, in the order of the slots: of two for one kind the
// later one stays. Not every class checks a slot's number, so it is held to the material's own.
template <typename IsOn, std::size_t N>
void apply_slots(MaterialEntry& entry, const Mesh& mesh, Mtl* mtl, IsOn is_on,
                 const NamedKind (&kinds)[N]) {
    const int slots = std::min(mtl->NumSubTexmaps(), kMapSlots);
    for (int slot = 0; slot < slots; ++slot) {
        Texmap* const texmap = mtl->GetSubTexmap(slot);
        if (texmap == nullptr || !is_on(slot)) {
            continue;
        }
        if (const auto kind = kind_of(mtl->GetSubTexmapSlotName(slot, true), kinds)) {
            apply_texmap(entry, mtl, mesh, texmap, *kind);
        }
    }
}

void convert_standard_material(MaterialEntry& entry, const Mesh& mesh, Mtl* mtl) {
    // Through `StdMat` the number is a time, through `Mtl` it would be one of several materials.
    StdMat* const standard = static_cast<StdMat*>(mtl);
    set_diffuse(entry, standard->GetDiffuse(entry.time));
    const Color specular = standard->GetSpecular(entry.time);
    set_specular(entry, specular * standard->GetShininess(entry.time));

    const auto is_on = [standard](int slot) { return standard->MapEnabled(slot) != FALSE; };
    apply_slots(entry, mesh, mtl, is_on, kStandardSlots);
}

void apply_generic_parameter(MaterialEntry& entry, const Mesh& mesh, Mtl* mtl, IParamBlock2& block,
                             ParamID id) {
    const ParamDef& definition = block.GetParamDef(id);
    if (definition.int_name == nullptr) {
        return;
    }
    if (std::wcscmp(definition.int_name, L"bump_map_amt") == 0) {
        entry.material->set_bump_height(ParamValue<float>(block, id, 0).value_or(0.0f));
    } else if (definition.type == TYPE_TEXMAP &&
               std::wcscmp(definition.int_name, L"bump_map") == 0) {
        Texmap* const texmap = ParamValue<Texmap*>(block, id, 0).value_or(nullptr);
        apply_texmap(entry, mtl, mesh, texmap, TextureKind::kBump);
    }
}

// Any class that isn't known: what all materials answer, and the names that many of them share.
void convert_generic_material(MaterialEntry& entry, const Mesh& mesh, Mtl* mtl) {
    set_diffuse(entry, mtl->GetDiffuse(0, FALSE));
    const Color specular = mtl->GetSpecular(0, FALSE);
    set_specular(entry, specular * mtl->GetShininess(0, FALSE));

    for (int id = 0; id < kParamBlocks; ++id) {
        IParamBlock2* const block = mtl->GetParamBlockByID(static_cast<BlockID>(id));
        const int parameters = block == nullptr ? 0 : block->NumParams();
        for (int i = 0; i < parameters; ++i) {
            apply_generic_parameter(entry, mesh, mtl, *block, block->IndextoID(i));
        }
    }

    const auto is_on = [mtl](int slot) { return mtl->SubTexmapOn(slot) != 0; };
    apply_slots(entry, mesh, mtl, is_on, kGenericSlots);
}

// A class with its colour in one block, and in another its maps, each with a switch.
void convert_block_color_material(MaterialEntry& entry, const Mesh& mesh, Mtl* mtl) {
    constexpr BlockID kColorBlock = 1;
    constexpr ParamID kColor = 1;
    constexpr BlockID kMapBlock = 4;
    struct SwitchedMap {
        ParamID is_on;
        ParamID map;
        TextureKind kind;
    };
    constexpr SwitchedMap kMaps[] = {
        {150, 100, TextureKind::kDiffuse},
        {153, 103, TextureKind::kBump},
    };

    if (IParamBlock2* const block = mtl->GetParamBlockByID(kColorBlock)) {
        const Color black(0.0f, 0.0f, 0.0f);
        const Color color = ParamValue<Color>(*block, kColor, entry.time).value_or(black);
        set_diffuse(entry, color);
        set_specular(entry, color);
    }
    IParamBlock2* const block = mtl->GetParamBlockByID(kMapBlock);
    if (block == nullptr) {
        return;
    }
    for (const SwitchedMap& map : kMaps) {
        if (ParamValue<int>(*block, map.is_on, 0).value_or(0) != 0) {
            Texmap* const texmap = ParamValue<Texmap*>(*block, map.map, 0).value_or(nullptr);
            apply_texmap(entry, mtl, mesh, texmap, map.kind);
        }
    }
}

// A class that is known for its maps alone; its colours stay the model's own. In its block a
// parameter's place is its id as well.
void convert_named_texmap_material(MaterialEntry& entry, const Mesh& mesh, Mtl* mtl) {
    constexpr int kBumpAmount = 5;
    constexpr double kHeightPerAmount = 0.05;

    IParamBlock2* const block = mtl->GetParamBlockByID(0);
    const int parameters = block == nullptr ? 0 : block->NumParams();
    for (int i = 0; i < parameters; ++i) {
        const ParamID id = static_cast<ParamID>(i);
        if (!HasParam(*block, id)) {
            continue;
        }
        if (i == kBumpAmount) {
            const float amount = ParamValue<float>(*block, id, entry.time).value_or(0.0f);
            entry.material->set_bump_height(static_cast<float>(amount * kHeightPerAmount));
        }
        if (block->GetParameterType(id) != TYPE_TEXMAP) {
            continue;
        }
        if (const auto kind = kind_of(block->GetLocalName(id, -1, true), kNamedTexmaps)) {
            Texmap* const texmap = ParamValue<Texmap*>(*block, id, 0).value_or(nullptr);
            apply_texmap(entry, mtl, mesh, texmap, *kind);
        }
    }
}

struct ClassConversion {
    Class_ID class_id;
    void (*convert)(MaterialEntry&, const Mesh&, Mtl*);
};

const ClassConversion kConversions[] = {
    {Class_ID(0x37BF3F2F, 0x7034695C), convert_block_color_material},
    {Class_ID(0x3F2C5FAA, 0x750008BC), convert_named_texmap_material},
    {Class_ID(DMTL_CLASS_ID, 0), convert_standard_material},
};

}  // namespace

void convert_material(MaterialEntry& entry, const Mesh& mesh, Mtl* mtl) {
    entry.uv_transform.IdentityMatrix();
    entry.material = std::make_shared<qor::SmartMaterial>(NarrowName(mtl->GetName().data()));

    const Class_ID class_id = mtl->ClassID();
    for (const ClassConversion& known : kConversions) {
        if (known.class_id == class_id) {
            known.convert(entry, mesh, mtl);
            return;
        }
    }
    convert_generic_material(entry, mesh, mtl);
}
