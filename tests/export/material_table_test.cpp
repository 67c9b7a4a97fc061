#include "plugins/3dsmax/export/material_table.h"

#include <gtest/gtest.h>

#include <map>

#include "standins/host/memory/scene_builder.h"
#include "tests/support/emitted_calls.h"

namespace {

using memhost::StandardMaterial;

// A mesh with one face for each material id.
memhost::MeshBuilder mesh_of_ids(const std::vector<MtlID>& ids) {
    const std::vector<memhost::Triangle> faces(ids.size(), {0, 1, 2});
    return memhost::MeshBuilder({{0, 0, 0}, {1, 0, 0}, {0, 1, 0}}, faces).material_ids(ids);
}

// The number of slots, "slot>entry" for each slot with an entry, and the names of the entries.
std::string summary(const MaterialTable& table) {
    std::string text = std::to_string(table.slot_count()) + ":";
    for (int slot = 0; slot < table.slot_count(); ++slot) {
        if (table.entry_of_slot(slot) != 0xFFFFFFFF) {
            text += " " + std::to_string(slot) + ">" + std::to_string(table.entry_of_slot(slot));
        }
    }
    for (int i = 0; table.entry(i) != nullptr; ++i) {
        text += " " + table.entry(i)->material->get_name();
    }
    return text;
}

TEST(MaterialTable, HoldsTheMaterialsOfFacesInTheOrderOfTheirFirstUse) {
    const struct {
        std::string materials;  // one letter for each sub-material, '-' for an empty place
        std::vector<MtlID> ids;
        const char* summary;
    } cases[] = {
        {"abc", {4, 0, 1, 3, 65535}, "3: 0>1 1>0 b a"},
        {"abc", {2, 1, 0, 2}, "3: 0>2 1>1 2>0 c b a"},
        {"abscds", {2, 5, 0}, "6: 0>1 2>0 5>0 s a"},
        {"a-b-", {3, 0, 1}, "4: 0>1 1>0 3>0 Node - EmptyMaterial#3 : 10:20:30 a"},
        {std::string(129, 'a') + "b", {128, 127, 129}, "128: 0>0 1>0 127>0 a"},
        {"abc", {}, "3:"},
        {"", {7, 1}, "1: 0>0 Node - EmptyMaterial#0 : 10:20:30"},
    };
    for (const auto& one : cases) {
        memhost::SceneBuilder scene;
        memhost::NodeBuilder node = scene.node(L"Node").wire(10, 20, 30);
        std::map<char, Mtl*> by_letter = {{'-', nullptr}};
        std::vector<Mtl*> subs;
        for (const char letter : one.materials) {
            if (by_letter.count(letter) == 0) {
                by_letter[letter] = &scene.make<StandardMaterial>(std::string(1, letter));
            }
            subs.push_back(by_letter[letter]);
        }
        if (!subs.empty()) {
            node.material(scene.make<memhost::MultiMaterial>(L"multi", subs));
        }
        EXPECT_EQ(summary(make_material_table(mesh_of_ids(one.ids).mesh(), &node.node(), 0)),
                  one.summary);
    }
}

// The lengths are below, at and above the limit for a name.
TEST(MaterialTable, GivesFacesWithoutAMaterialTheColourOfTheirNode) {
    for (const size_t length : {1, 226, 227, 2000}) {
        memhost::SceneBuilder scene;
        auto node = scene.node(std::wstring(length, L'\u00e9')).wire(255, 0, 51);
        MaterialEntry entry;
        make_empty_material(entry, &node.node(), 0);
        const std::string name = std::string(length, '\xe9') + " - EmptyMaterial#0 : 255:0:51";
        qor::SmartMaterial wanted(name.substr(0, 255));
        wanted.set_diffuse_color(1, 0, 51 / 255.0f);
        EXPECT_EQ(emitted_text([&](auto& written) { entry.material->emit(written); }),
                  emitted_text([&](auto& written) { wanted.emit(written); }));
    }
}

}  // namespace
