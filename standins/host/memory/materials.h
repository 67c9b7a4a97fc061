#pragma once

#include <memory>
#include <string>
#include <vector>

#include "standins/host/memory/checked_index.h"
#include "standins/host/memory/memory_param_block.h"
#include "standins/host/memory/timed_value.h"
#include "standins/host/sdk/max.h"

namespace memhost {

/// The slots of the Standard material that callers need. The others have no constant.
enum StandardSlot : int {
    kAmbientSlot = 0,
    kDiffuseSlot = 1,
    kSpecularColorSlot = 2,
    kSpecularLevelSlot = 3,
    kGlossinessSlot = 4,
    kSelfIlluminationSlot = 5,
    kOpacitySlot = 6,
    kBumpSlot = 8,
    kReflectionSlot = 9,
    kDisplacementSlot = 11,
};

/// The host's Standard material: two colours, shininess, and twenty slots for maps.
class StandardMaterial final : public StdMat {
public:
    explicit StandardMaterial(const std::wstring& name);
    explicit StandardMaterial(const std::string& name_utf8);

    StandardMaterial& diffuse(TimedColor color);
    StandardMaterial& specular(TimedColor color);
    StandardMaterial& shininess(TimedNumber shininess);
    StandardMaterial& opacity(float opacity);
    StandardMaterial& self_illumination(float amount);
    /// A null map empties the slot.
    StandardMaterial& map(int slot, Texmap* map, bool enabled = true);

    Color GetDiffuse(TimeValue t) override { return diffuse_.at(t); }
    Color GetSpecular(TimeValue t) override { return specular_.at(t); }
    float GetShininess(TimeValue t) override { return shininess_.at(t); }
    float GetOpacity(TimeValue) override { return opacity_; }
    float GetSelfIllum(TimeValue) override { return self_illumination_; }
    Color GetDiffuse(int number, BOOL back_face) override;
    Color GetSpecular(int number, BOOL back_face) override;
    float GetShininess(int number, BOOL back_face) override;
    BOOL MapEnabled(int slot) override {
        return slots_[checked_index(slot, kSlots, "slot")].enabled;
    }
    int NumSubTexmaps() override { return kSlots; }
    Texmap* GetSubTexmap(int slot) override {
        return slots_[checked_index(slot, kSlots, "slot")].map;
    }
    int SubTexmapOn(int slot) override { return MapEnabled(slot); }
    MSTR GetSubTexmapSlotName(int slot, bool localized) override;

private:
    static constexpr int kSlots = 20;

    struct Slot {
        Texmap* map = nullptr;
        bool enabled = true;
    };

    TimedColor diffuse_ = Color(0.5f, 0.5f, 0.5f);
    TimedColor specular_ = Color(0.9f, 0.9f, 0.9f);
    TimedNumber shininess_ = 0.0f;
    float opacity_ = 1;
    float self_illumination_ = 0;
    Slot slots_[kSlots];
};

/// Several materials for one node. The material id of a face selects one of them. Slots may be
/// empty.
class MultiMaterial final : public Mtl {
public:
    MultiMaterial(const std::wstring& name, std::vector<Mtl*> materials);

    Class_ID ClassID() override;
    Color GetDiffuse(int number = 0, BOOL back_face = FALSE) override;
    Color GetSpecular(int number = 0, BOOL back_face = FALSE) override;
    float GetShininess(int number = 0, BOOL back_face = FALSE) override;
    int NumSubMtls() override { return static_cast<int>(materials_.size()); }
    Mtl* GetSubMtl(int i) override {
        return materials_[checked_index(i, materials_.size(), "sub-material")];
    }

private:
    // The material that `number` selects, or null.
    Mtl* of_number(int number);

    std::vector<Mtl*> materials_;
};

/// A material of any class, made of parameter blocks and slots for maps.
class BlockMaterial final : public Mtl {
public:
    BlockMaterial(const std::wstring& name, Class_ID class_id);

    BlockMaterial& diffuse(const Color& color);
    BlockMaterial& specular(const Color& color);
    BlockMaterial& shininess(float shininess);
    /// Appends a slot.
    BlockMaterial& slot(const std::wstring& name, Texmap* map, bool on = true);
    /// The block with that id. Adds one if there is none.
    MemoryParamBlock& block(BlockID id);

    Class_ID ClassID() override { return class_id_; }
    IParamBlock2* GetParamBlockByID(BlockID id) override;
    Color GetDiffuse(int = 0, BOOL = FALSE) override { return diffuse_; }
    Color GetSpecular(int = 0, BOOL = FALSE) override { return specular_; }
    float GetShininess(int = 0, BOOL = FALSE) override { return shininess_; }
    int NumSubTexmaps() override { return static_cast<int>(slots_.size()); }
    Texmap* GetSubTexmap(int i) override {
        return slots_[checked_index(i, slots_.size(), "slot")].map;
    }
    int SubTexmapOn(int i) override { return slots_[checked_index(i, slots_.size(), "slot")].on; }
    MSTR GetSubTexmapSlotName(int i, bool localized) override;

private:
    struct Slot {
        std::wstring name;
        Texmap* map;
        bool on;
    };
    struct Block {
        BlockID id;
        std::unique_ptr<MemoryParamBlock> params;
    };

    Class_ID class_id_;
    Color diffuse_;
    Color specular_;
    float shininess_ = 0;
    std::vector<Slot> slots_;
    std::vector<Block> blocks_;
};

}  // namespace memhost
