#include "plugins/3dsmax/export/material_conversion.h"

#include <algorithm>
#include <cstddef>
#include <cwchar>
#include <iterator>
#include <memory>
#include <optional>
#include <string>
#include <utility>

#include "model/smart_material.h"
#include "plugins/3dsmax/export/material_entry.h"
#include "plugins/3dsmax/export/material_notes.h"
#include "plugins/3dsmax/export/name_notes.h"
#include "plugins/3dsmax/export/narrow_name.h"
#include "plugins/3dsmax/export/param_value.h"
#include "plugins/3dsmax/export/texture_baking.h"

namespace {

// How many map slots and parameter blocks are searched at most. A class doesn't say which of its
// slots and blocks matter.
constexpr int kMapSlots = 20;
constexpr int kParamBlocks = 20;

// The kind of texture that a slot or parameter of this name holds.
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

// Applies the maps of the enabled slots in order; if two are of one kind, the later one wins. The
// loop stops at the material's own number of slots, since not every class checks a slot's number.
template <typename IsOn, std::size_t N>
void apply_slots(MaterialEntry& entry, const Mesh& mesh, Mtl* mtl, IsOn is_on,
                 const NamedKind (&kinds)[N]) {
    const int slots = std::min(mtl->NumSubTexmaps(), kMapSlots);
    for (int slot = 0; slot < slots; ++slot) {
        Texmap* const texmap = mtl->GetSubTexmap(slot);
        if (texmap == nullptr || !is_on(slot)) {
            continue;
        }
        const MSTR name = mtl->GetSubTexmapSlotName(slot, true);
        if (const auto kind = kind_of(name, kinds)) {
            apply_texmap(entry, mtl, mesh, texmap, *kind);
        } else {
            NoteMapNotSent(entry, mtl, name.data());
        }
    }
    NoteSlotsFrom(entry, mtl, slots);
}

void convert_standard_material(MaterialEntry& entry, const Mesh& mesh, Mtl* mtl) {
    // These getters take a time in `StdMat`, but the number of a sub-material in `Mtl`.
    StdMat* const standard = static_cast<StdMat*>(mtl);
    set_diffuse(entry, standard->GetDiffuse(entry.time));
    const Color specular = standard->GetSpecular(entry.time);
    set_specular(entry, specular * standard->GetShininess(entry.time));
    NoteStandardValues(entry, *standard);

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

// Converts an unknown class, by the properties that all materials have and the slot and parameter
// names that many of them share.
void convert_generic_material(MaterialEntry& entry, const Mesh& mesh, Mtl* mtl) {
    NoteGenericClass(entry, mtl);
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

// Notes the maps in a block, apart from those that `is_sent` knows by their ids.
template <typename IsSent>
void NoteOtherMaps(const MaterialEntry& entry, Mtl* mtl, IParamBlock2& block, IsSent is_sent) {
    const int parameters = entry.notes ? block.NumParams() : 0;
    for (int i = 0; i < parameters; ++i) {
        const ParamID id = block.IndextoID(i);
        if (block.GetParameterType(id) == TYPE_TEXMAP && !is_sent(id) &&
            ParamValue<Texmap*>(block, id, 0).value_or(nullptr) != nullptr) {
            NoteMapNotSent(entry, mtl, block.GetParamDef(id).int_name);
        }
    }
}

// Converts a class that has its colour in one block and its maps, each with a switch, in another.
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
    NoteOtherMaps(entry, mtl, *block, [&kMaps](ParamID id) {
        return std::any_of(std::begin(kMaps), std::end(kMaps),
                           [id](const SwitchedMap& map) { return map.map == id; });
    });
    for (const SwitchedMap& map : kMaps) {
        if (ParamValue<int>(*block, map.is_on, 0).value_or(0) != 0) {
            Texmap* const texmap = ParamValue<Texmap*>(*block, map.map, 0).value_or(nullptr);
            apply_texmap(entry, mtl, mesh, texmap, map.kind);
        }
    }
}

// Converts a class of which only the maps are known; the colours keep the model's defaults. In its
// block a parameter's index is also its id.
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
        } else if (entry.notes && ParamValue<Texmap*>(*block, id, 0).value_or(nullptr) != nullptr) {
            NoteMapNotSent(entry, mtl, block->GetLocalName(id, -1, true).data());
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
    bool is_faithful = true;
    std::string name = NarrowName(mtl->GetName().data(), is_faithful);
    if (!is_faithful || name.empty()) {
        NoteName(entry.notes, mtl->GetName().data(), "the material");
    }
    entry.material = std::make_shared<qor::SmartMaterial>(std::move(name));

    const Class_ID class_id = mtl->ClassID();
    for (const ClassConversion& known : kConversions) {
        if (known.class_id == class_id) {
            known.convert(entry, mesh, mtl);
            return;
        }
    }
    convert_generic_material(entry, mesh, mtl);
}
