// Loads and unloads the plug-in's library repeatedly.

#include <gtest/gtest.h>

#include "platform/dynamic_library.h"
#include "standins/host/memory/host_text.h"
#include "standins/host/memory/scene_builder.h"
#include "tests/support/temporary_folder.h"

namespace {

// Nobody frees a stopped plug-in or the table of its actions. Pointers kept here keep the sanitizer
// from reporting them and what they own, so that it reports only other leaks.
std::vector<void*>& kept_objects() {
    static auto* const objects = new std::vector<void*>;
    return *objects;
}

TEST(PluginLibrary, CanBeReloadedWithoutLeaks) {
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
            kept_objects().insert(kept_objects().end(), {plugin, class_desc->GetActionTable(0)});
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
