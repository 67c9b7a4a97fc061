#include "plugins/3dsmax/export/material_table.h"

#include <algorithm>
#include <cstdio>

#include "plugins/3dsmax/export/material_conversion.h"
#include "plugins/3dsmax/export/material_notes.h"
#include "plugins/3dsmax/export/narrow_name.h"

MaterialEntry* MaterialTable::assign_entry(Mtl* host_material, int slot) {
    std::size_t index = 0;
    while (entries_[index] && entries_[index]->host_material != host_material) {
        ++index;
    }
    entry_of_slot_[static_cast<unsigned>(slot)] = static_cast<std::uint32_t>(index);
    if (entries_[index]) {
        return nullptr;
    }
    entries_[index] = std::make_unique<MaterialEntry>();
    entries_[index]->host_material = host_material;
    return entries_[index].get();
}

MaterialTable make_material_table(const Mesh& mesh, INode* node, TimeValue time,
                                  ExportNotes* notes) {
    Mtl* const top = node->GetMtl();
    const int subs = top == nullptr ? 0 : std::min(top->NumSubMtls(), MaterialTable::kMaxSlots);
    const int count = std::max(subs, 1);
    MaterialTable table(count);

    // The loop ends when every slot has an entry: after the first face for a mesh of one material.
    int open_slots = count;
    Face* const end = mesh.faces + mesh.numFaces;
    for (Face* face = mesh.faces; face != end && open_slots > 0; ++face) {
        const int slot = table.slot_of_face(*face);
        if (table.entry_of_slot(slot) != MaterialTable::kNoEntry) {
            continue;
        }
        --open_slots;
        Mtl* const mtl = subs > 0 ? top->GetSubMtl(slot) : top;
        MaterialEntry* const entry = table.assign_entry(mtl, slot);
        if (entry == nullptr) {
            continue;
        }
        entry->time = time;
        entry->notes = {notes, node};
        if (mtl != nullptr) {
            convert_material(*entry, mesh, mtl);
            NoteSecondChannels(*entry);
        } else {
            make_empty_material(*entry, node, slot);
        }
    }
    return table;
}

void make_empty_material(MaterialEntry& entry, INode* node, int slot) {
    const DWORD color = node->GetWireColor();
    const int red = color & 0xFF;
    const int green = color >> 8 & 0xFF;
    const int blue = color >> 16 & 0xFF;

    constexpr std::size_t kLongestName = 255;
    char name[kLongestName + 1];
    std::snprintf(name, sizeof name, "%s - EmptyMaterial#%d : %d:%d:%d",
                  NarrowName(node->GetName()).c_str(), slot, red, green, blue);
    entry.material = std::make_shared<qor::SmartMaterial>(name);
    entry.material->set_diffuse_color(static_cast<float>(red) / 255.0f,
                                      static_cast<float>(green) / 255.0f,
                                      static_cast<float>(blue) / 255.0f);
}
