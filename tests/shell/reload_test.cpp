// The plug-in's library, loaded and unloaded over and over.

#include <gtest/gtest.h>

#include "platform/dynamic_library.h"
#include "standins/host/memory/host_text.h"
#include "standins/host/memory/scene_builder.h"
#include "tests/support/temporary_folder.h"

namespace {

// A stopped plug-in isn't freed, nor is the table of its actions, and neither is what they hold.
// Kept here, they are no leak; whatever else stays behind is, and the address sanitizer tells.
std::vector<void*>& what_stays() {
    static auto* const kept = new std::vector<void*>;
    return *kept;
}

TEST(PluginLibrary, ComesAndGoesWithoutATrace) {
    const TemporaryFolder folder;
    for (int round = 0; round < 10; ++round) {
        const auto library = platform::DynamicLibrary::open(PLUGIN_LIBRARY);
        ASSERT_TRUE(library);
        {
            memhost::SceneBuilder scene;
            memhost::MemoryHost& host = scene.host();
            host.set_config_folder(memhost::units_from_utf8(folder.path().u8string()));
            auto* const class_desc =
                reinterpret_cast<ClassDesc* (*)(int)>(library->find("LibClassDesc"))(0);
            host.actions().add_tables(*class_desc);
            GUP* const plugin = static_cast<GUP*>(class_desc->Create(FALSE));
            what_stays().insert(what_stays().end(), {plugin, class_desc->GetActionTable(0)});
            plugin->Start();
            scene.node(L"Box").mesh(memhost::box_mesh(1, 1, 1));
            host.events().deliver();
            const std::string path = folder / "scene" + std::to_string(round) + ".vsq";
            host.answer_save_dialog(path);
            EXPECT_TRUE(host.menus().press(L"Velmora/Export"));
            EXPECT_EQ(file_contents(path).empty(), false);
            plugin->Stop();
            plugin->DeleteThis();
            EXPECT_TRUE(host.menus().shown().empty());
        }
    }
}

}  // namespace
