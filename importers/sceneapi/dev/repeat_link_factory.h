#pragma once

#include <cstdint>
#include <string>
#include <utility>

#include "importers/sceneapi/dev/light_factory.h"
#include "importers/sceneapi/dev/renderer_instance.h"

namespace live_library {
class QueryApi;
}

namespace qor {

/// Sends a scene to a running renderer, and starts one if none is running.
///
/// The first `get_api` looks for a renderer and connects to it through the live library, which can
/// take as long as a renderer takes to start. A renderer that holds the scene of the given name is
/// preferred. The second choice is the renderer of the highest version, but only with
/// `set_connect_any`; the third is one with an empty scene.
///
///     RepeatLinkFactory factory;
///     factory.set_min_version(11);
///     factory.set_connect_any(true);
///     qorSceneapi_oo scene(factory);
class RepeatLinkFactory final : public LightFactory {
public:
    RepeatLinkFactory() = default;
    RepeatLinkFactory(const RepeatLinkFactory&) = delete;
    RepeatLinkFactory& operator=(const RepeatLinkFactory&) = delete;
    ~RepeatLinkFactory() override { disconnect(); }

    /// After a renderer is started, it is looked for `retries` - 1 times, with a wait after each
    /// look.
    void set_retries(std::uint32_t retries) { retries_ = retries; }
    void set_retry_wait_ms(std::uint32_t wait) { retry_wait_ms_ = wait; }
    /// Limits of the renderer's major version, both included.
    void set_min_version(std::int32_t version) { min_version_ = version; }
    void set_max_version(std::int32_t version) { max_version_ = version; }
    void set_scene_name(std::string name) { scene_name_ = std::move(name); }
    /// Whether a renderer that holds another scene may be used.
    void set_connect_any(bool connect_any) { connect_any_ = connect_any; }
    /// The id of the connection.
    void set_id(std::uint32_t id) { id_ = id; }

    /// Null if no renderer can be reached. Otherwise the object belongs to the live library and is
    /// valid until `close`.
    qorScene_api* get_api() override;

    /// A renderer needs no header.
    void write_header(qorSceneapi_oo&) override {}

    /// Disconnects and unloads the library. Never throws: failures of the library are logged.
    void close() override { disconnect(); }

    /// Why the last `get_api` returned null; empty if it didn't.
    const std::string& error() const { return error_; }
    /// The port of the chosen renderer after connecting. 0 if no renderer was found and one
    /// answered on a registered port.
    std::int32_t connected_port() const { return connected_port_; }
    /// Whether the chosen renderer already held the scene before the export.
    bool found_scene() const { return found_scene_; }

private:
    bool connect(std::string& reason);
    RendererInstance find_or_launch(live_library::QueryApi& query, std::string& reason);
    RendererInstance choose_instance(live_library::QueryApi& query);
    bool attach(const RendererInstance& instance, std::string& reason);
    bool sweep_ports();
    void disconnect() noexcept;

    std::uint32_t retries_ = 30;
    std::uint32_t retry_wait_ms_ = 1000;
    qorScene_api* api_ = nullptr;  // belongs to the live library
    std::int32_t min_version_ = 7;
    std::int32_t max_version_ = 20;
    std::int32_t connected_port_ = -1;
    std::string scene_name_;
    bool connect_any_ = false;
    bool found_scene_ = false;
    std::string error_;
    std::uint32_t id_ = 1;
};

}  // namespace qor
