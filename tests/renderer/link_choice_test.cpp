#include <gtest/gtest.h>

#include <asio.hpp>

#include "importers/sceneapi/dev/qorsceneapi_oo.h"
#include "importers/sceneapi/dev/repeat_link_factory.h"
#include "platform/message_box.h"
#include "plugins/3dsmax/export/scene_exporter.h"
#include "standins/host/memory/scene_builder.h"
#include "tests/support/installation_entries.h"
#include "tests/support/velmora_process.h"

// Tests the link factory with running renderers and with the live library of their installation.

namespace {

// An installation whose program can't be started, and whose only port has nobody listening.
std::vector<RegistryEntry> installation(const TemporaryFolder& folder) {
    const std::string program = folder / "text.txt";
    std::ofstream(std::filesystem::u8path(program)) << "no program";
    const std::string library = VELMORA_LIBRARY;
    auto all = installation_entries("HKEY_LOCAL_MACHINE", "Velmora 11", program,
                                    library.substr(0, library.find_last_of("/\\")),
                                    folder.path().u8string());
    asio::io_context io;
    const asio::ip::tcp::acceptor taken(io, {asio::ip::address_v4::loopback(), 0});
    const std::string port = registry_text(std::to_string(taken.local_endpoint().port()));
    for (const char* name : {"LiveLinkPort", "LiveLinkMaxPort"}) {
        all.push_back({all[0].hive, all[0].key, name, port});
    }
    return all;
}

class LinkChoice : public testing::Test {
protected:
    // Sends a scene of one group to a renderer of version 11. Returns the renderer's announced
    // port, 0 if it was found through its registered port, or -1 if none was found.
    int send(const std::string& group, const std::string& scene_name) {
        qor::RepeatLinkFactory factory;
        factory.set_min_version(11);
        factory.set_max_version(11);
        factory.set_retries(3);
        factory.set_retry_wait_ms(20);
        factory.set_connect_any(true);
        factory.set_scene_name(scene_name);
        qor::qorSceneapi_oo scene(factory);
        if (scene.get_api() == nullptr) {
            return -1;
        }
        found_scene_ = factory.found_scene();
        if (!group.empty()) {
            scene.begin_group(group);
            scene.begin_group("content");
            scene.end_group();
            scene.end_group();
        }
        return factory.connected_port();
    }

    RendererFolder renderers_;
    TemporaryFolder folder_;
    RegistryEntries registry_{installation(folder_)};
    bool found_scene_ = false;
};

TEST_F(LinkChoice, PrefersTheVersionAndThenTheScene) {
    const VelmoraProcess old(VELMORA_PROGRAM, "VELMORA_VERSION", "10.4");
    const VelmoraProcess first(VELMORA_PROGRAM, "VELMORA_VERSION", "11.1");
    const VelmoraProcess next(VELMORA_PROGRAM, "VELMORA_VERSION", "12.0");
    EXPECT_EQ(send("Hall", ""), first.port());
    EXPECT_FALSE(found_scene_);
    EXPECT_EQ(first.newest_scene().number, 1u);
    EXPECT_EQ(old.newest_scene().number, 0u);
    EXPECT_EQ(next.newest_scene().number, 0u);

    const VelmoraProcess empty(VELMORA_PROGRAM, "VELMORA_VERSION", "11.2");
    EXPECT_EQ(send("", "Hall"), first.port());
    EXPECT_TRUE(found_scene_);
}

// Evaluating it throws what isn't a standard exception.
class BrokenObject final : public GeomObject {
public:
    Class_ID ClassID() override { throw 5; }
};

TEST_F(LinkChoice, ShowsTheBoxIfASceneBreaksInTheMiddle) {
    const VelmoraProcess renderer(VELMORA_PROGRAM, "VELMORA_VERSION", "11.1");
    memhost::SceneBuilder scene;
    scene.node(L"Broken").make_object<BrokenObject>();
    std::string told;
    platform::set_message_box_handler([&told](const std::string& text, const std::string& title,
                                              std::uint32_t) { told += title + ": " + text; });
    SceneExporter exporter(&scene.host(), scene.host().GetRootNode(),
                           std::make_shared<Qor::Options>(&scene.host()), {});
    EXPECT_NO_THROW(exporter.Run("", false, false, false));
    platform::set_message_box_handler({});
    EXPECT_EQ(told, "Error: Could not connect to a existing Velmora instance or launch a new.");
}

TEST_F(LinkChoice, TriesTheRegisteredPortIfNoRendererIsAnnounced) {
    EXPECT_EQ(send("Hall", ""), -1);

    const VelmoraProcess silent(VELMORA_PROGRAM, "VELMORA_SILENT", "1");
    EXPECT_TRUE(comes_to_hold([this] { return send("Hall", "") == 0; }));
    EXPECT_TRUE(velmora::list_running_renderers().empty());
    EXPECT_FALSE(std::filesystem::is_empty(renderers_.scenes()));
}

}  // namespace
