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

/// A scene that goes to a running renderer, which is started if none runs.
///
/// The first `get_api` looks for a renderer and connects to it through the live library; that can
/// take as long as a renderer takes to start. A renderer that holds the scene of the given name
/// comes first, then, if any will do, the one of the highest version, then an empty one.
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

    /// How many times a renderer that was started is looked for, less one, and how long it is
    /// waited for after each look.
    void set_retries(std::uint32_t retries) { retries_ = retries; }
    void set_retry_wait_ms(std::uint32_t wait) { retry_wait_ms_ = wait; }
    /// Of the renderer's major version, both ends included.
    void set_min_version(std::int32_t version) { min_version_ = version; }
    void set_max_version(std::int32_t version) { max_version_ = version; }
    void set_scene_name(std::string name) { scene_name_ = std::move(name); }
    /// Whether a renderer will do that holds another scene.
    void set_connect_any(bool connect_any) { connect_any_ = connect_any; }
    /// Given to the scene on connecting.
    void set_id(std::uint32_t id) { id_ = id; }

    /// Null if no renderer can be reached; the library's own otherwise, until `close`.
    qorScene_api* get_api() override;

    /// A renderer needs no header.
    void write_header(qorSceneapi_oo&) override {}

    /// Ends the connection and unloads the library. Never throws: a failure of the library goes
    /// into the log.
    void close() override { disconnect(); }

    /// Why the last `get_api` gave null; empty if it didn't.
    const std::string& error() const { return error_; }
    /// That of the chosen renderer once connected; 0 where none was known and a renderer answered
    /// on a registered port.
    std::int32_t connected_port() const { return connected_port_; }
    /// Whether the chosen renderer held the scene before anything was sent.
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
    qorScene_api* api_ = nullptr;  // the live library's
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
