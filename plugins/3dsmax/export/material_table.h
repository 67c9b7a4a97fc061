#pragma once

#include <array>
#include <cstdint>
#include <memory>

#include "plugins/3dsmax/export/host.h"
#include "plugins/3dsmax/export/material_entry.h"

/// The material of each face of a mesh, needed only while that mesh is exported.
///
/// A face's slot is its material id modulo the number of slots. Each slot that a face uses refers
/// to an entry; slots of the same host material share one. Entries are in the order in which the
/// faces first use them, without gaps.
///
///     const MaterialTable table = make_material_table(mesh, node, time);
///     const unsigned part = table.entry_of_face(mesh.faces[f]);
class MaterialTable {
public:
    static constexpr int kMaxSlots = 128;
    static constexpr unsigned kNoEntry = 0xFFFFFFFF;

    int slot_count() const { return slot_count_; }

    /// The index of the slot's entry, or `kNoEntry` if no face uses the slot. Slots count from 0 to
    /// `slot_count() - 1`.
    unsigned entry_of_slot(int slot) const { return entry_of_slot_[static_cast<unsigned>(slot)]; }

    /// Material ids beyond the last slot wrap round to the first.
    int slot_of_face(Face& face) const {
        const int id = face.getMatID();
        return id < slot_count_ ? id : id % slot_count_;  // most faces need no division
    }
    unsigned entry_of_face(Face& face) const { return entry_of_slot(slot_of_face(face)); }

    /// Owned by the table. Null if there is no entry with that index.
    MaterialEntry* entry(int index) const {
        return index >= 0 && index < kMaxSlots ? entries_[static_cast<unsigned>(index)].get()
                                               : nullptr;
    }

private:
    friend MaterialTable make_material_table(const Mesh& mesh, INode* node, TimeValue time,
                                             ExportNotes* notes);

    explicit MaterialTable(int slot_count) : slot_count_(slot_count) {
        entry_of_slot_.fill(kNoEntry);
    }

    // Assigns the entry of `host_material` to the slot. Returns the entry if it is new, for the
    // caller to fill, or null if the table already had it.
    MaterialEntry* assign_entry(Mtl* host_material, int slot);

    int slot_count_;
    std::array<std::uint32_t, kMaxSlots> entry_of_slot_;
    std::array<std::unique_ptr<MaterialEntry>, kMaxSlots> entries_;  // the used ones come first
};

/// The materials of `node` that the faces of `mesh` use, with their colours as of `time`.
MaterialTable make_material_table(const Mesh& mesh, INode* node, TimeValue time,
                                  ExportNotes* notes = nullptr);

/// Fills `entry` for faces without a material. It gets the node's wire colour and a name of at most
/// 255 bytes, which is made of the node's name, the slot and the colour.
void make_empty_material(MaterialEntry& entry, INode* node, int slot);
