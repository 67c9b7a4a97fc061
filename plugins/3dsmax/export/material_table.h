#pragma once

#include <array>
#include <cstdint>
#include <memory>

#include "plugins/3dsmax/export/host.h"
#include "plugins/3dsmax/export/material_entry.h"

/// Which material each face of a mesh has, for as long as the mesh is being exported.
///
/// A face's material id, modulo the number of slots, is its slot; a slot leads to an entry. Slots
/// of the same host material share one entry, and those that no face uses have none. Entries stand
/// in the order in which the faces first need them, without gaps.
///
///     const MaterialTable table = make_material_table(mesh, node, time);
///     const unsigned part = table.entry_of_face(mesh.faces[f]);
class MaterialTable {
public:
    static constexpr int kMaxSlots = 128;
    static constexpr unsigned kNoEntry = 0xFFFFFFFF;

    int slot_count() const { return slot_count_; }

    /// `kNoEntry` if no face uses the slot. Slots count from 0 to below `slot_count`.
    unsigned entry_of_slot(int slot) const { return entry_of_slot_[static_cast<unsigned>(slot)]; }

    /// Material ids beyond the slots start anew at the first slot.
    int slot_of_face(Face& face) const {
        const int id = face.getMatID();
        return id < slot_count_ ? id : id % slot_count_;  // which spares most faces a division
    }
    unsigned entry_of_face(Face& face) const { return entry_of_slot(slot_of_face(face)); }

    /// The table owns it. Null for an index that no slot leads to.
    MaterialEntry* entry(int index) const {
        return index >= 0 && index < kMaxSlots ? entries_[static_cast<unsigned>(index)].get()
                                               : nullptr;
    }

private:
    friend MaterialTable make_material_table(const Mesh& mesh, INode* node, TimeValue time);

    explicit MaterialTable(int slot_count) : slot_count_(slot_count) {
        entry_of_slot_.fill(kNoEntry);
    }

    // Leads the slot to the entry of `host_material`. Gives the entry if it is a new one, which is
    // to be filled, and null if the table had it already.
    MaterialEntry* lead_slot_to(Mtl* host_material, int slot);

    int slot_count_;
    std::array<std::uint32_t, kMaxSlots> entry_of_slot_;
    std::array<std::unique_ptr<MaterialEntry>, kMaxSlots> entries_;  // the used ones come first
};

/// The materials of `node` that the faces of `mesh` use, with their colours as of `time`.
MaterialTable make_material_table(const Mesh& mesh, INode* node, TimeValue time);

/// Fills `entry` for faces that have no material: the node's wire colour, under a name made of the
/// node's name, the slot and the colour, of at most 255 bytes.
void make_empty_material(MaterialEntry& entry, INode* node, int slot);
