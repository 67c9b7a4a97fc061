#include <optional>
#include <string>

#include "importers/sceneapi/dev/live_library.h"
#include "standins/renderer/linked_scene.h"
#include "standins/renderer/operating_system.h"
#include "standins/renderer/running_renderers.h"

// The live library. Its contract is in live_library.h.

namespace velmora {

namespace {

class Query final : public live_library::QueryApi {
public:
    const char* instances_xml() override;
    bool connect(std::int64_t process_id) override;
    void reserved_2() override {}
    void disconnect() override { connection_.close(); }
    void reserved_4() override {}
    void reserved_5() override {}
    const char* scene_xml() override;

private:
    LinkConnection connection_;
    std::string text_;  // the text returned last
};

const char* Query::instances_xml() {
    text_ = "<velmora_instances>\n";
    for (const RunningRenderer& renderer : list_running_renderers()) {
        const auto add_field = [this](const char* name, std::int64_t number) {
            text_ +=
                std::string("    <") + name + ">" + std::to_string(number) + "</" + name + ">\n";
        };
        text_ += "  <velmora_instance>\n";
        add_field("version_major", renderer.version_major);
        add_field("version_minor", renderer.version_minor);
        add_field("process_id", renderer.process_id);
        add_field("livelink_port", renderer.port);
        text_ += "  </velmora_instance>\n";
    }
    text_ += "</velmora_instances>\n";
    return text_.c_str();
}

// The process id and the port may both have been reused, so the renderer has to confirm its process
// id.
bool Query::connect(std::int64_t process_id) {
    const std::optional<RunningRenderer> renderer = find_running_renderer(process_id);
    if (!renderer || !connection_.open("127.0.0.1", renderer->port)) {
        return false;
    }
    if (connection_.process_id() != process_id) {
        connection_.close();
        return false;
    }
    return true;
}

const char* Query::scene_xml() {
    if (!connection_.is_open()) {
        return nullptr;
    }
    const std::optional<std::string> tree = connection_.ask_text(operation::kTree);
    if (!tree) {
        return nullptr;
    }
    text_ = *tree;
    return text_.c_str();
}

class LiveLibrary final : public live_library::Root {
public:
    qorScene_api* get_scene_api(int, int) override { return &scene_; }
    live_library::QueryApi* get_query_api(int, int) override { return &query_; }

private:
    Query query_;
    LinkedScene scene_;
};

}  // namespace

}  // namespace velmora

#ifdef _WIN32
#define VELMORA_EXPORT __declspec(dllexport)
#else
#define VELMORA_EXPORT __attribute__((visibility("default")))
#endif

extern "C" VELMORA_EXPORT live_library::Root* velmora_live_initialize() {
    velmora::keep_network_library();
    return new velmora::LiveLibrary;
}
